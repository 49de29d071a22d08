// A technician's day, from the first connection to the last: the windows on the screen, the device on the
// line.
#include <gtest/gtest.h>

#include <QRegularExpression>
#include <algorithm>
#include <ctime>
#include <filesystem>
#include <optional>

#include "app/program.h"
#include "day/day_driver.h"
#include "day/day_expectations.h"
#include "day/sim_process.h"
#include "desktop/qt_window_system.h"
#include "platform/posix/posix_host.h"
#include "platform/scratch_folder.h"
#include "platform/text.h"
#include "simulator/demo_files.h"
#include "simulator/program_layout.h"

namespace ox::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kFactoryVersion = "SW 3.20 11/2026 ";
constexpr const char* kTableDone = "Tabellenupdate erfolgreich abgeschlossen!";
constexpr const char* kProgramDone = "Programmupdate erfolgreich abgeschlossen!";
constexpr const char* kUpdateWarning =
    "Wichtiger Hinweis:\n\n"
    "Führen Sie den Programmiervorgang nur aus, wenn die Stromversorgung\n"
    "der Orvanexe II sichergestellt ist (Akku ausreichend geladen\n"
    "oder Ladegerät angeschlossen) und achten Sie auf eine sichere\n"
    "Verbindung zum PC (Stecker verschraubt)!\n\n"
    "Eine Unterbrechung während der Programmierung kann dazu führen, dass\n"
    "das Programm nicht lauffähig ist und das Gerät in die Werkstatt muss!\n";

/// A text with `added` behind the line that contains `after`.
std::string WithLine(const std::string& text, const std::string& after, const std::string& added) {
  const std::size_t end = text.find('\n', text.find(after));
  return text.substr(0, end + 1) + added + "\n" + text.substr(end + 1);
}

/// The demo tables, and in "neu" the same with one more point, one more parameter and their assignment;
/// "neu/falsch.mes" has a slip in the new line.
void WriteTables() {
  for (const auto& entry : fs::directory_iterator(OX_DEMO_FOLDER)) {
    if (entry.is_regular_file()) fs::copy_file(entry, entry.path().filename());
  }
  fs::create_directory("neu");
  const std::string points = ReadFile("netz.mes");
  const auto withPoint = [&points](const std::string& number) {
    return WithLine(points, "12345681",
                    "  /N/\"" + number + "\" /D/\" 0001\" /M/\"-0001\" /T/\"Ö-Neu\"  neu");
  };
  WriteFile("neu/falsch.mes", withPoint("1234569"));
  WriteFile("neu/netz.mes", withPoint("12345690"));
  WriteFile("neu/netz.par",
            WithLine(ReadFile("netz.par"), "\"0020\"", "/P/\"0021\" /T/\"Ölfilm\" /M/\"mm \""));
  WriteFile("neu/netz.zuo", WithLine(ReadFile("netz.zuo"), "12345681", "/N/\"12345690\" /P/\"0001,0021\""));
}

std::vector<std::string> ClockTexts(std::time_t from, std::time_t to) {
  std::vector<std::string> texts;
  for (std::time_t second = from; second <= to; ++second) {
    char text[32];
    std::strftime(text, sizeof text, "%d.%m.%y %H:%M:%S", std::localtime(&second));
    texts.emplace_back(text);
  }
  return texts;
}

std::string Percent(int tenths) {
  return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + "%";
}

std::string Volts(int millivolts) {
  const std::string digits = std::to_string(1000 + millivolts % 1000);
  return std::to_string(millivolts / 1000) + "." + digits.substr(1) + "V";
}

class Day {
 public:
  explicit Day(DayDriver& user) : user_(user) {}

  void Work() {
    StartDevice("3");
    FindTheDevice();
    PollWithoutNames();
    PollWithNames();
    UpdateTables(ImagesOf("neu").generation3);
    PollTheNewPoint();
    UpdateProgram("ox3.pr3", PlainProgram(sim::DemoProgram3()), "OX 3", "V5.10 22.11.2026");
    PackFirmware();
    const Bytes packed = PackedProgram();
    UpdateProgram("neu/ox3neu.pr3", packed, "OX 3", "V5.20 22.11.2026");
    WatchThePower();

    StartDevice("2");
    UpdateTables(ImagesOf("neu").older);
    PollTheNewPoint();
    Bytes program = PlainProgram(sim::DemoProgram2());
    sim::SealProgram(program, sim::kSmallProgram);
    UpdateProgram("ox2.pro", program, "OX 2", "V4.20 22.11.2026");

    TryTheModem();
    user_.AwaitWindow("Orvanexe Service");
    user_.CloseWindow();
  }

