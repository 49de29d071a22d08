// A technician's day, from the first connection to the last: the windows on the screen, the device on the
// line.
#include <gtest/gtest.h>
#include <sys/prctl.h>

#include <QCryptographicHash>
#include <QDateTime>
#include <QProcess>
#include <QRegularExpression>
#include <csignal>
#include <filesystem>
#include <optional>

#include "app/program.h"
#include "day/user.h"
#include "desktop/qt_window_system.h"
#include "platform/posix/posix_host.h"
#include "platform/scratch_folder.h"
#include "platform/text.h"
#include "simulator/demo_files.h"
#include "simulator/demo_stations.h"
#include "simulator/polls.h"
#include "simulator/program_layout.h"

namespace ox::test {
namespace {

constexpr const char* kUpdateWarning = R"(Wichtiger Hinweis:

Führen Sie den Programmiervorgang nur aus, wenn die Stromversorgung
der Orvanexe II sichergestellt ist (Akku ausreichend geladen
oder Ladegerät angeschlossen) und achten Sie auf eine sichere
Verbindung zum PC (Stecker verschraubt)!

Eine Unterbrechung während der Programmierung kann dazu führen, dass
das Programm nicht lauffähig ist und das Gerät in die Werkstatt muss!
)";

// What the status line tells when an update is through: steps and blocks.
const std::string kSteps(4, '>');
const std::string kBlocks(32, '>');

/// The demo tables, and in "neu" the same with one more point, one more parameter and their assignment.
void WriteTables() {
  std::filesystem::copy(OX_DEMO_FOLDER, ".");
  std::filesystem::create_directory("neu");
  const auto add = [](const std::string& table, const std::string& after, const std::string& line) {
    std::string text = ReadFile(table);
    text.insert(text.find('\n', text.find(after)) + 1, line + "\n");
    WriteFile("neu/" + table, text);
  };
  add("netz.mes", "12345681", R"(  /N/"12345690" /D/" 0001" /M/"-0001" /T/"Ö-Neu"  neu)");
  add("netz.par", "\"0020\"", R"(/P/"0021" /T/"Ölfilm" /M/"mm ")");
  add("netz.zuo", "12345681", R"(/N/"12345690" /P/"0001,0021")");
}

/// The trace of a dialogue: wake-up, request, the lines of the reply, thanks.
std::string Trace(const Bytes& request, const sim::ReplyLines& reply) {
  std::string trace = "PC -> OX  S\nPC <- OX  A\nPC -> OX  " + ToText(request);
  for (const Bytes& line : reply) trace += "\nPC <- OX  " + ToText(line);
  return Q(trace + "\nPC -> OX  A").replace("\r", "<CR>").toStdString();
}

class Day : public User {
 public:
  void Work() {
    AwaitWindow("Orvanexe Service");
    PlugDevice("3");
    TestConnection("SW 3.20 11/2026 ");
    Expect("COM Baudanz Paritätanz", "Schnittstelle: COM1|9600 2400 4800|ungerade gerade ungerade gerade");
    PollTheNetwork();
    UpdateTables("99fe1614ddc2abcf8d47e0090c780077ec5eb47b");
    PollTheNewPoint();
    UpdateProgram("ox3.pr3", "V5.10 22.11.2026");
    PackFirmware();
    UpdateProgram("neu/ox3neu.pr3", "V5.20 22.11.2026");
    WatchThePower();

    PlugDevice("2");
    UpdateTables("773c72cbf4cd946c3e0fa3d16b128189967f7355");
    PollTheNewPoint();
    UpdateProgram("ox2.pro", "V4.20 22.11.2026");

    Plug({"--modem"});
    TryTheModem();
    CloseWindow();
    Unplug();
  }

