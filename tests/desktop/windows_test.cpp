// Windows over windows, how they go, message boxes over all of them, and rests between their events.
#include <sys/eventfd.h>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSessionManager>
#include <QSettings>
#include <QSplitter>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "desktop/bindings.h"
#include "desktop/forms.h"
#include "desktop/qt_window_system.h"
#include "desktop/state_folder.h"
#include "desktop/title_bar.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/posix_end_requests.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

using User = std::function<void()>;

/// The user acts as soon as an event loop runs.
void Later(User user) {
  QTimer::singleShot(0, qApp, std::move(user));
}

QWidget* Top() {
  return QApplication::activeModalWidget();
}

User Press(Qt::Key key) {
  return [key] { QTest::keyClick(Top(), key); };
}

const User kCloseBox = [] { Top()->close(); };
const User kWorkAndClose = [] {
  Press(Qt::Key_Return)();
  kCloseBox();
};
const User kSessionEnds = [] {
  QEvent quit(QEvent::Quit);
  QCoreApplication::sendEvent(qApp, &quit);
};

const User kSessionAsks = [] { emit qApp->commitDataRequest(*qApp->findChild<QSessionManager*>()); };

/// A window over an existing form, whose two buttons do what the test wants.
struct TwoButtons : Window {
  explicit TwoButtons(WindowSystem& windows, const std::string& caption = "Zwei Knöpfe")
      : Window(windows, "updatepro", caption) {}
  using Window::Unload;
  void OnLoad() override { work.MakeDefault(); }
  void OnCloseWhileRunning() override { life += "asked "; }
  void OnUnload() override { life += "unload"; }

  Button work{*this, "ProStart", "Arbeiten"};
  Button leave{*this, "proEnd", "Verlassen"};
  std::string life;
};

struct Windows : testing::Test {
  Windows() { ports.Add(line.Number()); }

  /// What becomes of the dialogue when it is shown over the main window and the user does this.
  std::string Life(const User& user) {
    Later([&] {
      Later(user);
      windows.ShowModal(dialogue);
      main.Unload();
    });
    windows.ShowModal(main);
    return std::exchange(dialogue.life, "");
  }

  Descriptor line{eventfd(1, EFD_NONBLOCK)};  // a port with unread input
  OpenPorts ports;
  PosixEndRequests requests;
  TestKeepAwake awake;
  const QTemporaryDir state;
  const QString left = state.filePath("neu/windows.ini");
  const WindowPlaces places{left};
  QtWindowSystem windows{ports, requests, awake, places};
  TwoButtons main{windows};
  TwoButtons dialogue{windows};
};

TEST_F(Windows, KeysAndCloseBoxActAtOnceAndACommandIsWaitedFor) {
  for (const User& close : {kCloseBox, Press(Qt::Key_Escape)}) {
    dialogue.work.onClick = [&] {
      close();
      EXPECT_TRUE(Top()->isVisible());
      windows.Rest();
      dialogue.life += "command ends ";
    };
    EXPECT_EQ(Life(close), "unload");
    EXPECT_EQ(Life(Press(Qt::Key_Return)), "asked command ends unload");
  }
  dialogue.work.onClick = [&] { dialogue.life += "worked "; };
  dialogue.leave.onClick = [&] { dialogue.life += "left "; };
  EXPECT_EQ(Life([&] {
              const User closeAbove = [upper = Top()] {
                EXPECT_EQ(Top()->parentWidget(), upper);
                kCloseBox();
              };
              Later(closeAbove);
              windows.ShowMessage("Frage");
              TwoButtons third(windows, std::string(30, 'W'));
              Later([closeAbove] {
                QFont title = QApplication::font("QMdiSubWindowTitleBar");
                title.setBold(true);
                EXPECT_NEAR(Top()->width() - QFontMetrics(title).horizontalAdvance(Top()->windowTitle()), 175,
                            25);
                EXPECT_EQ(Top()->windowFlags(), kDialogFrame | Qt::WindowMaximizeButtonHint);
                closeAbove();
              });
              windows.ShowModal(third);
              dialogue.leave.SetFocus();
              Press(Qt::Key_A)();
              Press(Qt::Key_Return)();
              Press(Qt::Key_Enter)();
              kCloseBox();
            }),
            "left left unload")
      << "the focused button alone";
}

