// Every window against its form.
#include "desktop/forms.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QLabel>
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

class Forms : public testing::Test {
 protected:
  /// The form of a window, which bears the window's controls and is on the screen.
  static std::unique_ptr<QWidget> Show(const Window& window) {
    auto form = MakeForm(window.Name(), nullptr);
    EXPECT_EQ(MismatchesOf(window, *form), std::vector<std::string>{});
    for (Control* control : window.Controls()) EXPECT_TRUE(TieControl(*control, *form));
    form->show();
    return form;
  }

  TestHost test;
  Subs subs;
  FileChooser chooser{test.host, subs};
  Start start{test.host, subs, {}};
  Verbindungstest connectionTest{test.host, subs.settings};
  Datenaustausch dataExchange{test.host, subs, chooser};
  updatetab tableUpdate{test.host, subs, chooser};
  updatepro programUpdate2{test.host, subs, chooser};
  UpdateproOx3 programUpdate3{test.host, subs, chooser};
  FirmwareOX3Verpacken packer{test.host, subs.settings};
  PowerMonitor powerMonitor{test.host, subs.settings};
  Modem modem{test.host, subs.settings};
  Dateiwahl fileChooser{test.host, subs};
  const std::vector<Window*> all{&start,          &connectionTest, &dataExchange, &tableUpdate,
                                 &programUpdate2, &programUpdate3, &packer,       &powerMonitor,
                                 &modem,          &fileChooser};
};

TEST_F(Forms, EveryControlHasItsWidgetReachedByKeyboardAndNamed) {
  for (const Window* window : all) {
    const auto form = Show(*window);
    QWidgetList reached;
    for (QWidget* next = form->nextInFocusChain(); next != form.get(); next = next->nextInFocusChain()) {
      if ((next->focusPolicy() & Qt::TabFocus) != 0) reached += next;
    }
    for (const Control* control : window->Controls()) {
      auto* widget = form->findChild<QWidget*>(QString::fromStdString(control->Name()));
      if (widget == nullptr || widget->inherits("QLabel") || widget->inherits("QMenu")) continue;
      EXPECT_TRUE(reached.contains(widget)) << window->Name() << " " << control->Name();
      EXPECT_NE(QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name), "")
          << control->Name();
    }
  }
  EXPECT_EQ(MakeForm("Nirgends", nullptr), nullptr);
  EXPECT_EQ(MismatchesOf(connectionTest, *MakeForm("updatepro", nullptr)).size(),
            connectionTest.Controls().size() + programUpdate2.Controls().size());
}

TEST_F(Forms, TracesAndLabelsTakeTheRoomOfTheirText) {
  std::string seen;
  for (Window* window : all) {
    const auto form = Show(*window);
    for (const auto* trace : form->findChildren<QPlainTextEdit*>()) {
      seen += window->Name() + " ";
      EXPECT_TRUE(trace->isReadOnly());
      EXPECT_TRUE(trace->textInteractionFlags() & Qt::TextSelectableByMouse);
      const QFontInfo font(trace->font());
      EXPECT_TRUE(font.fixedPitch() || font.family() != "Monospace");
      const QSize before = trace->size();
      form->resize(form->size() + QSize(200, 200));
      QCoreApplication::processEvents();
      EXPECT_GE(trace->height(), before.height() + 50);
      EXPECT_EQ(trace->width(), before.width() + 200);
    }
    if (auto* update = dynamic_cast<UpdateWindow*>(window)) {
      seen += window->Name() + " ";
      update->Go.SetText(std::string(60, '>'));  // more than any makes: large fonts are like more marks
      QCoreApplication::processEvents();
      const auto* line = form->findChild<QLabel*>("Go");
      EXPECT_GE(line->contentsRect().width(), line->fontMetrics().horizontalAdvance(line->text()));
    }
  }
  EXPECT_EQ(seen, "Datenaustausch Datenaustausch updatetab updatepro UpdateproOx3 PowerMonitor Modem ");

  const auto form = Show(fileChooser);
  const auto* below = form->findChild<QWidget*>("Text2");
  const int withoutPrompt = below->y();
  fileChooser.Label1.SetText("Messstellentabelle");
  QCoreApplication::processEvents();
  EXPECT_GT(below->y(), withoutPrompt) << "only a prompt that says something takes room";
}

TEST_F(Forms, TheMainMenuStandsInItsOrder) {
  const auto form = Show(start);
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
