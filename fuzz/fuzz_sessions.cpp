// Whole sessions: at any turn the user does anything, in front of a device that says anything.
#include "app/program.h"
#include "programming/program_file.h"
#include "simulator/demo/demo_files.h"
#include "simulator/device/sample_program.h"
#include "small_tables.h"
#include "support/test_host.h"
#include "watched_device.h"

namespace ox {
namespace {

constexpr double kTurn = 0.05;      // seconds between two looks whether a window is still open
constexpr double kAMoment = 0.3;    // seconds that a message is read
constexpr double kLongestAct = 60;  // seconds of a byte of the input, at most

const std::map<std::string, Bytes>& FirstFiles() {
  static const std::map<std::string, Bytes> files{
      {"OX.CFG", "\\M\\\r\nEDT\r\n"},
      {"/arbeit/netz.mes", Bytes(kMesFile)},
      {"/arbeit/netz.par", Bytes(kParFile)},
      {"/arbeit/netz.zuo", Bytes(kZuoFile)},
      {"/arbeit/neu.pro", sim::ProgramFile(sim::SampleProgram(sim::kSmallProgram, "V2", 2))},
      {"/arbeit/neu.pr3", sim::ProgramFile(sim::SampleProgram(sim::kLargeProgram, "V3", 3))},
      {"/arbeit/neu.LDR", sim::HexLines(0x100, "V4") + ":00000001FF\r\n"}};
  return files;
}

class Session {
 public:
  Session(unsigned choice, BytesView input)
      : input_(input),
        device_({.generation = static_cast<int>(1 + choice % 3), .startInLoader = choice / 4 % 4 == 3}) {
    host_.files.content = FirstFiles();
    host_.ports.Connect(1, &device_);
    host_.windows.OnMessage([this](const std::string& text) { Read(text); });
    for (const char* name : {"Datenaustausch", "updatetab", "updatepro", "UpdateproOx3",
                             "FirmwareOX3Verpacken", "PowerMonitor", "Modem", "Dateiwahl"})
      host_.windows.OnShown(name, [this](Window& window) { Visit(window); });
  }

  void Run() {
    const double longest = kLongestAct * static_cast<double>(input_.size() + 1);
    host_.windows.OpenMain(main_);
    Act();
    while (main_.IsOpen() && !input_.empty()) host_.windows.Pass(1);
    main_.RequestClose();
    ExpectRest();
    Require(!main_.IsOpen() && ends_ == host_.awake.taken && host_.clock.Elapsed() < longest);
    for (const auto& [path, bytes] : host_.files.content) CheckFile(path, bytes);
  }

 private:
  static test::Strings Usable(const Window& window) {
    test::Strings names;
    for (const Control* control : window.Controls())
      if (control->Enabled() && !control->Name().ends_with("Start")) names.push_back(control->Name());
    return names;
  }

  /// The user works in a window until the input is at its end, and leaves it as he found it.
  void Visit(Window& window) {
    const test::Strings usable = Usable(window);
    while (window.IsOpen() && !input_.empty()) host_.windows.Pass(kTurn);
    const std::string& name = window.Name();
    if (window.IsOpen() && Usable(window) == usable && name != "Modem" && name != "Dateiwahl") ExpectRest();
    window.RequestClose();
    Require(!window.IsOpen());
    Require(Usable(window) == usable || (fileUnread_ && name == "Datenaustausch"));
  }

  void ExpectRest() {
    Require(host_.ports.OpenCount() == 0 && host_.files.openForAppending == 0 && !host_.awake.Held());
  }