TEST_F(Windows, AMessageStandsAsItIsCutAndBrokenToFitUntilItsLastAnswer) {
  const QString x80(80, 'x');
  const std::tuple<std::string, QString, User> cases[] = {
      {"<b>fett</b> & \"x\"\r\r\n/S/\r\n\n\x01", QString::fromUtf8("<b>fett</b> & \"x\"\n\n/S/\n\n␁"),
       kCloseBox},
      {std::string(20000, ' '), QString(20000, ' '), kCloseBox},
      {std::string(20001, ' '), QString(19999, ' ') + u'…', Press(Qt::Key_Escape)},
      {std::string(19998, ' ') + "😀x", QString(19998, ' ') + u'…', kCloseBox},  // no half of a character
      {std::string(80, 'x') + " " + std::string(161, 'x'),
       x80 + " " + x80 + QChar(0x200B) + x80 + QChar(0x200B) + "x", kCloseBox}};
  for (const auto& [text, shown, leave] : cases) {
    Later([&shown = shown, &leave = leave] {
      auto* box = qobject_cast<QMessageBox*>(Top());
      EXPECT_EQ(box->windowTitle() + box->text(), "Orvanexe Service" + shown);
      EXPECT_EQ(box->defaultButton()->text() + box->escapeButton()->text(), "OKAbbrechen");
      EXPECT_EQ(box->textFormat(), Qt::PlainText);
      leave();
    });
    EXPECT_EQ(windows.ShowMessage(text, Buttons::kOkCancel), Answer::kCancel);
  }
}

TEST_F(Windows, AMessageHigherThanTheScreenIsScrolledInsideItAndCopied) {
  const std::string xs(3000, 'x');
  for (const std::string& text : {xs, xs + std::string(500, '\n') + xs}) {
    Later([&] {
      const auto* scrolled = Top()->findChild<QPlainTextEdit*>();
      auto* label = Top()->findChild<QLabel*>("qt_msgbox_label");
      EXPECT_TRUE(label->isVisible()
                      ? text == xs && label->textInteractionFlags() == Qt::TextSelectableByMouse
                      : scrolled->isReadOnly() && scrolled->height() > 500);
      EXPECT_TRUE(Top()->screen()->availableGeometry().contains(Top()->geometry()));
      EXPECT_EQ(Top()->windowFlags(), kDialogFrame);
      QTest::keyClick(Top(), Qt::Key_C, Qt::ControlModifier);
      EXPECT_TRUE(QApplication::clipboard()->text().toStdString() == text);
      label->setSelection(1, 2);
      QTest::keyClick(Top(), Qt::Key_C, Qt::ControlModifier);
      EXPECT_EQ(QApplication::clipboard()->text(), "xx");
      kCloseBox();
    });
    windows.ShowMessage(text);
  }
}

