// The program: the host put together, the main window shown until it is closed.
#include <QApplication>
#include <QIcon>
#include <QLibraryInfo>
#include <QTranslator>
#include <string>

#include "app/program.h"
#include "desktop/qt_window_system.h"
#include "journal/journaled_host.h"
#include "link/port_notices.h"
#include "this_host/this_host.h"
#include "ui/host.h"
#include "version/version.h"

namespace {

/// The toolkit's own texts, such as the menu of a text field, in German where the distribution has them.
void SpeakGerman(QApplication& application, QTranslator& translator) {
  const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
  if (translator.load(QStringLiteral("qtbase_de"), folder)) application.installTranslator(&translator);
}

/// In the sizes that window systems show beside a window. Larger ones come with the package.
QIcon ProgramIcon() {
  QIcon icon;
  for (const int size : {16, 24, 32, 48, 64, 128}) {
    icon.addFile(QStringLiteral(":/icons/oxservice-%1.png").arg(size), QSize(size, size));
  }
  return icon;
}

std::string NameAndBuild() {
  const std::string commit = ox::kCommit;
  return std::string("Orvanexe Service ") + ox::kVersion + (commit.empty() ? "" : " (" + commit + ")");
}

}  // namespace

int main(int argumentCount, char** arguments) {
  qputenv("QT_NO_GLIB", "1");  // the toolkit's own event loop waits at less cost
  // Before the toolkit writes to a standard error that may be broken, or starts a thread.
  ox::ThisHost here;
  QApplication application(argumentCount, arguments);
  QApplication::setApplicationName(QStringLiteral("oxservice"));
  QApplication::setDesktopFileName(QStringLiteral("oxservice"));
  QApplication::setWindowIcon(ProgramIcon());
  QApplication::setQuitOnLastWindowClosed(
      false);  // the program ends with its main window, whatever else closes
  QTranslator translator;
  SpeakGerman(application, translator);

  ox::QtWindowSystem windows(here.openPorts, here.endRequests, here.awake,
                             ox::WindowPlaces(ox::WindowPlaces::UsersFile()));
  ox::Notices notices;
  ox::PortsWithNotices ports(here.ports, notices);
  ox::Host host{
      {windows, here.clock, ports, here.files, here.random, here.awake, here.portList}, windows, notices};
  ox::Journal journal(here.files, here.clock, NameAndBuild(), [&notices](const std::string& trouble) {
    notices.Say(ox::Notices::From::kLog, trouble);
  });
  ox::JournaledHost logged(host, journal);
  ox::Program program(logged.host);
  logged.windows.ShowModal(program.MainWindow());
  return 0;
}
