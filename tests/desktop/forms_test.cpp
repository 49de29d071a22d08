// Every window on its form: what is shown, what the user reaches, and what his clicks and keys do.
#include "desktop/forms.h"

#include <QAccessible>
#include <QBitmap>
#include <QCheckBox>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDir>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QScrollBar>
#include <QSplitter>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolTip>

#include "app/start.h"
#include "chooser/chooser_values.h"
#include "chooser/dateiwahl.h"
#include "desktop/bindings.h"
#include "desktop/curve_view.h"
#include "desktop/file_drops.h"
#include "desktop/manual.h"
#include "exchange/datenaustausch.h"
#include "link/verbindungstest.h"
#include "modem/modem.h"
#include "power/power_monitor.h"
#include "support/expected_text.h"
#include "support/test_host.h"
#include "updates/firmware_packer.h"
#include "updates/program_update_window.h"
#include "updates/updatetab.h"

namespace ox::test {
namespace {

template <class Widget>
Widget* Find(const QWidget& form, const Control& control) {
  return form.findChild<Widget*>(QString::fromStdString(control.Name()));
}

struct Forms : testing::Test {
  /// The form of a window on the screen: every control has its widget, and every widget that a user could
  /// take for one has its control.
  static std::unique_ptr<QWidget> Show(const Window& window) {
    auto form = MakeForm(window.Form(), nullptr);
    QStringList names{""};
    for (Control* control : window.Controls()) {
      EXPECT_TRUE(TieControl(*control, *form)) << control->Name();
      names += QString::fromStdString(control->Name());
    }
    for (const auto* widget : form->findChildren<QWidget*>(QRegularExpression("^(?!qt_)"))) {
      if (widget->focusPolicy() == Qt::NoFocus && !widget->inherits("QLabel")) continue;
      EXPECT_TRUE(names.contains(widget->objectName())) << widget->objectName().toStdString();
    }
    form->show();
    return form;
  }