TEST_F(Windows, WhereToSaveIsAskedBesideWhatRunsAndNothingIsReplacedUnasked) {
  const QTemporaryDir folder;
  std::ofstream(folder.filePath("alt.txt").toStdString()) << "alt";
  // What the user types, how he answers the question then, and what comes of it.
  const std::tuple<QString, User, std::string> rows[] = {{"neu", {}, "neu.txt 0"},
                                                         {"neu.CSV", {}, "neu.CSV 1"},
                                                         {"neu.dat", {}, "neu.dat 0"},
                                                         {"alt", Press(Qt::Key_Escape), ""},
                                                         {"alt", Press(Qt::Key_Return), "alt.txt 0"}};
  for (const auto& [typed, answer, expected] : rows) {
    std::string seen;
    const SaveAnswer answered = [&](const std::string& path, std::size_t kind) {
      seen = std::filesystem::path(path).filename().string() + " " + std::to_string(kind);
      throw std::runtime_error(seen);
    };
    dialogue.work.onClick = [&, &name = typed, &user = answer] {
      windows.AskWhereToSave("werte", {{"Text", "txt"}, {"Tabelle", "csv"}}, answered);
      auto* question = qobject_cast<QFileDialog*>(Top());
      EXPECT_EQ(question->selectedFiles().front(),
                QDir(name == "neu" ? "" : folder.path()).absoluteFilePath("werte.txt"));
      EXPECT_EQ(question->nameFilters(), QStringList({"Text (*.txt)", "Tabelle (*.csv)"}));
      EXPECT_EQ(question->windowFlags(), kDialogFrame);
      EXPECT_TRUE(question->acceptMode() == QFileDialog::AcceptSave &&
                  question->testOption(QFileDialog::DontUseNativeDialog));
      question->setDirectory(folder.path());
      question->selectFile(name);
      QMetaObject::invokeMethod(question, "accept");
      if (user) {
        const QString file = QDir::toNativeSeparators(folder.filePath("alt.txt"));
        EXPECT_EQ(qobject_cast<QMessageBox*>(Top())->text(),
                  "Die Datei " + file + " gibt es schon. Ersetzen?");
        user();
      }
      EXPECT_EQ(question->isVisible(), seen.empty());
      question->close();
    };
    testing::internal::CaptureStderr();
    Life(kWorkAndClose);
    EXPECT_EQ(seen, expected);
    EXPECT_TRUE(testing::internal::GetCapturedStderr().ends_with("oxservice: " + seen + "\n") ||
                seen.empty());
  }
}

TEST_F(Windows, F1OpensTheManualAtTheWindowsChapterOrSaysWhereItLiesAndNothingWaits) {
  const QTemporaryDir folder;
  const QString manual =
      QDir::cleanPath(QCoreApplication::applicationDirPath() + "/../share/doc/oxservice/handbuch.html");
  QFile::remove(manual);
  qputenv("XDG_STATE_HOME", folder.path().toUtf8());
  const QByteArray path = qgetenv("PATH");
  const auto write = [](const QString& name, const QString& content) {
    QDir().mkpath(QFileInfo(name).path());
    QFile file(name);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.setPermissions(QFile::Permissions(0x7000)));
    file.write(content.toUtf8());
  };
  /// What the user is told, or what is opened, while a command runs.
  const auto seen = [&]() -> QString {
    QString result;
    dialogue.work.onClick = [&] {
      Press(Qt::Key_F1)();
      QFile page(folder.filePath("seen"));
      const auto box = [] { return qobject_cast<QMessageBox*>(Top()); };
      while (box() == nullptr && !page.exists()) windows.Rest();
      if (page.open(QIODevice::ReadOnly)) result = page.readAll();
      if (box() == nullptr) return;
      result = box()->text().remove(QChar(0x200B));  // a long path may be broken
      kCloseBox();
    };
    Life(kWorkAndClose);
    return result;
  };
  EXPECT_EQ(seen(), "Das Handbuch ist nicht vorhanden. Es fehlt hier:\n" + manual);
  const QString built =
      QDir::cleanPath(QCoreApplication::applicationDirPath() + "/../../packaging/handbuch.html");
  write(built, "x");
  write(manual, "x");
  qputenv("PATH", folder.path().toUtf8());
  const QString failure = "Das Handbuch lässt sich nicht anzeigen. Es liegt hier:\n" + manual;
  EXPECT_EQ(seen(), failure) << "nothing opens files";
  write(folder.filePath("xdg-open"), "#!/bin/sh\nexit 1\n");
  EXPECT_EQ(seen(), failure) << "no browser";
  write(folder.filePath("xdg-open"),
        "#!/bin/sh\nfor n in 0 1 2; do [ -c /dev/fd/$n ] || exit 1; done\n/bin/cp \"$1\" \"${0%/*}/part\"; "
        "/bin/mv \"${0%/*}/part\" \"${0%/*}/seen\"\n");
  EXPECT_TRUE(seen().contains("url=file://" + manual + "#update-programm\""));
  QFile::remove(manual);
  QFile::remove(folder.filePath("seen"));
  EXPECT_TRUE(seen().contains("url=file://" + built + "#update-programm\"")) << "in a checkout";
  EXPECT_TRUE(QFile::exists(folder.filePath("oxservice/handbuch.html")));
  qputenv("PATH", path);
  QFile::remove(built);
}