  void Read(const std::string& text) {
    Require(!text.starts_with("Unerwartet"));
    fileUnread_ = fileUnread_ || text.starts_with("Fehler beim Lesen der Datei: ");
    if (host_.awake.taken > ends_ && !host_.awake.Held()) ++ends_;
    // Without a further act of anybody nothing is told twice, but that a port does not open, if it is true.
    const bool ofPort = text.ends_with("lässt sich nicht öffnen!");
    const auto now = std::pair(text, acts_ + host_.ports.sent.size());
    Require(ofPort ? portFailed_ || program_.Values().settings.ComPort != "1" : now != told_);
    told_ = now;
    ++boxes_;
    host_.windows.Pass(kAMoment);
    --boxes_;
  }

  void Act() {
    constexpr double kPauses[] = {0, 0.001, 0.02, 0.1, 0.4, 1, 2, 8};
    Window& window = *host_.windows.Uppermost();
    const bool idle = boxes_ > 0 || input_.empty() || !window.IsOpen();
    const unsigned act = idle ? 0 : TakeByte(input_);
    host_.windows.In(idle ? kAMoment : kPauses[act / 32], [this] { Act(); });
    ++acts_;
    if (idle && boxes_ == 0 && &window != &main_) return window.RequestClose();
    if (idle) return;
    const unsigned number = act % 32;
    number < window.Controls().size() ? Use(*window.Controls()[number]) : Strike(window, 31 - number);
  }

  void Use(Control& control) {
    if (control.Name() == "MenuDateiEnde") return;
    if (auto* entry = dynamic_cast<MenuEntry*>(&control)) return entry->Click();
    if (auto* button = dynamic_cast<Button*>(&control)) return button->Click();
    if (auto* box = dynamic_cast<CheckBox*>(&control)) return box->Click();
    if (auto* field = dynamic_cast<TextBox*>(&control)) {
      const std::string text = TakeText(input_);
      text == "\n" ? field->Enter() : field->Edit(text);
    } else if (auto* list = dynamic_cast<ListBox*>(&control)) {
      const int line = static_cast<int>(TakeByte(input_));
      line % 2 == 0 ? list->Activate(line / 2) : list->Select(line / 2);
    }
  }

  void Strike(Window& window, unsigned what) {
    if (what == 0) window.RequestClose();
    if (what == 1) device_.Spoil(input_);
    portFailed_ = portFailed_ || what == 2 || what == 3;
    if (what == 2) (broken_ = !broken_) ? host_.ports.Break() : host_.ports.Mend();
    if (what == 3) (gone_ = !gone_) ? host_.ports.Remove(1) : host_.ports.Connect(1, &device_);
    if (what == 4) host_.windows.CancelNext();
    if (what == 5) host_.files.writable = !host_.files.writable;
    if (what == 6) host_.files.appendable = TakeByte(input_);
    if (what == 7) host_.windows.RequestEnd();
    if (what != 8) return;
    const std::string path = TakeText(input_);
    for (Control* control : window.Controls()) control->Drop(path);
  }

  /// Nothing is written but settings, log and program files, and these as they should be.
  static void CheckFile(const std::string& path, const Bytes& bytes) {
    const auto before = FirstFiles().find(path);
    if (path == "OX.CFG" || (before != FirstFiles().end() && before->second == bytes)) return;
    if (path == "PowerManagementLog.txt") return Require(bytes.empty() || bytes.ends_with("\r\n"));
    Require(path.ends_with(".pr3") &&
            sim::ProgramSealed(ReadProgramFile(bytes, kProgramFormat3).program, sim::kLargeProgram));
  }

  BytesView input_;
  test::TestHost host_;
  WatchedDevice device_;
  Program program_{host_.host};
  Start& main_ = program_.MainWindow();
  std::size_t acts_ = 0;
  int boxes_ = 0;  // messages that the user has to read first
  int ends_ = 0;   // of updates, as they were told
  std::pair<std::string, std::size_t> told_;
  bool fileUnread_ = false;
  bool portFailed_ = false;
  bool broken_ = false;
  bool gone_ = false;
};

}  // namespace

void Fuzz(unsigned choice, BytesView input) {
  Session(choice, input).Run();
}

}  // namespace ox