 private:
  void StartDevice(const std::string& generation) {
    line_.reset();  // one device at a time on COM1
    line_.emplace(std::vector<std::string>{"--generation", generation, "--baud", "4800", "--parity", "E"});
    twin_.emplace(".", generation != "3");
  }

  /// Menu, and what the main window says of the device.
  void TestConnection(const std::string& type, const std::string& version) {
    user_.ChooseMenu("MenuVerb");
    user_.Answer("Verbindung ist hergestellt!\n\nGerätetyp: " + type + "\nSoftwarestand: " + version +
                 "\nBaudrate: 4800\nParität: gerade\nDatenbits: 7\nCOM-Port: 1");
  }

  void FindTheDevice() {
    user_.AwaitWindow("Orvanexe Service");
    TestConnection("OX 3", kFactoryVersion);
    using Texts = std::vector<std::string>;
    EXPECT_EQ(user_.Painted("COM"), Texts{"Schnittstelle: COM1"});
    EXPECT_EQ(user_.Painted("Baudanz"), (Texts{"9600", "2400", "4800"}));
    EXPECT_EQ(user_.Painted("Paritätanz"), (Texts{"ungerade", "gerade", "ungerade", "gerade"}));
  }

  // Data exchange.

  void OpenDataExchange() {
    user_.ChooseMenu("MenuDaten");
    user_.AwaitWindow("Datenaustausch mit Orvanexe");
    EXPECT_EQ(user_.Text("LabelMewanz"),
              "Mst.Nr.   Par.   Mewe.  Mst.Nr.   Par.   Mewe.  Mst.Nr.   Par.   Mewe.");
    twin_->ForgetNames();
  }

  void ExpectShown(const ShownPoll& expected) {
    user_.AwaitEnabled("Verlassen");
    EXPECT_EQ(user_.Text("datanz"), expected.trace);
    EXPECT_EQ(user_.Text("mewanz"), expected.values);
  }

  void Fill(const std::string& office, const std::string& point, const std::string& parameter) {
    user_.Type("AKZ", office);
    user_.Type("MST", point);
    user_.Type("Par", parameter);
  }

  void Poll(const std::string& button, const Bytes& request) {
    user_.Click(button);
    ExpectShown(twin_->Poll(request));
  }

  void LoadNames(const std::string& line, const std::string& path) {
    user_.Click("duemstwal");
    user_.AwaitWindow("Datei wählen");
    if (line.empty()) {
      user_.Type("Text2", path);
    } else {
      user_.ClickLine("File1", line);
    }
    user_.Click("Command1");
    user_.AwaitWindow("Datenaustausch mit Orvanexe");
    user_.AwaitEnabled("Verlassen");
    twin_->LearnNames(path);
  }

  void PollWithoutNames() {
    OpenDataExchange();
    user_.Click("Einzelabruf");
    user_.Answer(
        "Mindestens eines der drei Felder - Amtskennzeichen, Parameter oder Messstellennummer - muss einen "
        "Eintrag enthalten!");
    Fill("", "12345678", "0012");
    Poll("Einzelabruf", "J    12345678: 0012\r");
    Poll("Sammelabruf", "P");
    PollTime();
  }

  void PollTime() {
    const std::time_t before = std::time(nullptr);
    user_.Click("Zeitabruf");
    user_.AwaitEnabled("Verlassen");
    const std::string shown = user_.Text("mewanz");
    const auto texts = ClockTexts(before - 2, std::time(nullptr));
    EXPECT_EQ(std::count(texts.begin(), texts.end(), shown.substr(0, shown.find('|'))), 1) << shown;
    EXPECT_EQ(user_.Text("datanz"), TraceOf("T", {"0" + shown.substr(0, shown.find('|')) + "\r"}));
    EXPECT_TRUE(shown.ends_with('|')) << shown;
  }