TEST_F(Windows, AWindowStandsAsItWasLeftAndWithinItsScreen) {
  const auto shown = [&](const std::function<void(QWidget&, QSplitter&)>& user) {
    const auto form = MakeForm("Datenaustausch", nullptr);
    places.Restore(*form);
    form->show();
    QCoreApplication::processEvents();
    user(*form, *form->findChild<QSplitter*>());
    places.Keep(*form);
  };
  shown([](QWidget& form, QSplitter& splitter) {
    form.setGeometry(40, 50, 700, 540);
    splitter.setSizes({100, 250});
  });
  shown([](QWidget& form, QSplitter& splitter) {
    EXPECT_EQ(form.geometry(), QRect(40, 50, 700, 540));
    EXPECT_LT(splitter.sizes()[0] * 2, splitter.sizes()[1]);
    form.setGeometry(300, 400, 700, 700);  // with its middle on the screen
  });
  const auto fits = [](QWidget& form, QSplitter&) {
    EXPECT_TRUE(form.screen()->availableGeometry().contains(form.geometry()));
    EXPECT_TRUE(form.isMaximized() || form.y() > 1) << "where the desktop puts it";
  };
  shown([&](QWidget& form, QSplitter&) {
    const QRect frame(form.pos(), form.size() + kUsualFrame);
    EXPECT_EQ(frame.bottomRight(), form.screen()->availableGeometry().bottomRight());
  });
  shown([](QWidget& form, QSplitter&) { form.showMaximized(); });
  shown([](QWidget& form, QSplitter&) { EXPECT_TRUE(form.isMaximized()); });
  const std::string form = "[Datenaustausch]\n";
  const std::string damaged[] = {"\xFF[%%%\n=\nsize",
                                 form + "size=@Size(2147483647 -3)",
                                 form + "position=@Point(2147483647 -2147483648)",
                                 form + "position=@Point(2147483647 1)\nsplitter=@ByteArray(\\xff)",
                                 form + "maximized=vielleicht\nsize=7",
                                 form + "maximized=true\nx=" + std::string(3000000, 'x')};
  for (const std::string& content : damaged) {
    std::ofstream(left.toStdString()) << content;
    shown(fits);
    EXPECT_LT(QFileInfo(left).size(), 2000);
  }
  qunsetenv("XDG_STATE_HOME");
  qputenv("HOME", "/home/ox");
  EXPECT_EQ(StateFolder(), "/home/ox/.local/state/oxservice");
  EXPECT_TRUE(QSettings(left, QSettings::IniFormat).contains("Datenaustausch/size"));
  std::ofstream(left.toStdString()) << "[updatepro]\nposition=@Point(300 400)\nsize=@Size(700 700)";
  Life([] {
    EXPECT_EQ(Top()->frameGeometry().bottomRight(), Top()->screen()->availableGeometry().bottomRight());
    kCloseBox();
  });
  EXPECT_NE(QSettings(left, QSettings::IniFormat).value("updatepro/position").toPoint(), QPoint(300, 400));
}