  TestHost test;
  ChooserValues chooserValues;
  Subs subs{{}, chooserValues};
  FileChooser chooser{test.host, subs};
  Start start{test.host, subs.settings, {}};
  Verbindungstest connection{test.host, subs.settings};
  Datenaustausch exchange{test.host, subs.settings, chooser};
  updatetab tables{test.host, subs, chooser};
  ProgramUpdateWindow program2{test.host, DeviceKinds().front(), subs, chooser};
  ProgramUpdateWindow program3{test.host, DeviceKinds().back(), subs, chooser};
  FirmwareOX3Verpacken packer{test.host, subs.settings};
  PowerMonitor power{test.host, subs.settings};
  Modem modem{test.host, subs.settings};
  Dateiwahl files{test.host, subs};
  Window* const all[10] = {&start,    &connection, &exchange, &tables, &program2,
                           &program3, &packer,     &power,    &modem,  &files};
};

/// Below each window's caption stand its controls as those are told of them who do not see them, behind their
/// places on the way of the Tab key.
TEST_F(Forms, EveryWindowIsAsWrittenDownAndHasItsChapterInTheManualAndTracesTakeTheRoom) {
  const std::string manual = ReadFile(OX_DEMO_FOLDER "/../docs/handbuch.md");
  const QByteArray places = QByteArray::fromStdString(manual).toLower().replace(' ', '-');
  std::string seen;
  for (const Window* window : all) {
    const auto form = Show(*window);
    const std::string chapter(ChapterOf(window->Form()));
    EXPECT_TRUE(places.contains(("\n##-" + chapter + "\n").c_str())) << window->Name();
    QWidgetList reached;
    for (QWidget* next = form->nextInFocusChain(); next != form.get(); next = next->nextInFocusChain())
      if ((next->focusPolicy() & Qt::TabFocus) != 0) reached += next;
    seen += window->Caption() + "\n";
    for (const Control* control : window->Controls()) {
      auto* widget = Find<QWidget>(*form, *control);
      if (widget == nullptr || widget->inherits("QMenu")) continue;
      const QString name = QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
      const std::string place = std::to_string(reached.indexOf(widget));
      seen += place + " " + name.toStdString() + " (" + control->Name() + ")\n";
    }
    for (const auto* handle : form->findChildren<QSplitterHandle*>())
      EXPECT_EQ(handle->accessibleName(), "Aufteilung");
    for (const auto* trace : form->findChildren<QPlainTextEdit*>()) {
      EXPECT_EQ(trace->font().family(), "Courier");
      EXPECT_EQ(trace->font().styleHint(), QFont::TypeWriter) << "for where there is no Courier";
      EXPECT_TRUE(trace->isReadOnly() && (trace->textInteractionFlags() & Qt::TextSelectableByMouse) != 0);
      const QSize before = trace->size();
      form->resize(form->size() + QSize(200, 200));
      QCoreApplication::processEvents();
      EXPECT_GE(trace->height(), before.height() + 50);
      EXPECT_EQ(trace->width(), before.width() + 200);
    }
  }
  ExpectFile("desktop/captions.txt", seen);
}

TEST_F(Forms, TheMainMenuStandsInItsOrder) {
  const auto form = Show(start);
  std::string captions;
  const std::function<void(const QWidget&, const std::string&)> collect = [&](const QWidget& menu,
                                                                              const std::string& indent) {
    for (const QAction* action : menu.actions()) {
      captions += indent + action->text().toStdString() + (action->isVisible() ? "\n" : " (hidden)\n");
      if (action->menu<QMenu*>() != nullptr) collect(*action->menu<QMenu*>(), indent + "  ");
    }
  };
  collect(*form->findChild<QWidget*>("menubar"), "");
  ExpectFile("desktop/menu.txt", captions);
  auto* ports = Find<QMenu>(*form, start.MenueCOM);
  test.portList.ports[1] = {"/dev/ttyUSB0", "a<b", PortUse::kFree, ""};
  ports->popup({});
  EXPECT_TRUE(ports->toolTipsVisible());
  EXPECT_EQ(ports->actions().front()->toolTip().count("COM1 ist /dev/ttyUSB0 (a&lt;b): frei"), 1);
  EXPECT_TRUE(ports->accessibleDescription().startsWith("COM1 ist /dev/ttyUSB0 (a<b): frei\nCOM2: nicht"));
  ports->setActiveAction(ports->actions().front());
  emit ports->hovered(ports->actions().back());  // which has been left since
  QTest::qWait(250);
  EXPECT_EQ(QToolTip::text(), ports->actions().front()->toolTip());
  ports->actions()[1]->trigger();
  QCoreApplication::processEvents();
  EXPECT_EQ(ports->actions()[1]->text(), "COM2: <");
}

TEST_F(Forms, WhatTheProgramSetsIsShown) {
  for (const Window* window : all) {
    const auto form = Show(*window);
    for (Control* control : window->Controls()) {
      const auto* shown = Find<QObject>(*form, *control);
      if (shown == nullptr || shown->inherits("QMenu")) continue;
      SCOPED_TRACE(window->Name() + " " + control->Name());
      control->SetVisible(true);
      EXPECT_EQ(shown->property("enabled"), control->Enabled());
      control->SetEnabled(!control->Enabled());
      EXPECT_EQ(shown->property("enabled"), control->Enabled());
      control->SetVisible(false);
      EXPECT_EQ(shown->property("visible"), false);
    }
  }
  const auto form = Show(tables);
  tables.ChMes.SetChecked(true);
  EXPECT_TRUE(Find<QCheckBox>(*form, tables.ChMes)->isChecked());
  tables.TabStart.SetText("Ende");
  tables.ChMes.SetText("Mes");
  EXPECT_EQ(Find<QPushButton>(*form, tables.TabStart)->text() + Find<QCheckBox>(*form, tables.ChMes)->text(),
            "EndeMes");
  const auto watch = Show(power);
  for (const bool ticks : {true, false}) {
    power.PowerTimer.SetEnabled(ticks);
    const auto* timer = watch->findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    EXPECT_EQ(std::tuple(timer->isActive(), timer->interval(), timer->timerType()),
              std::tuple(ticks, power.PowerTimer.IntervalMilliseconds(), Qt::PreciseTimer));
  }
  tables.Go.SetText("a < b & c\r\n\nc\r1\t\x1B\x7F\xFF" + std::string("\0 ", 2));
  const auto* status = Find<QLabel>(*form, tables.Go);
  EXPECT_EQ(status->text(), QString::fromUtf8("a < b & c\n\nc␍1\t␛␡\uFFFD␀ ")) << "nothing stays unseen";
  EXPECT_EQ(status->textFormat(), Qt::PlainText);
}

TEST_F(Forms, AProgressBarShowsAShareOrThatSomethingMovesAndKeepsItsRoom) {
  const auto form = Show(tables);
  ProgressBar& bar = tables.Progress.Bar;
  auto* shown = Find<QProgressBar>(*form, bar);
  const int room = Find<QWidget>(*form, tables.Progress.Step)->y();
  bar.SetVisible(true);
  const auto image = [&](auto change) {
    change();
    QCoreApplication::processEvents();
    const QImage seen = form->screen()->grabWindow(form->winId()).toImage();
    return seen.copy({shown->mapTo(form.get(), QPoint()), shown->size()});
  };
  const QImage half = image([&] { bar.SetPercent(50); });
  EXPECT_EQ(shown->value(), 50);
  const QImage moving = image([&] { bar.Pulse(); });
  EXPECT_NE(moving, image([&] { bar.Pulse(); }));
  EXPECT_NE(moving, half);
  const QRgb colour = shown->palette().color(QPalette::Highlight).rgb();
  QList<QRect> marks;
  for (int pulse = 0; pulse < 32; ++pulse) {
    const QImage place = image([&] { bar.Pulse(); });
    EXPECT_EQ(place.pixel(place.width() - 9, 0), half.pixel(half.width() - 9, 0)) << "the groove";
    const QRegion marked(QBitmap::fromImage(place.createMaskFromColor(colour, Qt::MaskOutColor)));
    if (!marks.contains(marked.boundingRect())) marks += marked.boundingRect();
  }
  EXPECT_EQ(marks.size(), 17) << "from one end to the other and back";
  const QRect inside = shown->rect().adjusted(1, 1, -1, -1);
  const QSize size(inside.width() / 5, inside.height());
  for (const int left : {1, inside.right() + 1 - size.width()})
    EXPECT_TRUE(marks.contains(QRect(QPoint(left, 1), size)));
  EXPECT_EQ(image([&] { bar.SetPercent(50); }), half);
  EXPECT_EQ(Find<QWidget>(*form, tables.Progress.Step)->y(), room);
}

TEST_F(Forms, NoWindowIsTooLargeForASmallScreenAndNoTextWidensOrHeightensIt) {
  // 1366 x 768 pixels at 150 %, less a frame and a task bar: the least of the screens that are told of.
  constexpr QSize kRoom(1366 * 2 / 3 - 12, 768 * 2 / 3 - 40);
  const std::string longText = std::string(3000, '>') + "\r\n\r\n" + std::string(300, 'x');
  for (const Window* window : all) {
    const auto form = Show(*window);
    const QSize least = form->minimumSizeHint();
    EXPECT_EQ(least.boundedTo(kRoom), least) << window->Name();
    const auto show = [&](const std::string& text) {
      for (Control* control : window->Controls()) {
        if (auto* list = dynamic_cast<ListBox*>(control)) list->SetItems({text});
        if (auto* box = dynamic_cast<TextBox*>(control)) box->SetText(text);
        auto* label = dynamic_cast<Label*>(control);
        if (label != nullptr && (label->Text().empty() || label->Text() == "x")) label->SetText(text);
      }
      QCoreApplication::processEvents();
    };
    show("x");
    form->resize(1, 1);
    QCoreApplication::processEvents();
    const QSize before = form->size();
    show(longText);
    EXPECT_EQ(form->size(), before) << window->Name();
  }
}

TEST_F(Forms, ClicksSelectAndDoubleClicksActivate) {
  auto form = Show(files);
  EXPECT_TRUE(Find<QLabel>(*form, files.Label1)->isHidden()) << "an empty prompt takes no room";
  std::string happened;
  files.File1.onSelect = [&] { happened += "select " + files.File1.SelectedItem() + " "; };
  files.File1.onActivate = [&] { happened += "activate "; };
  files.File1.SetItems({"eins", "zwei", "drei"});
  auto* list = Find<QListWidget>(*form, files.File1);
  QFocusEvent focus(QEvent::FocusIn);
  QCoreApplication::sendEvent(list, &focus);
  const QPoint second = list->visualItemRect(list->item(1)).center();
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, second);
  happened += "and ";
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, second);  // on the selected line counts too
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, second);
  QTest::mouseRelease(list->viewport(), Qt::LeftButton, {}, second);
  QTest::keyClick(list, Qt::Key_Down);
  QTest::keyClick(list, Qt::Key_Return);
  EXPECT_EQ(std::exchange(happened, ""), "select zwei and select zwei activate select drei activate ");
  EXPECT_TRUE(list->frameStyle() == (QFrame::Box | QFrame::Plain) &&
              list->palette().windowText() == list->palette().highlight());
  files.File1.SetSelected(0);
  EXPECT_EQ(list->selectedItems().front()->text(), "eins");
  files.File1.SetItems({"vier", "fünf"});
  list->setCurrentRow(0, QItemSelectionModel::NoUpdate);  // as the focus does
  for (const Qt::Key key : {Qt::Key_F2, Qt::Key_Down}) QTest::keyClick(list, key);
  EXPECT_EQ(std::exchange(happened, ""), "select vier ") << "an only line can be selected by keyboard";

  files.Drive1.onSelect = [&] { happened += files.Drive1.SelectedItem(); };
  files.Drive1.SetItems({"x"});
  files.Drive1.SetItems({"/", "/media"});
  auto* drives = Find<QComboBox>(*form, files.Drive1);
  EXPECT_EQ(std::pair(drives->count(), drives->currentIndex()), std::pair(2, files.Drive1.Selected()));
  files.Drive1.SetSelected(1);
  QTest::keyClick(drives, Qt::Key_Up);
  EXPECT_EQ(happened, "/");

  form->hide();
  QApplication::setActiveWindow(form.get());  // the desktop may do that too late
  list->setFocus();
  EXPECT_EQ(QApplication::focusWidget(), list);
  form.reset();  // the list loses the focus when it is no list any more
}

