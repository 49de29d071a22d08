// Every window against its form.
#include "desktop/forms.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <set>

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
#include "scripted_desktop.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

/// One of each window.
struct Windows {
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

  std::vector<Window*> All() {
    return {&start,          &connectionTest, &dataExchange, &tableUpdate, &programUpdate2,
            &programUpdate3, &packer,         &powerMonitor, &modem,       &fileChooser};
  }
};

TEST(Forms, EveryControlHasItsWidgetAndEveryWidgetItsControl) {
  Windows windows;
  for (Window* window : windows.All()) {
    const auto form = MakeForm(window->Name(), nullptr);
    ASSERT_NE(form, nullptr) << window->Name();
    EXPECT_EQ(MismatchesOf(*window, *form), std::vector<std::string>{});
  }
  EXPECT_EQ(MakeForm("Nirgends", nullptr), nullptr);

  const auto wrongForm = MakeForm("updatepro", nullptr);
  EXPECT_EQ(MismatchesOf(windows.connectionTest, *wrongForm).size(),
            windows.connectionTest.Controls().size() + windows.programUpdate2.Controls().size());
}

/// What the Tab key comes to, starting anywhere.
std::set<QWidget*> TabCycle(QWidget& form) {
  std::set<QWidget*> cycle;
  for (QWidget* widget = form.nextInFocusChain(); widget != &form; widget = widget->nextInFocusChain()) {
    if ((widget->focusPolicy() & Qt::TabFocus) != 0) cycle.insert(widget);
  }
  return cycle;
}

TEST(Forms, EverythingCanBeReachedByKeyboardAndHasAName) {
  Windows windows;
  for (Window* window : windows.All()) {
    const auto form = MakeForm(window->Name(), nullptr);
    for (Control* control : window->Controls()) TieControl(*control, *form);
    form->show();
    const std::set<QWidget*> cycle = TabCycle(*form);
    for (const Control* control : window->Controls()) {
      auto* widget = form->findChild<QWidget*>(QString::fromStdString(control->Name()));
      if (dynamic_cast<const Label*>(control) != nullptr || widget == nullptr) continue;
      if (dynamic_cast<const MenuEntry*>(control) != nullptr) continue;
      EXPECT_EQ(cycle.count(widget), 1) << window->Name() << " " << control->Name();
      QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(widget);
      EXPECT_FALSE(reader->text(QAccessible::Name).isEmpty()) << window->Name() << " " << control->Name();
    }
    for (Control* control : window->Controls()) control->ConnectView({});
  }
}

TEST(Forms, TracesAreReadOnlyAndTakeTheRoom) {
  for (const auto& [name, trace] : {std::pair{"Datenaustausch", "datanz"},
                                    {"PowerMonitor", "datanz"},
                                    {"Modem", "Datanz"},
                                    {"Datenaustausch", "mewanz"}}) {
    const auto form = MakeForm(name, nullptr);
    auto* widget = form->findChild<QPlainTextEdit*>(QString::fromUtf8(trace));
    EXPECT_TRUE(widget->isReadOnly());
    EXPECT_TRUE(widget->textInteractionFlags() & Qt::TextSelectableByMouse);
    EXPECT_TRUE(QFontInfo(widget->font()).fixedPitch() || QFontInfo(widget->font()).family() != "Monospace");
    form->show();
    const QSize before = widget->size();
    form->resize(form->size() + QSize(200, 200));
    QCoreApplication::processEvents();
    EXPECT_GE(widget->height(), before.height() + 50) << name;
    EXPECT_EQ(widget->width(), before.width() + 200) << name;
  }
}

TEST(Forms, LabelsTakeTheRoomOfTheirText) {
  Windows windows;
  const auto chooser = MakeForm("Dateiwahl", nullptr);
  TieControl(windows.fileChooser.Label1, *chooser);
  chooser->show();
  const auto* name = chooser->findChild<QWidget*>("Text2");
  const int withoutPrompt = name->y();
  windows.fileChooser.Label1.SetText("Messstellentabelle");
  QCoreApplication::processEvents();
  EXPECT_GT(name->y(), withoutPrompt) << "only a prompt that says something takes room";
  windows.fileChooser.Label1.ConnectView({});

  const std::string marks(60, '>');  // more than any update makes: large fonts are like more marks
  for (auto [window, status] : {std::pair<Window*, Label*>{&windows.tableUpdate, &windows.tableUpdate.Go},
                                {&windows.programUpdate2, &windows.programUpdate2.Go},
                                {&windows.programUpdate3, &windows.programUpdate3.Go}}) {
    const auto form = MakeForm(window->Name(), nullptr);
    TieControl(*status, *form);
    form->show();
    status->SetText(marks);
    QCoreApplication::processEvents();
    const auto* line = form->findChild<QLabel*>("Go");
    EXPECT_GE(line->contentsRect().width(), line->fontMetrics().horizontalAdvance(line->text()))
        << window->Name();
    status->ConnectView({});
  }
}

TEST(Forms, TheMainMenuStandsInItsOrder) {
  Windows windows;
  const auto form = MakeForm("Start", nullptr);
  for (Control* control : windows.start.Controls()) TieControl(*control, *form);
  std::vector<std::string> captions;
  const std::function<void(QWidget&)> collect = [&](QWidget& menu) {
    for (QAction* action : menu.actions()) {
      captions.push_back((action->isVisible() ? "" : "-") + action->text().toStdString());
      if (action->menu<QMenu*>() != nullptr) collect(*action->menu<QMenu*>());
    }
  };
  collect(*form->findChild<QWidget*>("menubar"));
  EXPECT_EQ(captions,
            (std::vector<std::string>{
                "&Datei", "&Ende", "Update", "Update Tabellen", "Update Programm Orvanexe II + III",
                "Verbindungstest", "Datenaustausch", "COM:", "COM1: <", "COM2:", "COM3:", "COM4:", "-Tools",
                "Firmware OX3 verpacken", "Stromversorgungsmonitor OX III", "-Modem", "&?"}));
  for (Control* control : windows.start.Controls()) control->ConnectView({});
}

}  // namespace
}  // namespace ox::test