 private:
  void Plug(const QStringList& options) {
    Unplug();  // one device at a time on COM1
    line_.emplace();
    line_->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    line_->setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });  // whatever becomes of the test
    line_->start(OX_SIMULATOR,
                 QStringList{"--unpaced", "--dump", ".", "--baud", "4800", "--parity", "E"} + options);
    if (!line_->waitForReadyRead()) qFatal("oxsim does not start");
  }

  void Unplug() {
    if (!line_) return;
    line_->terminate();
    line_->waitForFinished();
    line_.reset();
  }

  void Signal(int signal) const { kill(static_cast<pid_t>(line_->processId()), signal); }

  /// What the device holds now in a part of its memory; nothing when it does not tell.
  Bytes Memory(const std::string& part) const {
    std::filesystem::remove(part);
    Signal(SIGUSR1);
    const QDeadlineTimer end(kPatience);
    while (!std::filesystem::exists(part) && !end.hasExpired()) QThread::msleep(1);
    return ReadFile(part);
  }

  void PlugDevice(const std::string& generation) {
    Plug({"--generation", Q(generation)});
    older_ = generation != "3";
    polls_ = sim::Polls(kSeed);
    stations_ = sim::ReadDemoStations(".", older_).value();
  }

  /// Menu, and what the main window says of the device.
  void TestConnection(const std::string& version) {
    ChooseMenu("MenuVerb");
    Answer("Verbindung ist hergestellt!\n\nGerätetyp: OX " + std::string(older_ ? "2" : "3") +
           "\nSoftwarestand: " + version + "\nBaudrate: 4800\nParität: gerade\nDatenbits: 7\nCOM-Port: 1");
  }

  // Data exchange.

  void OpenDataExchange() {
    ChooseMenu("MenuDaten");
    AwaitWindow("Datenaustausch mit Orvanexe");
    Expect("LabelMewanz", "Mst.Nr.   Par.   Mewe.  Mst.Nr.   Par.   Mewe.  Mst.Nr.   Par.   Mewe.");
    names_.clear();
  }

  /// Points are shown by the names of this table from now on.
  void LoadNames(const std::string& path) {
    ChooseFile("duemstwal", path);
    AwaitWindow("Datenaustausch mit Orvanexe");
    AwaitUsable("Verlassen");
    names_ = Q(ReadFile(path));
  }

  /// The trace and the values of a poll: with the same network and the same luck as the device on the line
  /// the answer is the same.
  std::string Answered(const Bytes& request) {
    constexpr std::size_t kRecordSize = 23;  // without the unit
    const sim::ReplyLines reply = request == "P"           ? polls_.AnswerP(stations_, 0)
                                  : request.front() == 'Z' ? polls_.AnswerZ(request, stations_)
                                                           : polls_.AnswerJ(request, stations_);
    QString values;
    int records = 0;
    for (const Bytes& line : reply) {
      if (line.size() < kRecordSize) continue;
      values += Q(line.substr(reply.size() == 1 ? 1 : 0, kRecordSize));  // a single one is framed
      values += ++records % 3 == 0 ? '\n' : '|';
    }
    const QRegularExpression point(R"re(/N/"(\d{8})".*/T/"([^"]*)")re");
    for (const auto& found : point.globalMatch(names_)) {
      values.replace(found.captured(1) + ":", "   " + found.captured(2).leftJustified(5) + ":");
    }
    return Trace(request, reply) + "|" + values.toStdString();
  }

  /// Fills the fields with what the request shall hold in its columns.
  void Poll(const std::string& button, const Bytes& request, const std::string& hint = "") {
    const auto column = [&](int at, int size) { return Q(request).mid(at, size).trimmed().toStdString(); };
    Type({{"AKZ", column(1, 3)}, {"MST", column(5, 8)}, {"Par", column(15, 4)}});
    Click(button);
    if (!hint.empty()) Answer(hint);
    AwaitUsable("Verlassen");
    Expect("datanz mewanz", Answered(request));
  }

  void PollTime() {
    Click("Zeitabruf");
    AwaitUsable("Verlassen");
    const std::string shown = Text("mewanz");
    const QDateTime clock = QDateTime::fromString(Q(shown), "dd.MM.yy HH:mm:ss|").addYears(100);
    EXPECT_TRUE(clock.isValid()) << shown;
    EXPECT_LE(std::abs(clock.secsTo(QDateTime::currentDateTime())), 2) << shown;
    Expect("datanz", Trace("T", {"0" + shown.substr(0, shown.size() - 1) + "\r"}));
  }

  void PollTheNetwork() {
    OpenDataExchange();
    Poll("Einzelabruf", "J    12345678: 0012\r");
    Poll("Sammelabruf", "P");
    PollTime();
    LoadNames("netz.mes");
    Poll("Einzelabruf", "J    12345678: 0012\r");
    Poll("Abruf_Y", "Z    12345678: 0012\r");
    Poll("Einzelabruf", "J    12345678:     \r");
    Poll("Einzelabruf", "J101               \r");
    Poll("Einzelabruf", "J              0004\r");
    Poll("Sammelabruf", "P");
    Poll("Abruf_Y", "Z205 12345678: 0001\r",
         "Hinweis: Amtskennzeichen ist redundant und wird deshalb von der Orvanexe nicht ausgewertet!");
    Click("Zyklischer_Abruf");
    AwaitUsable("Abbruch");
    Expect("datanz mewanz", Answered("P"));
    Click("Abbruch");
    Click("Verlassen");
  }

  void PollTheNewPoint() {
    OpenDataExchange();
    LoadNames("neu/netz.mes");
    Poll("Einzelabruf", "J    12345690:     \r");
    EXPECT_NE(Text("mewanz").find("   Ö-Neu: 0021"), std::string::npos);
    Poll("Sammelabruf", "P");
    Click("Verlassen");
  }

  // Updates.

  void ChooseFile(const std::string& button, const std::string& path) {
    Click(button);
    AwaitWindow("Datei wählen");
    Type({{"Text2", path}});
    Click("Command1");
  }

  /// The image that the device must hold then is told by its SHA-1.
  void UpdateTables(const std::string& image) {
    ChooseMenu("MenuUpTab");
    AwaitWindow("Update Tabellen");
    ChooseFile("ChMes", "neu/netz");
    Expect("Go", "Messstellentabelle wird geladen ... O.K.!");
    ChooseFile("ChPar", "neu/netz.par");
    Expect("Go", "Parameterliste wird geladen ... O.K.!");
    ChooseFile("ChZuo", "neu/netz.zuo");
    Expect("Go", "Zuordnungstabelle wird geladen ... O.K.!");
    Click("TabStart");
    Expect("Go", kSteps + kBlocks);
    Answer("Tabellenupdate erfolgreich abgeschlossen!");
    Expect("Go", "");
    const auto held = QByteArray::fromStdString(Memory("tables.bin"));
    EXPECT_EQ(QCryptographicHash::hash(held, QCryptographicHash::Sha1).toHex().toStdString(), image);
    Click("TabEnd");
    stations_ = sim::ReadDemoStations("neu", older_).value();
  }

  void UpdateProgram(const std::string& file, const std::string& version) {
    const std::string loaded = "Programmdatei wird geladen ... O.K.!";
    ChooseMenu("MenUpPro");
    Answer(kUpdateWarning);
    AwaitWindow(older_ ? "Update Programm OX II" : "Update Programm OX III");
    ChooseFile("ChPro", file);
    Expect("Go", loaded);
    Click("ProStart");
    Expect("Go", (older_ ? kSteps : loaded) + kBlocks);
    Answer("Programmupdate erfolgreich abgeschlossen!");
    Bytes held = Memory("program.bin");
    EXPECT_TRUE(sim::ProgramSealed(held, older_ ? sim::kSmallProgram : sim::kLargeProgram));
    if (older_) held.replace(held.size() - 2, 2, 2, '\0');  // the file leaves the check word open
    EXPECT_TRUE(sim::ProgramFile(held) == ReadFile(file));
    Click("proEnd");
    TestConnection(version);
  }

  void PackFirmware() {
    ChooseMenu("MenueToolsFirmwareOX3");
    AwaitWindow("Firmware OX3 verpacken");
    Type({{"TextQuelle", "OX3NEU"}, {"TextZiel", "neu/ox3neu"}});
    Click("CoStart");
    Answer("Vorgang erfolgeich beendet !");
    CloseWindow();
  }

  // Power monitor.

  void WatchThePower() {
    const std::string figures =
        "BatteryCapacity BatteryCheckCapacity OperationVoltage BatteryVoltage Temperature "
        "ChargeControllerState datanz";
    ChooseMenu("MenuPowerMonitor");
    AwaitWindow("Stromversorgungsmonitor der Orvanexe");
    Type({{"TPreset", "42"}});
    Click("MonitorStart");
    Expect(figures,
           "79.1%|95.0%|0.000V|6.824V| 23°C|Entladung|" + Trace(">\xFF\r", {"0031703B600001AA8007B0001\r"}));
    Click("CPreset");
    Expect(figures, "42.0%|95.0%|12.222V|6.376V| 23°C|Schnellladung|" +
                        Trace(">*\r", {"001A403B62FBE18E8007B0005\r"}));
    Click("MonitorStop");
    Click("Verlassen");

    const QRegularExpression stamp(R"(\d{2}-\d{2}-\d{4} \d{2}:\d{2}:\d{2})");
    EXPECT_EQ(Q(ReadFile("PowerManagementLog.txt")).replace(stamp, "MM-DD-YYYY hh:mm:ss").toStdString(),
              "\r\n\r\n" + std::string(140, '-') +
                  "\r\nMM-DD-YYYY hh:mm:ss  Akkuldg:  79.1%  Akkuspg: 6.824V  Netzteilspg:  0.000V  "
                  "Kapazität:  95.0%  Temp.: 23°C  Ladebetrieb: Entladung"
                  "\r\nMM-DD-YYYY hh:mm:ss  Akkuldg:  42.0%  Akkuspg: 6.376V  Netzteilspg: 12.222V  "
                  "Kapazität:  95.0%  Temp.: 23°C  Ladebetrieb: Schnellladung\r\n");
  }

  // Modem.

  void TryTheModem() {
    ChooseMenu("MenuModem");
    AwaitWindow("Modem-ZEM");
    Type({{"TAKZ", "205"}, {"TDAT", "221126"}, {"TUHR", "1430"}});
    Click("Command2");
    AwaitUsable("Command3");
    Type({{"TMST", "12345678"}, {"TPAR", "1023"}, {"TBEW", "s"}, {"TMEW", "12.3"}});
    Click("Command3");
    Answer("Warnung: Wertebereichsüberschreitung Parameter (0000...0999)!");
    AwaitUsable("Command4");
    Expect("TMEW Datanz",
           " 12.3|PC -> Modem  S\nPC <- Modem  A\nPC -> Modem  *205 221126 1430<CR>\nPC <- Modem  A\n"
           "PC -> Modem  S\nPC <- Modem  A\nPC -> Modem  #12345678: 1023 s  12.3 <CR>\nPC <- Modem  A");
    Click("Command4");
    Signal(SIGUSR2);
    AwaitUsable("Command4");
    // What has come at once stands in one entry: the entries are taken as one text.
    QString trace = Q(Text("Datanz"));
    trace.replace("\nPC <- Modem  ", "").replace("<CR>", "\r").replace("␍", "\r");
    EXPECT_EQ(trace.toStdString(),
              "PC <- Modem  CONNECT\r*205 221126 1430\r#12345678: 1023 s  12.3 \rNO CARRIER\r");
    Click("Command1");
    AwaitWindow("Orvanexe Service");
  }

  static constexpr std::uint32_t kSeed = 1;  // oxsim's when it is not told another

  std::optional<QProcess> line_;
  bool older_ = false;  // than generation III
  sim::Polls polls_{kSeed};
  sim::StationData stations_;
  QString names_;  // the table that they stand in
};

TEST(Day, FromTheFirstConnectionToTheModem) {
  const ScratchFolder folder;
  WriteTables();
  WriteFile("OX.CFG", "\\C\\1\r\n\\B\\9600\r\n\\P\\O\r\n\\M\\\r\nEDT\r\n");
  PosixHost posix;
  QtWindowSystem windows(posix.openPorts);
  Host host{windows, posix.clock, posix.ports, posix.files, posix.random};
  Program program(host);
  Day day;
  day.Run([&] { windows.ShowModal(program.MainWindow()); }, [&] { day.Work(); });
  EXPECT_EQ(ReadFile("OX.CFG"),
            "\\C\\1\r\n\\B\\4800\r\n\\P\\E\r\n\\Q\\OX3NEU\r\n\\Z\\neu/ox3neu\r\n\\M\\\r\nEDT\r\n");
  EXPECT_TRUE(posix.openPorts.Descriptors().empty());
}

}  // namespace
}  // namespace ox::test