TEST_F(Forms, AFieldHandsOnEnterAndShowsThatItWasRefusedUntilItChanges) {
  const auto form = Show(exchange);
  auto* field = Find<QLineEdit>(*form, exchange.MST);
  const auto look = [&] {
    return std::pair(field->palette().color(QPalette::Base), field->accessibleDescription());
  };
  const auto usual = look();
  exchange.MST.onEnter = [&] { exchange.MST.SetMarked(true); };
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(look(), std::pair(QColor(255, 179, 179), QString("Eingabe prüfen")));
  QTest::keyClick(field, Qt::Key_1);
  EXPECT_EQ(look(), usual);
  EXPECT_EQ(usual, std::pair(QColor(Qt::white), QString()));
  exchange.MST.SetText("12");
  QTest::keyClick(field, Qt::Key_Home);
  QTest::keyClicks(field, "45");
  exchange.MST.Append("3");
  EXPECT_EQ(field->text(), "45123");
}

TEST_F(Forms, DroppedFilesGoToTheControlThatTakesThem) {
  const auto form = Show(exchange);
  new FileDrops(exchange, *form);
  std::string dropped;
  exchange.duemstwal.TakeFiles("*.mes", [&](const std::string& path) { dropped += path + " "; });
  const QTemporaryDir folder;
  QDir(folder.path()).mkdir("x.mes");
  QMimeData dragged;
  dragged.setUrls({QUrl("file:///a%20b.MES"), QUrl("file:///c.par"), QUrl("http://d.mes"),
                   QUrl("file:///.mes"), QUrl::fromLocalFile(folder.filePath("x.mes"))});
  const auto taken = [](QWidget* target, QDropEvent&& event) {
    QCoreApplication::sendEvent(target, &event);
    return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
  };
  for (QWidget* target : {form.get(), Find<QWidget>(*form, exchange.AKZ)}) {
    EXPECT_EQ(taken(target, QDragEnterEvent({}, Qt::CopyAction, &dragged, Qt::LeftButton, {})),
              Qt::CopyAction);
    taken(target, QDragMoveEvent({}, Qt::CopyAction, &dragged, Qt::LeftButton, {}));
    EXPECT_EQ(taken(target, QDropEvent({}, Qt::CopyAction | Qt::MoveAction, &dragged, Qt::LeftButton,
                                       Qt::ShiftModifier)),
              Qt::CopyAction)
        << "the files stay where they are";
  }
  EXPECT_EQ(dropped, "") << "the program that they come from waits for nothing";
  QCoreApplication::processEvents();
  EXPECT_EQ(dropped + exchange.AKZ.Text(), "/a b.MES /.mes /a b.MES /.mes ");
  exchange.duemstwal.SetEnabled(false);
  EXPECT_EQ(taken(form.get(), QDragEnterEvent({}, Qt::CopyAction, &dragged, Qt::LeftButton, {})),
            Qt::IgnoreAction);
}