  void PollWithNames() {
    LoadNames("netz.mes", "netz.mes");
    Poll("Einzelabruf", "J    12345678: 0012\r");
    Poll("Abruf_Y", "Z    12345678: 0012\r");
    Fill("", "12345678", "");
    Poll("Einzelabruf", "J    12345678:     \r");
    Fill("101", "", "");
    Poll("Einzelabruf", "J101               \r");
    Fill("", "", "0004");
    Poll("Einzelabruf", "J              0004\r");
    Poll("Sammelabruf", "P");
    Fill("205", "12345678", "0001");
    user_.Click("Abruf_Y");
    user_.Answer(
        "Hinweis: Amtskennzeichen ist redundant und wird deshalb von der Orvanexe nicht ausgewertet!");
    ExpectShown(twin_->Poll("Z205 12345678: 0001\r"));

    user_.Click("Zyklischer_Abruf");
    user_.AwaitEnabled("Abbruch");
    const ShownPoll cyclic = twin_->Poll("P");
    user_.AwaitTexts({"mewanz"}, [&](const auto& texts) { return texts.at("mewanz") == cyclic.values; });
    user_.Click("Abbruch");
    ExpectShown(cyclic);
    user_.Click("Verlassen");
  }

  void PollTheNewPoint() {
    OpenDataExchange();
    LoadNames("", "neu/netz.mes");
    Fill("", "12345690", "");
    Poll("Einzelabruf", "J    12345690:     \r");
    EXPECT_NE(user_.Text("mewanz").find("   Ö-Neu: 0021"), std::string::npos);
    Poll("Sammelabruf", "P");
    user_.Click("Verlassen");
  }

  // Updates.

  void ChooseFile(const std::string& box, const std::string& path) {
    user_.Click(box);
    user_.AwaitWindow("Datei wählen");
    user_.Type("Text2", path);
    user_.Click("Command1");
  }

  void ExpectGo(const std::string& text) {
    const auto texts = user_.AwaitTexts({"Go"}, [&](const auto& shown) { return shown.at("Go") == text; });
    EXPECT_EQ(texts.at("Go"), text);
  }

  void UpdateTables(const TableImage& image) {
    user_.ChooseMenu("MenuUpTab");
    user_.AwaitWindow("Update Tabellen");
    ChooseFile("ChMes", "neu/falsch");
    const std::string faulty = ReadFile("neu/falsch.mes");
    const std::size_t slip = faulty.find("  /N/\"1234569\"");
    const auto line =
        1 + std::count(faulty.begin(), faulty.begin() + static_cast<std::ptrdiff_t>(slip), '\n');
    user_.Answer("Fehler in Zeile " + std::to_string(line) +
                 ", Messstellennummer muss aus 8 Ziffern bestehen!\n\n" +
                 faulty.substr(slip, faulty.find('\n', slip) - slip));
    ExpectGo("");
    ChooseFile("ChMes", "neu/netz");
    ExpectGo("Messstellentabelle wird geladen ... O.K.!");
    ChooseFile("ChPar", "neu/netz.par");
    ExpectGo("Parameterliste wird geladen ... O.K.!");
    ChooseFile("ChZuo", "neu/netz.zuo");
    ExpectGo("Zuordnungstabelle wird geladen ... O.K.!");
    user_.Click("TabStart");
    constexpr std::size_t kStepMarks = 4;
    constexpr std::size_t kBlockMarks = 32;
    ExpectGo(std::string(kStepMarks + kBlockMarks, '>'));
    user_.Answer(kTableDone);
    ExpectGo("");
    EXPECT_EQ(image.status, ImageStatus::kBuilt);
    EXPECT_TRUE(line_->Dump().tables == image.bytes);
    user_.Click("TabEnd");
    twin_->TakeTables("neu", image.bytes == ImagesOf("neu").older.bytes);
  }

  void UpdateProgram(const std::string& file, const Bytes& program, const std::string& type,
                     const std::string& version) {
    const bool generation3 = type == "OX 3";
    user_.ChooseMenu("MenUpPro");
    user_.Answer(kUpdateWarning);
    user_.AwaitWindow(generation3 ? "Update Programm OX III" : "Update Programm OX II");
    ChooseFile("ChPro", file);
    const std::string loaded = "Programmdatei wird geladen ... O.K.!";
    ExpectGo(loaded);
    user_.Click("ProStart");
    constexpr std::size_t kStepMarks = 4;  // of generation II
    constexpr std::size_t kBlockMarks = 32;
    ExpectGo(generation3 ? loaded + std::string(kBlockMarks, '>')
                         : std::string(kStepMarks + kBlockMarks, '>'));
    user_.Answer(kProgramDone);
    EXPECT_TRUE(line_->Dump().program == program);
    user_.Click("proEnd");
    TestConnection(type, version);
  }

