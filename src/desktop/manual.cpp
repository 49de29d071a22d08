// Where the manual lies, and how the desktop is asked to open it.
#include "desktop/manual.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QProcess>
#include <QSaveFile>
#include <QUrl>
#include <algorithm>
#include <array>
#include <vector>

#include "desktop/border.h"
#include "desktop/message_box.h"
#include "desktop/state_folder.h"

namespace ox {
namespace {

struct Chapter {
  std::string_view form;
  std::string_view place;
};

/// The build of the manual checks that it has these places.
constexpr std::array kChapters{
    Chapter{"Start", "#das-hauptfenster"},
    Chapter{"Verbindungstest", "#verbindungstest"},
    Chapter{"Datenaustausch", "#datenaustausch"},
    Chapter{"Dateiwahl", "#datei-wählen"},
    Chapter{"updatetab", "#update-tabellen"},
    Chapter{"updatepro", "#update-programm"},
    Chapter{"FirmwareOX3Verpacken", "#firmware-ox3-verpacken"},
    Chapter{"PowerMonitor", "#stromversorgungsmonitor"},
    Chapter{"Modem", "#modem"},
};

constexpr const char* kOpener = "xdg-open";

/// From the program's folder: as installed, and as built in a checkout.
constexpr std::array kPlaces{"../share/doc/oxservice/handbuch.html", "../../packaging/handbuch.html"};

/// The first that is there; where none is, the one of the installed program.
QString ManualFile() {
  const QDir program(QCoreApplication::applicationDirPath());
  const auto pathOf = [&](const char* place) {
    return QDir::cleanPath(program.filePath(QString::fromUtf8(place)));
  };
  const auto* const found =
      std::ranges::find_if(kPlaces, [&](const char* place) { return QFile::exists(pathOf(place)); });
  return pathOf(found == kPlaces.end() ? kPlaces.front() : *found);
}

/// A page that leads to the chapter at once: what opens a file for a desktop drops the chapter of its
/// address. Where the page cannot be written, the manual itself.
QString PageFor(const QString& manual, std::string_view chapter) {
  QUrl address = QUrl::fromLocalFile(manual);
  address.setFragment(QString::fromUtf8(chapter.data(), static_cast<qsizetype>(chapter.size())));
  const QString link = address.toString(QUrl::FullyEncoded).toHtmlEscaped();
  const QString folder = StateFolder();
  QDir().mkpath(folder);
  QSaveFile page(folder + QStringLiteral("/handbuch.html"));
  if (!page.open(QIODevice::WriteOnly)) return manual;
  page.write(
      QStringLiteral("<!DOCTYPE html><html lang=\"de\"><head><meta charset=\"utf-8\">"
                     "<meta http-equiv=\"refresh\" content=\"0; url=%1\"><title>Handbuch</title></head>"
                     "<body><a href=\"%1\">Handbuch</a></body></html>\n")
          .arg(link)
          .toUtf8());
  return page.commit() ? page.fileName() : manual;
}

void TellFailure(const QPointer<QWidget>& window, const QString& manual) {
  const QString text = QFile::exists(manual)
                           ? QStringLiteral("Das Handbuch lässt sich nicht anzeigen. Es liegt hier:\n")
                           : QStringLiteral("Das Handbuch ist nicht vorhanden. Es fehlt hier:\n");
  AtBorder([&] { ShowNote(window, (text + manual).toStdString()); });
}

/// Those at work, which nobody takes down: what opens a page may go on, and may last longer than the program.
std::vector<QProcess*>& Openers() {
  static auto* const kOpeners = new std::vector<QProcess*>;
  return *kOpeners;
}

/// Starts what opens files for the desktop, and hears from it whether it could.
void Open(const QString& page, QWidget& window, const QString& manual) {
  auto* opener = Openers().emplace_back(new QProcess);
  QObject::connect(opener, &QObject::destroyed, [opener] { std::erase(Openers(), opener); });
  opener->setStandardInputFile(QProcess::nullDevice());
  opener->setStandardOutputFile(QProcess::nullDevice());
  opener->setStandardErrorFile(QProcess::nullDevice());
  const QPointer<QWidget> over(&window);
  QObject::connect(opener, &QProcess::finished, opener, [opener, over, manual](int status) {
    if (status != 0) TellFailure(over, manual);
    opener->deleteLater();
  });
  QObject::connect(opener, &QProcess::errorOccurred, opener,
                   [opener, over, manual](QProcess::ProcessError error) {
                     if (error != QProcess::FailedToStart) return;
                     TellFailure(over, manual);
                     opener->deleteLater();
                   });
  opener->start(QString::fromUtf8(kOpener), {page});
}

}  // namespace

std::string_view ChapterOf(std::string_view form) {
  const auto* const chapter = std::ranges::find(kChapters, form, &Chapter::form);
  return chapter == kChapters.end() ? std::string_view() : chapter->place.substr(1);
}

void OpenManual(QWidget& window, std::string_view form) {
  const QString manual = ManualFile();
  if (QFile::exists(manual)) {
    Open(PageFor(manual, ChapterOf(form)), window, manual);
  } else {
    TellFailure(&window, manual);
  }
}

}  // namespace ox