TEST_F(Forms, AGrowingTraceIsOnlyAddedToUntilItsOldestPartGoes) {
  const auto form = Show(exchange);
  const auto* trace = Find<QPlainTextEdit>(*form, exchange.datanz);
  int removed = 0;
  QObject::connect(trace->document(), &QTextDocument::contentsChange, trace,
                   [&](int, int gone, int) { removed += gone; });
  for (int line = 0; line < 1000; ++line) exchange.datanz.Append("PC <- OX  ä<CR>\r\n");
  QCoreApplication::processEvents();
  EXPECT_EQ(std::tuple(trace->document()->blockCount(), removed, trace->isUndoRedoEnabled()),
            std::tuple(1001, 0, false));
  EXPECT_GT(trace->verticalScrollBar()->value(), 900) << "the newest lines are in sight";
  exchange.datanz.KeepNewest(4000);
  QCoreApplication::processEvents();
  EXPECT_TRUE(trace->document()->blockCount() < 230 && trace->verticalScrollBar()->value() > 150);
  removed = 0;
  exchange.datanz.Append("PC <- OX  N");
  QCoreApplication::processEvents();
  EXPECT_EQ(trace->toPlainText(), QString::fromStdString(exchange.datanz.Text()).remove('\r'));
  EXPECT_EQ(removed, 0);
}

