// A technician's day from the first connection to the last, at windows on the screen and a device on the
// line.
#include <gtest/gtest.h>
#include <sys/prctl.h>

#include <QDateTime>
#include <QProcess>
#include <csignal>
#include <filesystem>
#include <optional>

#include "app/program.h"
#include "day/user.h"
#include "desktop/qt_window_system.h"
#include "platform/posix/posix_host.h"
#include "simulator/demo/demo_files.h"
#include "support/difference.h"
#include "support/scratch_folder.h"

namespace ox::test {

// What the status line tells when an update is through: steps and blocks.
const std::string kSteps(4, '>');
const std::string kBlocks(32, '>');

/// The demo's files without a line that oxsim has linked there; in "alt" the tables that a device comes with.
void WriteTables() {
  using std::filesystem::copy_options;
  std::filesystem::copy(OX_DEMO_FOLDER, ".", copy_options::recursive | copy_options::skip_symlinks);
  std::filesystem::create_directory("alt");
  WriteFile("alt/netz.mes",
            R"(/S/"Alt" /A/"Süd" /Z/"999" /N/"12345690" /D/" 0001" /M/"-0001" /T/"Ö-Alt" /B/ Ende /E/)");
  WriteFile("alt/netz.par", R"(/P/"0001" /T/"Wasserst." /M/"cm " /P/"0021" /T/"Ölfilm" /M/"mm " /E/)");
  WriteFile("alt/netz.zuo", R"(/N/"12345690" /P/"0001,0021" /E/)");
}

/// The simulator as a process of its own, which leaves its memory in files when it ends.
struct Simulator : QProcess {
  explicit Simulator(QStringList options) {
    options += {"--unpaced", "--tables", "alt", "--dump", ".", "--baud", "4800", "--parity", "E"};
    setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });  // whatever becomes of the test
    start(OX_SIMULATOR, options);
    if (!waitForReadyRead()) qFatal("oxsim does not start");
  }
  ~Simulator() override {
    terminate();
    waitForFinished();
  }
};

std::string Trace(const std::string& request, const std::vector<std::string>& reply) {
  std::string trace = "PC -> OX  S\nPC <- OX  A\nPC -> OX  " + request;
  for (const std::string& line : reply) trace += "\nPC <- OX  " + line + "<CR>";
  return trace + "\nPC -> OX  A";
}

class Day : public User {
 public:
  void Work() {
    AwaitWindow("Orvanexe Service");
    PlugDevice("3");
    ChooseMenu("MenuVerb");
    Expect("COM Baudanz Paritätanz", "Schnittstelle: COM1|2400|ungerade");
    AnswerConnected("SW 3.20 11/2026 ");
    PollTheOldPoint();
    WatchThePower();
    PackFirmware();
    UpdateDevice("3", "ox3neu.pr3", "V5.20 22.11.2026");
    UpdateDevice("2", "ox2.pro", "V4.20 22.11.2026");
    line_.emplace(QStringList("--modem"));
    TryTheModem();
    CloseWindow();
    line_.reset();
  }

 private:
  void PlugDevice(const std::string& generation) {
    line_.emplace(QStringList{"--generation", Q(generation)});
    generation_ = generation;
  }

  void AnswerConnected(const std::string& version) {
    Answer("Verbindung ist hergestellt!\n\nGerätetyp: OX " + generation_ + "\nSoftwarestand: " + version +
           "\nBaudrate: 4800\nParität: gerade\nDatenbits: 7\nCOM-Port: 1");
  }

  void OpenDataExchange(const std::string& names) {
    ChooseMenu("MenuDaten");
    AwaitWindow("Datenaustausch mit Orvanexe");
    Expect("LabelMewanz", "Mst.Nr.   Par.   Mewe.  Mst.Nr.   Par.   Mewe.  Mst.Nr.   Par.   Mewe.");
    ChooseFile("duemstwal", names);
  }

  void Poll(const std::string& button) {
    Click(button);
    Reach("Verlassen");
  }

  void PollTheOldPoint() {
    OpenDataExchange("alt/netz.mes");
    Click("Zyklischer_Abruf");
    Expect("datanz mewanz", Trace("P", {"", "12345690: 0001      196", "12345690: 0021     17.3", "E"}) +
                                "|   Ö-Alt: 0001      196|   Ö-Alt: 0021     17.3|");
    Click("Abbruch");
    Click("Verlassen");
  }