TEST_F(Windows, ADisplaysMenuOpensByKeyboardCopiesMarksAndSaves) {
  const auto form = MakeForm("Datenaustausch", nullptr);
  TextBox trace(main, "datanz");
  TextBox values(main, "mewanz");
  EXPECT_TRUE(TieControl(trace, *form) && TieControl(values, *form));
  trace.SetText("ä\r\nb");
  form->show();
  auto* display = form->findChild<QPlainTextEdit*>("datanz");
  const auto choose = [&](qsizetype entry) {
    QApplication::setActiveWindow(form.get());
    display->setFocus();
    std::string entries;
    QTest::keyClick(display, Qt::Key_F10, Qt::ShiftModifier);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (menu == nullptr) return entries;
    for (const QAction* action : menu->actions())
      entries += (action->isEnabled() ? "|" : "|-") + action->text().toStdString();
    menu->actions()[entry]->trigger();
    menu->close();
    QCoreApplication::processEvents();
    return entries;
  };
  std::string saved;
  EXPECT_EQ(choose(1), "|-&Kopieren|&Alles markieren");
  trace.LetSave([&](const Bytes& shown) { saved = shown; });
  EXPECT_EQ(choose(0), "|&Kopieren|&Alles markieren||&Speichern unter ...");
  choose(3);
  EXPECT_EQ(QApplication::clipboard()->text().toStdString() + saved, "ä\nbä\nb");
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(display->findChild<QMenu*>(), nullptr) << "menus go";
}

TEST_F(Windows, AWindowWithoutItsFormIsNotShown) {
  const Button missing(main, "nirgends", "");
  testing::internal::CaptureStderr();
  windows.ShowModal(main);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "oxservice: the form of updatepro does not fit\n");
}

TEST_F(Windows, ARestWaitsForInputOfAnOpenPort) {
  QElapsedTimer timer;
  timer.start();
  for (int rest = 0; rest < 200; ++rest) windows.Rest();
  EXPECT_LT(timer.restart(), 1000) << "ten seconds, were each to last its full time";
  ports.Remove(line.Number());
  windows.Rest();
  windows.Rest();
  EXPECT_GT(timer.elapsed(), 10);
}

TEST_F(Windows, UnreadInputDoesNotKeepAMessageBoxBusy) {
  const QObject here;
  int rounds = 0;
  QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &here,
                   [&] { ++rounds; });
  Later([&] {
    rounds = 0;
    QTimer::singleShot(600, qApp, kCloseBox);
    windows.ShowMessage("Frage");
  });
  windows.Rest();
  EXPECT_LT(rounds, 10);
}

TEST_F(Windows, ARequestToEndWaitsForARunAnswersBoxesAndClosesAllWindows) {
  const User asked[] = {[] { raise(SIGTERM); }, [] { raise(SIGINT); }, [] { raise(SIGHUP); }, kSessionAsks,
                        kSessionEnds};
  std::signal(SIGHUP, SIG_DFL);  // as if the tests were not started by "nohup"
  // The toolkit has nothing to tell here.
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  for (const User& request : asked) {
    struct Again : Windows {
      void TestBody() override {}
    } desk;
    TwoButtons& run = desk.dialogue;
    TwoButtons third(desk.windows);
    run.work.onClick = [&] {
      {
        const KeepAwake::Hold hold(desk.awake);
        Later(request);
        EXPECT_EQ(desk.windows.ShowMessage("Frage", Buttons::kOkCancel), Answer::kCancel);
        request();
        raise(SIGPIPE);
        desk.windows.ShowModal(third);
        run.life += "needs: " + std::exchange(third.life, "") + ", ";
      }
      EXPECT_EQ(desk.windows.ShowMessage("Abbruch\r\n!", Buttons::kOk), Answer::kOk);
      desk.windows.ShowModal(third);
      desk.windows.AskWhereToSave("x", {{"Text", "txt"}}, {});
      run.life += "shows no more" + third.life + (Top()->inherits("QFileDialog") ? " but asks" : ", ");
    };
    testing::internal::CaptureStderr();
    EXPECT_EQ(desk.Life(Press(Qt::Key_Return)), "asked needs: unload, shows no more, unload");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "oxservice: Frage\noxservice: Abbruch\n!\n");
    EXPECT_EQ(desk.main.life, "unload");
  }
  qInstallMessageHandler(nullptr);
}

}  // namespace
}  // namespace ox::test