TEST_F(Forms, ACurveTellsItsValuesByKeyboardAndSavesItsPicture) {
  const auto form = Show(power);
  PowerHistory history;
  power.Verlauf.Show(history.Data());
  auto* view = Find<CurveView>(*form, power.Verlauf);
  std::string spoken;
  const auto listen = [&] {
    auto* speaks = QAccessible::queryAccessibleInterface(view);
    for (const auto what : {QAccessible::Name, QAccessible::Description, QAccessible::Value})
      spoken += speaks->text(what).toStdString() + "\n";
  };
  listen();
  const QImage empty = view->grab().toImage();
  history.Restart({2026, 12, 31, 23, 59, 50}, 86390);
  history.Add({.charge = 790, .batteryVoltage = 6820, .temperature = 123}, 86391);
  history.Add({.charge = 800, .batteryVoltage = 6810, .temperature = 123}, 5);
  power.Verlauf.Show(history.Data());
  EXPECT_NE(view->grab().toImage(), empty);
  listen();
  for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right}) {
    QTest::keyClick(view, key);
    listen();
  }
  ExpectFile("desktop/spoken.txt", spoken);
  Bytes saved;
  power.Verlauf.LetSave([&](const Bytes& picture) { saved = picture; });
  QContextMenuEvent byKey(QContextMenuEvent::Keyboard, {}, {});
  QCoreApplication::sendEvent(view, &byKey);
  auto* menu = view->findChild<QMenu*>();
  EXPECT_EQ(menu->actions().last()->text(), "&Speichern unter ...");
  menu->actions().last()->trigger();
  menu->close();
  QCoreApplication::processEvents();
  EXPECT_EQ(QImage::fromData(QByteArray::fromStdString(saved)).size(), QSize(2000, 960));
}