  void PollTime() {
    Poll("Zeitabruf");
    const std::string shown = Text("mewanz");
    const QDateTime clock = QDateTime::fromString(Q(shown), "dd.MM.yy HH:mm:ss|").addYears(100);
    EXPECT_TRUE(clock.isValid() && std::abs(clock.secsTo(QDateTime::currentDateTime())) <= 2) << shown;
    Expect("datanz", Trace("T", {"0" + shown.substr(0, shown.size() - 1)}));
  }

  void PollTheNetwork() {
    OpenDataExchange("netz.mes");
    Type({{"MST", "12345678"}, {"Par", "0012"}});
    Poll("Abruf_Y");
    Expect("datanz mewanz",
           Trace("Z    12345678: 0012<CR>", {"012345678: 0012      196 cm "}) + "|   Pegel: 0012      196|");
    PollTime();
    Type({{"MST", ""}, {"Par", "0102"}});
    Poll("Einzelabruf");
    Expect("datanz mewanz",
           Trace("J              0102<CR>",
                 {"", "12345678: 0102    13.24", "12345705: 0102    11.80", "15000090: 0102    12.40", "E"}) +
               "|   Pegel: 0102    13.24|   Schls: 0102    11.80|   Schöp: 0102    12.40\n");
    Poll("Sammelabruf");
    const std::string shown = Text("datanz") + Text("mewanz");
    EXPECT_EQ(Difference(shown, polled_, Lines(polled_)), "");
    Click("Verlassen");
  }

  void ChooseFile(const std::string& button, const std::string& path) {
    Click(button);
    AwaitWindow("Datei wählen");
    Type({{"Text2", path}});
    Click("Command1");
  }

  /// At the end the device holds the image of its generation and the program of the file.
  void UpdateDevice(const std::string& generation, const std::string& file, const std::string& version) {
    PlugDevice(generation);
    UpdateTables();
    PollTheNetwork();
    UpdateProgram(file, version);
    line_.reset();
    const Bytes image = ReadFile(OX_DAY_FOLDER "/tables" + generation + ".bin");
    EXPECT_EQ(Difference(ReadFile("tables.bin"), image, PartsOfImage(image)), "");
    Bytes program = ReadFile("program.bin");
    if (generation == "2") program.replace(program.size() - 2, 2, 2, '\0');  // no check word in the file
    const Bytes records = ReadFile(file);
    EXPECT_EQ(Difference(sim::ProgramFile(program), records, PartsOfLength(records, 258, "record")), "");
  }

  void UpdateTables() {
    ChooseMenu("MenuUpTab");
    AwaitWindow("Update Tabellen");
    ChooseFile("ChMes", "netz");
    ChooseFile("ChPar", "netz.par");
    ChooseFile("ChZuo", "netz.zuo");
    Expect("Go", "Zuordnungstabelle wird geladen ... O.K.!");
    Click("TabStart");
    Expect("Go", kSteps + kBlocks);
    Answer("Tabellenupdate erfolgreich abgeschlossen!");
    Expect("Go", "");
    Click("TabEnd");
  }

  void UpdateProgram(const std::string& file, const std::string& version) {
    const std::string loaded = "Programmdatei wird geladen ... O.K.!";
    ChooseMenu("MenUpPro");
    Answer("Wichtiger Hinweis:\n\nFühren Sie *in die Werkstatt muss!\n");
    AwaitWindow("Update Programm OX " + std::string(generation_ == "2" ? "II" : "III"));
    ChooseFile("ChPro", file);
    Expect("Go", loaded);
    Click("ProStart");
    Expect("Go", (generation_ == "2" ? kSteps : loaded) + kBlocks);
    Answer("Programmupdate erfolgreich abgeschlossen!");
    Click("proEnd");
    ChooseMenu("MenuVerb");
    AnswerConnected(version);
  }

  void PackFirmware() {
    ChooseMenu("MenueToolsFirmwareOX3");
    AwaitWindow("Firmware OX3 verpacken");
    Type({{"TextQuelle", "OX3NEU"}, {"TextZiel", "ox3neu"}});
    Click("CoStart");
    Answer("Vorgang erfolgeich beendet !");
    CloseWindow();
  }

