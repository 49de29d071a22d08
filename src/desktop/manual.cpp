// Where the manual lies, and how the desktop is asked to open it.
#include "desktop/manual.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QSaveFile>
#include <QUrl>
#include <algorithm>
#include <array>

#include "desktop/border.h"
#include "desktop/message_box.h"
#include "desktop/page_opener.h"
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

/// From the program's folder, as built in a checkout.
constexpr const char* kBuiltManual = "../../packaging/handbuch.html";

/// As installed, or as built; where there is none, the place of the installed one.
QString ManualFile() {
  const QDir program(QCoreApplication::applicationDirPath());
  const auto pathOf = [&](const QString& place) { return QDir::cleanPath(program.filePath(place)); };
  const QString installed = pathOf(PlaceOfManual());
  const QString built = pathOf(QString::fromUtf8(kBuiltManual));
  return !QFile::exists(installed) && QFile::exists(built) ? built : installed;
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
  AtBorder([&] { ShowNote(window, (text + QDir::toNativeSeparators(manual)).toStdString()); });
}

}  // namespace

std::string_view ChapterOf(std::string_view form) {
  const auto* const chapter = std::ranges::find(kChapters, form, &Chapter::form);
  return chapter == kChapters.end() ? std::string_view() : chapter->place.substr(1);
}

void OpenManual(QWidget& window, std::string_view form) {
  const QString manual = ManualFile();
  if (QFile::exists(manual)) {
    OpenPage(PageFor(manual, ChapterOf(form)),
             [over = QPointer<QWidget>(&window), manual] { TellFailure(over, manual); });
  } else {
    TellFailure(&window, manual);
  }
}

}  // namespace ox