  void PackFirmware() {
    user_.ChooseMenu("MenueToolsFirmwareOX3");
    user_.AwaitWindow("Firmware OX3 verpacken");
    user_.Type("TextQuelle", "OX3");
    user_.Type("TextZiel", "neu/ox3neu");
    user_.Click("CoStart");
    user_.Answer("Fehler beim Öffnen von OX3.LDR !");
    user_.Type("TextQuelle", "OX3NEU");
    user_.Click("CoStart");
    user_.Answer("Vorgang erfolgeich beendet !");
    user_.CloseWindow();
  }

  /// The packed program, which must hold the loader file's code and a sound check word.
  static Bytes PackedProgram() {
    Bytes program = PlainProgram(ReadFile("neu/ox3neu.pr3"));
    constexpr std::size_t kCodeSize = 0x1000;
    constexpr std::size_t kPieceAt = 0x40F0;
    constexpr std::size_t kPieceSize = 0x40;
    const Bytes hex = sim::HexLines(0, BytesView(program).substr(0, kCodeSize)) +
                      sim::HexLines(kPieceAt, BytesView(program).substr(kPieceAt, kPieceSize));
    EXPECT_TRUE(ReadFile("OX3NEU.LDR").starts_with(hex));
    EXPECT_TRUE(sim::ProgramSealed(program, sim::kLargeProgram));
    return program;
  }

  // Power monitor.

  /// What is shown once the shown texts are those of the reply in the trace, which answers this request.
  DayDriver::Texts AwaitPower(const std::string& request) {
    return user_.AwaitTexts({"datanz", "BatteryCapacity", "BatteryCheckCapacity", "OperationVoltage",
                             "BatteryVoltage", "Temperature", "ChargeControllerState"},
                            [&request](const DayDriver::Texts& shown) {
                              const QRegularExpression dialogue(QString::fromStdString(
                                  "^PC -> OX  S\nPC <- OX  A\nPC -> OX  " + request +
                                  "<CR>\nPC <- OX  0([0-9A-F]{24})<CR>\nPC -> OX  A$"));
                              const auto found = dialogue.match(QString::fromStdString(shown.at("datanz")));
                              if (!found.hasMatch()) return false;
                              const auto field = [hex = found.captured(1)](qsizetype index) {
                                return hex.mid(4 * index, 4).toInt(nullptr, 16);
                              };
                              return shown.at("BatteryCapacity") == Percent(field(0)) &&
                                     shown.at("BatteryCheckCapacity") == Percent(field(1)) &&
                                     shown.at("OperationVoltage") == Volts(field(2)) &&
                                     shown.at("BatteryVoltage") == Volts(field(3)) &&
                                     shown.at("Temperature") == " " + std::to_string(field(4) - 100) + "°C";
                            });
  }

  static std::string LogLine(const DayDriver::Texts& shown) {
    return "MM-DD-YYYY hh:mm:ss  Akkuldg:  " + shown.at("BatteryCapacity") +
           "  Akkuspg: " + shown.at("BatteryVoltage") +
           "  Netzteilspg: " + std::string(7 - shown.at("OperationVoltage").size(), ' ') +
           shown.at("OperationVoltage") + "  Kapazität:  " + shown.at("BatteryCheckCapacity") +
           "  Temp.:" + shown.at("Temperature") + "  Ladebetrieb: " + shown.at("ChargeControllerState") +
           "\r\n";
  }

