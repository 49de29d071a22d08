// xdg-open, as a process beside the program.
#include "desktop/page_opener.h"

#include <QProcess>
#include <utility>
#include <vector>

namespace ox {
namespace {

constexpr const char* kOpener = "xdg-open";

/// Those at work, which nobody takes down: what opens a page may go on, and may last longer than the program.
std::vector<QProcess*>& Openers() {
  static auto* const kOpeners = new std::vector<QProcess*>;
  return *kOpeners;
}

}  // namespace

QString PlaceOfManual() {
  return QStringLiteral("../share/doc/oxservice/handbuch.html");
}

void OpenPage(const QString& page, std::function<void()> failed) {
  auto* opener = Openers().emplace_back(new QProcess);
  QObject::connect(opener, &QObject::destroyed, [opener] { std::erase(Openers(), opener); });
  opener->setStandardInputFile(QProcess::nullDevice());
  opener->setStandardOutputFile(QProcess::nullDevice());
  opener->setStandardErrorFile(QProcess::nullDevice());
  QObject::connect(opener, &QProcess::finished, opener, [opener, failed](int status) {
    if (status != 0) failed();
    opener->deleteLater();
  });
  QObject::connect(opener, &QProcess::errorOccurred, opener,
                   [opener, failed = std::move(failed)](QProcess::ProcessError error) {
                     if (error != QProcess::FailedToStart) return;
                     failed();
                     opener->deleteLater();
                   });
  opener->start(QString::fromUtf8(kOpener), {page});
}

}  // namespace ox