  void WatchThePower() {
    const std::string figures =
        "BatteryCapacity BatteryCheckCapacity OperationVoltage BatteryVoltage Temperature "
        "ChargeControllerState datanz";
    ChooseMenu("MenuPowerMonitor");
    AwaitWindow("Stromversorgungsmonitor der Orvanexe");
    Type({{"TPreset", "42"}});
    Click("MonitorStart");
    Expect(figures,
           "79.1%|95.0%|0.000V|6.824V| 23°C|Entladung|" + Trace(">ÿ<CR>", {"0031703B600001AA8007B0001"}));
    Click("CPreset");
    Expect(figures, "42.0%|95.0%|12.222V|6.376V| 23°C|Schnellladung|" +
                        Trace(">*<CR>", {"001A403B62FBE18E8007B0005"}));
    Click("MonitorStop");
    Click("Verlassen");
    const QString log = Q(ReadFile("PowerManagementLog.txt"));
    EXPECT_TRUE(log.endsWith("Temp.: 23°C  Ladebetrieb: Schnellladung\r\n"));
    const auto logged = QDateTime::fromString(log.section("\r\n", -2, -2).left(19), "MM-dd-yyyy HH:mm:ss");
    EXPECT_LE(std::abs(logged.toSecsSinceEpoch() - QDateTime::currentSecsSinceEpoch()), 5);
  }

  void TryTheModem() {
    ChooseMenu("MenuModem");
    AwaitWindow("Modem-ZEM");
    Type({{"TAKZ", "205"}, {"TDAT", "221126"}, {"TUHR", "1430"}});
    Click("Command2");
    Type({{"TMST", "12345678"}, {"TPAR", "0012"}, {"TBEW", "s"}, {"TMEW", "12.3"}});
    Click("Command3");
    Reach("Command4");
    Expect("TMEW Datanz",
           " 12.3|PC -> Modem  S\nPC <- Modem  A\nPC -> Modem  *205 221126 1430<CR>\nPC <- Modem  A\n"
           "PC -> Modem  S\nPC <- Modem  A\nPC -> Modem  #12345678: 0012 s  12.3 <CR>\nPC <- Modem  A");
    Click("Command4");
    kill(static_cast<pid_t>(line_->processId()), SIGUSR2);
    Reach("Command4");
    // What has come at once stands in one entry: the entries are taken as one text.
    QString trace = Q(Text("Datanz"));
    trace.replace("\nPC <- Modem  ", "").replace("<CR>", "\r").replace("␍", "\r");
    EXPECT_EQ(trace.toStdString(),
              "PC <- Modem  CONNECT\r*205 221126 1430\r#12345678: 0012 s  12.3 \rNO CARRIER\r");
    Click("Command1");
    AwaitWindow("Orvanexe Service");
  }

  const std::string polled_ = ReadFile(OX_DAY_FOLDER "/polled.txt");  // what a poll of all values shows
  std::optional<Simulator> line_;
  std::string generation_;  // of the device on the line
};

TEST(Day, FromTheFirstConnectionToTheModem) {
  const ScratchFolder folder;
  WriteTables();
  WriteFile("OX.CFG", "\\C\\1\r\n\\B\\9600\r\n\\P\\O\r\n\\M\\\r\nEDT\r\n");
  PosixHost posix;
  QtWindowSystem windows(posix.openPorts, posix.endRequests, posix.awake);
  Notices notices;
  Host host{{windows, posix.clock, posix.ports, posix.files, posix.random, posix.awake, posix.portList},
            windows,
            notices};
  Program program(host);
  Day day;
  User::Run([&] { windows.ShowModal(program.MainWindow()); }, [&] { day.Work(); });
  EXPECT_EQ(ReadFile("OX.CFG"),
            "\\C\\1\r\n\\B\\4800\r\n\\P\\E\r\n\\Q\\OX3NEU\r\n\\Z\\ox3neu\r\n\\M\\\r\nEDT\r\n");
  EXPECT_TRUE(posix.openPorts.Handles().empty());
}

}  // namespace ox::test