  void WatchThePower() {
    user_.ChooseMenu("MenuPowerMonitor");
    user_.AwaitWindow("Stromversorgungsmonitor der Orvanexe");
    user_.Click("MonitorStart");
    AwaitPower(">ÿ");
    user_.Type("TPreset", "42");
    user_.Click("CPreset");
    const DayDriver::Texts preset = AwaitPower(">\\*");
    EXPECT_EQ(preset.at("BatteryCapacity"), "42.0%");
    EXPECT_EQ(preset.at("BatteryCheckCapacity"), "95.0%");
    EXPECT_EQ(preset.at("BatteryVoltage"), "6.376V");
    EXPECT_EQ(preset.at("ChargeControllerState"), "Schnellladung");
    user_.Click("MonitorStop");
    user_.Click("Verlassen");

    const DayDriver::Texts first{{"BatteryCapacity", "79.1%"},   {"BatteryCheckCapacity", "95.0%"},
                                 {"OperationVoltage", "0.000V"}, {"BatteryVoltage", "6.824V"},
                                 {"Temperature", " 23°C"},       {"ChargeControllerState", "Entladung"}};
    const QRegularExpression stamp("\\d{2}-\\d{2}-\\d{4} \\d{2}:\\d{2}:\\d{2}");
    QString log = QString::fromStdString(ReadFile("PowerManagementLog.txt"));
    EXPECT_EQ(log.replace(stamp, "MM-DD-YYYY hh:mm:ss").toStdString(),
              "\r\n\r\n" + std::string(140, '-') + "\r\n" + LogLine(first) + LogLine(preset));
  }

  // Modem.

  void TryTheModem() {
    line_.reset();
    line_.emplace(std::vector<std::string>{"--modem", "--baud", "4800", "--parity", "E"});
    user_.ChooseMenu("MenuModem");
    user_.AwaitWindow("Modem-ZEM");
    user_.Type("TAKZ", "20");
    user_.Type("TDAT", "221126");
    user_.Type("TUHR", "1430");
    user_.Click("Command2");
    user_.Answer("Das Feld AKZ muss drei Ziffern enthalten!");
    user_.Type("TAKZ", "205");
    user_.Click("Command2");
    user_.AwaitEnabled("Command3");
    user_.Type("TMST", "12345678");
    user_.Type("TPAR", "1023");
    user_.Type("TBEW", "s");
    user_.Type("TMEW", "12.3");
    user_.Click("Command3");
    user_.Answer("Warnung: Wertebereichsüberschreitung Parameter (0000...0999)!");
    user_.AwaitEnabled("Command4");
    EXPECT_EQ(user_.Text("TMEW"), " 12.3");
    EXPECT_EQ(user_.Text("Datanz"),
              "PC -> Modem  S\nPC <- Modem  A\nPC -> Modem  *205 221126 1430<CR>\nPC <- Modem  A\n"
              "PC -> Modem  S\nPC <- Modem  A\nPC -> Modem  #12345678: 1023 s  12.3 <CR>\nPC <- Modem  A");
    CallForData();
    user_.Click("Command1");
  }

  void CallForData() {
    user_.Click("Command4");
    line_->SendHeld();
    user_.AwaitEnabled("Command4");
    // What has come at once stands in one entry: the entries are taken as one text.
    QString trace = QString::fromStdString(user_.Text("Datanz"));
    trace.replace("\nPC <- Modem  ", "").replace("<CR>", "\r").replace("␍", "\r");
    EXPECT_EQ(trace.toStdString(),
              "PC <- Modem  CONNECT\r*205 221126 1430\r#12345678: 1023 s  12.3 \rNO CARRIER\r");
  }

  DayDriver& user_;
  std::optional<SimProcess> line_;
  std::optional<Twin> twin_;
};

TEST(Day, FromTheFirstConnectionToTheModem) {
  const ScratchFolder folder;
  WriteTables();
  WriteFile("OX.CFG", "\\C\\1\r\n\\B\\9600\r\n\\P\\O\r\n\\M\\\r\nEDT\r\n");
  PosixHost posix;
  QtWindowSystem windows(posix.openPorts);
  Host host{windows, posix.clock, posix.ports, posix.files, posix.random};
  Program program(host);
  DayDriver::Run([&] { windows.ShowModal(program.MainWindow()); }, [](DayDriver& user) { Day(user).Work(); });
  EXPECT_EQ(ReadFile("OX.CFG"),
            "\\C\\1\r\n\\B\\4800\r\n\\P\\E\r\n\\Q\\OX3NEU\r\n\\Z\\neu/ox3neu\r\n\\M\\\r\nEDT\r\n");
  EXPECT_TRUE(posix.openPorts.Descriptors().empty());
}

}  // namespace
}  // namespace ox::test
