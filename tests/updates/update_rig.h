// One of the three update windows with its user, files to load, and a simulated device on COM2.
#pragma once

#include "chooser/chooser_values.h"
#include "chooser/dateiwahl.h"
#include "simulator/demo/demo_files.h"
#include "simulator/demo/demo_tables.h"
#include "simulator/device/device.h"
#include "simulator/device/sample_program.h"
#include "support/difference.h"
#include "support/scratch_folder.h"
#include "support/test_host.h"
#include "updates/program_update_window.h"
#include "updates/updatetab.h"

namespace ox::test {

enum Update { kTables, kProgram2, kProgram3 };

inline const std::string kAskTheMaker = "\r\nBitte wenden Sie sich an den Hersteller.";
inline const std::string kGeneration1 = "Abbruch: OX 1 kann so nicht programmiert werden!" + kAskTheMaker;

inline std::string Times(std::ptrdiff_t times, const std::string& text) {
  std::string all;
  while (times-- > 0) all += text;
  return all;
}

/// Its dialogue runs at another speed than the usual one.
inline sim::DeviceOptions DeviceOf(int generation, const Bytes& kinds = "", bool inLoader = false) {
  return {.generation = generation, .baud = 4800, .loaderKinds = kinds, .startInLoader = inLoader};
}

/// With an image of filler bytes in its table memory, whose checksum is right.
inline sim::DeviceOptions WithSoundTables(sim::DeviceOptions device) {
  device.tables = Bytes(sim::kTableChecksumAt, '\xFF') + "\x04\xBE";
  return device;
}

struct UpdateRig {
  explicit UpdateRig(Update which) : update(which) {
    for (const std::string end : {".mes", ".par", ".zuo"})
      files["/gut" + end] = ReadFile(OX_DEMO_FOLDER "/netz" + end);
    files["/gut.pr3"] = sim::ProgramFile(program);
    // Of generation II, which has no check word in its file.
    files["/gut.pro"] = sim::ProgramFile(program.substr(0, program.size() - 2) + "??");
    subs.settings.BaudRate = "4800";
    subs.settings.ComPort = "2";
    host.ports.Connect(2, nullptr);
    host.windows.OpenMain(*window);
  }

  std::unique_ptr<Window> MakeWindow() {
    if (update == kTables) return std::make_unique<updatetab>(host.host, subs, chooser);
    const DeviceKind& kind = update == kProgram2 ? DeviceKinds().front() : DeviceKinds().back();
    return std::make_unique<ProgramUpdateWindow>(host.host, kind, subs, chooser);
  }

  /// The window's control of this kind whose name ends so.
  template <class Kind>
  Kind& The(const std::string& end) const {
    const auto& all = window->Controls();
    return dynamic_cast<Kind&>(
        **std::ranges::find_if(all, [&](const Control* control) { return control->Name().ends_with(end); }));
  }
  /// Of the points (Mes), the parameters (Par), the assignments (Zuo) or the program (Pro).
  CheckBox& Box(const std::string& what) const { return The<CheckBox>("Ch" + what); }

  /// The user clicks a box and types a path into the chooser; cancels it when the path is empty.
  void Choose(CheckBox& box, const std::string& path) {
    host.windows.OnShown("Dateiwahl", [path](Window& shown) {
      dynamic_cast<Dateiwahl&>(shown).Text2.Edit(path);
      dynamic_cast<Dateiwahl&>(shown).Command1.Click();
    });
    box.Click();
  }

  void Load() {
    for (Control* control : window->Controls())
      if (auto* box = dynamic_cast<CheckBox*>(control)) Choose(*box, "/gut");
  }

  void Connect(const sim::DeviceOptions& options) {
    device = std::make_unique<sim::Device>(options);
    image = sim::KeepsOlderImage(options) ? &olderImage : &generation3Image;
    host.ports.Connect(2, device.get());
  }

  /// The user starts the update and wants to close the window before it ends: it goes only from a success,
  /// and is shown anew. Returns what was said.
  Strings Start() {
    host.windows.OnMessage([&](const std::string& message) {
      window->RequestClose();
      EXPECT_FALSE(host.awake.Held()) << "while a message waits for its reader";
      EXPECT_TRUE(window->IsOpen() && !start.Enabled() && !leave.Enabled() && go.Enabled());
      EXPECT_TRUE(message != success || host.ports.OpenCount() == 0);
    });
    host.ports.sent.clear();
    host.awake.taken = 0;
    start.Click();
    EXPECT_EQ(host.ports.OpenCount(), 0);
    EXPECT_LE(host.awake.taken, 1) << "one lock a run";
    EXPECT_TRUE(host.awake.taken == 1 || host.ports.sent.empty());
    EXPECT_EQ(window->Focused(), &start);
    for (const Control* control : window->Controls())
      EXPECT_EQ(control->Enabled(), dynamic_cast<const Timer*>(control) == nullptr) << control->Name();
    const Strings said = host.windows.TakeMessages();
    EXPECT_EQ(window->IsOpen(), said != Strings{success});
    if (said != Strings{success}) return said;
    EXPECT_EQ(go.Text().empty(), update == kTables);
    host.windows.OpenMain(*window);
    Load();
    const sim::DeviceMemory& memory = device->Memory();
    EXPECT_EQ(update == kTables ? Difference(memory.Tables(), *image, PartsOfImage(*image))
                                : Difference(memory.Program(), program, PartsOfLength(program, 256, "page")),
              "");
    return said;
  }

  TestHost host;
  std::map<std::string, Bytes>& files = host.files.content;
  ChooserValues chooserValues;
  Subs subs{{}, chooserValues};
  FileChooser chooser{host.host, subs};
  const Update update;
  const std::string success = update == kTables ? "Tabellenupdate erfolgreich abgeschlossen!"
                                                : "Programmupdate erfolgreich abgeschlossen!";
  const Bytes program =
      sim::SampleProgram(update == kProgram2 ? sim::kSmallProgram : sim::kLargeProgram, "V6", 9);
  const Bytes olderImage = sim::ReadDemoImage(OX_DEMO_FOLDER, true);
  const Bytes generation3Image = sim::ReadDemoImage(OX_DEMO_FOLDER, false);
  const Bytes* image = nullptr;  // that the device connected last is to be given
  std::unique_ptr<Window> window = MakeWindow();
  Label& go = The<Label>("Go");
  Button& start = The<Button>("Start");
  Button& leave = The<Button>("End");
  std::unique_ptr<sim::Device> device;
};

}  // namespace ox::test