TEST_F(Forms, AReaderOfTheValuesKeepsHisPlaceWhenTheyAreReplaced) {
  const auto form = Show(exchange);
  auto* values = Find<QPlainTextEdit>(*form, exchange.mewanz);
  std::string text;
  for (int line = 0; line < 200; ++line) text += std::string(200, 'a') + "\r\n";
  exchange.mewanz.SetText(text);
  const auto place = [&] {
    const QTextCursor cursor = values->textCursor();
    return std::tuple(values->verticalScrollBar()->value(), values->horizontalScrollBar()->value(),
                      cursor.anchor(), cursor.position());
  };
  EXPECT_EQ(place(), std::tuple(0, 0, 0, 0));
  values->find("a\n", QTextDocument::FindBackward);
  for (int line = 0; line < 90; ++line) values->moveCursor(QTextCursor::Down);
  values->moveCursor(QTextCursor::Right, QTextCursor::KeepAnchor);
  values->verticalScrollBar()->setValue(77);
  values->horizontalScrollBar()->setValue(33);
  exchange.mewanz.SetText("");  // of a poll that failed
  exchange.mewanz.SetText(text + "b");
  QCoreApplication::processEvents();
  EXPECT_EQ(place(), std::tuple(77, 33, 90 * 201, 90 * 201 + 1));
  for (const std::string& other : {std::string("c"), text}) {
    exchange.mewanz.SetText(other);
    EXPECT_EQ(values->textCursor().position(), 1);
  }
}

TEST_F(Forms, AssistiveTechnologyDoesWhatAHandDoes) {
  const auto at = [](QObject* object) { return QAccessible::queryAccessibleInterface(object); };
  const auto fields = Show(exchange);
  auto* office = Find<QLineEdit>(*fields, exchange.AKZ);
  at(office)->setText(QAccessible::Value, "123");
  EXPECT_EQ(exchange.AKZ.Text(), "123");

  const auto boxes = Show(tables);
  auto* box = Find<QCheckBox>(*boxes, tables.ChMes);
  QAccessibleActionInterface* hand = at(box)->actionInterface();
  int chosen = 0;
  tables.ChMes.onClick = [&] { ++chosen; };
  hand->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_EQ(chosen, 0) << "the caller waits for nothing";
  QCoreApplication::processEvents();
  EXPECT_EQ(std::pair(chosen, tables.ChMes.Checked()), std::pair(1, true));
  QTest::mouseClick(box, Qt::LeftButton, {}, {8, box->height() / 2});
  QTest::mouseClick(box, Qt::LeftButton, {}, {8, box->height() / 2});
  EXPECT_EQ(chosen, 3) << "at once";
  QCoreApplication::processEvents();
  EXPECT_EQ(std::exchange(chosen, 1), 3) << "a click is handed on once";

  const auto menu = Show(start);
  auto* command = Find<QAction>(*menu, start.MenuInfo);
  start.MenuInfo.onClick = [&] { ++chosen; };
  command->trigger();
  EXPECT_EQ(chosen, 1) << "the caller waits for nothing";
  QCoreApplication::processEvents();
  EXPECT_EQ(chosen, 2);

  QDialog message;  // before all of them
  message.setModal(true);
  message.show();
  at(office)->setText(QAccessible::Value, "456");
  hand->doAction(QAccessibleActionInterface::toggleAction());
  command->trigger();
  QCoreApplication::processEvents();
  EXPECT_EQ(exchange.AKZ.Text() + office->text().toStdString(), "123123");
  EXPECT_EQ(std::pair(chosen, box->isChecked()), std::pair(2, true));
}

}  // namespace
}  // namespace ox::test
