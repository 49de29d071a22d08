// Every window against its form.
#include "desktop/forms.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QMenu>
#include <QPlainTextEdit>

#include "app/start.h"
#include "chooser/dateiwahl.h"
#include "desktop/bindings.h"
#include "exchange/datenaustausch.h"
#include "link/verbindungstest.h"
#include "modem/modem.h"
#include "power/power_monitor.h"
#include "programming/firmware_packer.h"
#include "programming/updatepro.h"
#include "programming/updatepro_ox3.h"
#include "programming/updatetab.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

struct Forms : testing::Test {
  /// The form of a window, which bears the window's controls and is on the screen.
  static std::unique_ptr<QWidget> Show(const Window& window) {
    auto form = MakeForm(window.Name(), nullptr);
    EXPECT_EQ(MismatchesOf(window, *form), std::vector<std::string>{});
    for (Control* control : window.Controls()) TieControl(*control, *form);
    form->show();
    return form;
  }

  TestHost test;
  Subs subs;
  FileChooser chooser{test.host, subs};
  const std::shared_ptr<Window> all[10] = {std::make_shared<Start>(test.host, subs, StartCommands()),
                                           std::make_shared<Verbindungstest>(test.host, subs.settings),
                                           std::make_shared<Datenaustausch>(test.host, subs, chooser),
                                           std::make_shared<updatetab>(test.host, subs, chooser),
                                           std::make_shared<updatepro>(test.host, subs, chooser),
                                           std::make_shared<UpdateproOx3>(test.host, subs, chooser),
                                           std::make_shared<FirmwareOX3Verpacken>(test.host, subs.settings),
                                           std::make_shared<PowerMonitor>(test.host, subs.settings),
                                           std::make_shared<Modem>(test.host, subs.settings),
                                           std::make_shared<Dateiwahl>(test.host, subs)};
};

TEST_F(Forms, EveryControlIsReachedByKeyboardAndNamedAndTracesTakeTheRoom) {
  for (const auto& window : all) {
    const auto form = Show(*window);
    QWidgetList reached;
    for (QWidget* next = form->nextInFocusChain(); next != form.get(); next = next->nextInFocusChain()) {
      if ((next->focusPolicy() & Qt::TabFocus) != 0) reached += next;
    }
    for (const Control* control : window->Controls()) {
      auto* widget = form->findChild<QWidget*>(QString::fromStdString(control->Name()));
      if (widget == nullptr || widget->inherits("QLabel") || widget->inherits("QMenu")) continue;
      SCOPED_TRACE(window->Name() + " " + control->Name());
      EXPECT_TRUE(reached.contains(widget));
      EXPECT_NE(QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name), "");
    }
    for (const auto* trace : form->findChildren<QPlainTextEdit*>()) {
      EXPECT_TRUE(trace->isReadOnly() && (trace->textInteractionFlags() & Qt::TextSelectableByMouse) != 0);
      const QSize before = trace->size();
      form->resize(form->size() + QSize(200, 200));
      QCoreApplication::processEvents();
      EXPECT_GE(trace->height(), before.height() + 50);
      EXPECT_EQ(trace->width(), before.width() + 200);
    }
  }
  const auto& one = *all[1];
  const auto& other = *all[4];
  EXPECT_EQ(MismatchesOf(one, *MakeForm(other.Name(), nullptr)).size(),
            one.Controls().size() + other.Controls().size());
}

TEST_F(Forms, TheMainMenuStandsInItsOrder) {
  const auto form = Show(*all[0]);
  std::string captions;
  const std::function<void(const QWidget&)> collect = [&](const QWidget& menu) {
    for (const QAction* action : menu.actions()) {
      captions += (action->isVisible() ? "" : "-") + action->text().toStdString() + "|";
      if (action->menu<QMenu*>() != nullptr) collect(*action->menu<QMenu*>());
    }
  };
  collect(*form->findChild<QWidget*>("menubar"));
  EXPECT_EQ(captions,
            "&Datei|&Ende|Update|Update Tabellen|Update Programm Orvanexe II + III|Verbindungstest|"
            "Datenaustausch|COM:|COM1: <|COM2:|COM3:|COM4:|-Tools|Firmware OX3 verpacken|"
            "Stromversorgungsmonitor OX III|-Modem|&?|");
}

}  // namespace
}  // namespace ox::test
