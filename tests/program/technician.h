// The whole program on a virtual host, in front of a simulated device, with a user who knows its windows.
#pragma once

#include "app/program.h"
#include "chooser/dateiwahl.h"
#include "exchange/datenaustausch.h"
#include "journal/journaled_host.h"
#include "modem/modem.h"
#include "power/power_monitor.h"
#include "simulator/device/device.h"
#include "simulator/device/modem.h"
#include "support/scratch_folder.h"
#include "support/side.h"
#include "support/test_host.h"
#include "updates/firmware_packer.h"
#include "updates/program_update_window.h"
#include "updates/updatetab.h"

namespace ox::test {

/// The working folder holds the demonstration files. What the user does counts as the program's doing.
class Technician {
 public:
  /// With a support log when it is wanted.
  explicit Technician(bool logs = false) : journal_(WithLogs(host.files, logs), host.clock, kBuild, {}) {
    for (const char* name : {"netz.mes", "netz.par", "netz.zuo", "ox2.pro", "ox3.pr3", "OX3NEU.LDR"})
      host.files.content["/arbeit/" + std::string(name)] = ReadFile(std::string(OX_DEMO_FOLDER "/") + name);
    host.files.content["OX.CFG"] = "\\M\\\r\nEDT\r\n";
    Connect({});
    host.windows.OpenMain(Main());
  }

  void Connect(const sim::DeviceOptions& options) {
    device_ = std::make_unique<sim::Device>(options);
    PlugIn(plugged_);
  }
  /// Whether COM1 is there at all; it is at first.
  void PlugIn(bool plugged) {
    plugged_ = plugged;
    host.ports.Remove(1);
    if (plugged) host.ports.Connect(1, device_.get());
  }
  /// Something else than a device at COM1.
  void Connect(sim::Endpoint& end) { host.ports.Connect(1, &end); }
  sim::Device& Device() { return *device_; }
  Start& Main() { return program_.MainWindow(); }
  Strings Messages() { return host.windows.TakeMessages(); }
  /// The window that a session has opened; null while there is none.
  Window* Visited() { return visited_; }

  // The sessions: each opens its window, works in it and closes it.

  void TestConnection() { Click(Main().MenuVerb); }

  void Poll() {
    Use<Datenaustausch>(Main().MenuDaten, "Datenaustausch", [this](Datenaustausch& window) {
      Choose(window.duemstwal, "netz");
      Type(window.MST, "10100100");
      for (Button* poll : {&window.Einzelabruf, &window.Sammelabruf, &window.Zeitabruf}) Click(*poll);
      shown = window.datanz.Text();
    });
  }

  /// Polls until a user who looks away and misses the button closes the window.
  void PollCyclically() {
    Use<Datenaustausch>(Main().MenuDaten, "Datenaustausch", [this](Datenaustausch& window) {
      host.windows.In(40, [this, &window] {
        if (visited_ == &window) Close(window);
      });
      Click(window.Zyklischer_Abruf);
    });
  }

  void UpdateTables() {
    Use<updatetab>(Main().MenuUpTab, "updatetab", [this](updatetab& window) {
      for (CheckBox* table : {&window.ChMes, &window.ChPar, &window.ChZuo}) Choose(*table, "netz");
      Click(window.TabStart);
    });
  }

  void UpdateProgram() {
    const auto write = [this](ProgramUpdateWindow& window) {
      Choose(window.ChPro, window.Name() == "updatepro" ? "ox2" : "ox3");
      Click(window.ProStart);
    };
    WillUse<ProgramUpdateWindow>("updatepro", write);
    Use<ProgramUpdateWindow>(Main().MenUpPro, "UpdateproOx3", write);
  }

  void Monitor() {
    Use<PowerMonitor>(Main().MenuPowerMonitor, "PowerMonitor", [this](PowerMonitor& window) {
      Click(window.MonitorStart);
      host.windows.Pass(2);
      shown = window.ChargeControllerState.Text();
      if (window.IsOpen()) Click(window.MonitorStop);
      host.windows.Pass(1.5);
    });
  }

  /// With a modem in the device's place.
  void TestModem() {
    sim::SimulatedModem modem(
        {.line = *sim::ParseLineSettings(program_.Values().settings.DialogueSettings())});
    if (plugged_) host.ports.Connect(1, &modem);
    Use<Modem>(Main().MenuModem, "Modem", [this](Modem& window) {
      const std::pair<TextBox*, const char*> fields[] = {{&window.TAKZ, "123"},  {&window.TDAT, "221126"},
                                                         {&window.TUHR, "1200"}, {&window.TMST, "12345678"},
                                                         {&window.TPAR, "0012"}, {&window.TBEW, "s"},
                                                         {&window.TMEW, "12.3"}};
      for (const auto& [box, text] : fields) Type(*box, text);
      for (Button* button : {&window.Command2, &window.Command3}) Click(*button);
      shown = window.Datanz.Text();
      Click(window.Command4);
    });
    PlugIn(plugged_);
  }

  void PackFirmware() {
    Use<FirmwareOX3Verpacken>(Main().MenueToolsFirmwareOX3, "FirmwareOX3Verpacken",
                              [this](FirmwareOX3Verpacken& window) {
                                Type(window.TextQuelle, "/arbeit/OX3NEU");
                                Type(window.TextZiel, "neu");
                                Click(window.CoStart);
                              });
  }

  void Restart() {
    Close(Main());
    EXPECT_FALSE(Main().IsOpen()) << "the user could never leave the program";
    host.windows.OpenMain(Main());
  }

  void Close(Window& window) {
    const Exposure exposure;
    window.RequestClose();
  }

  TestHost host;
  /// What a poll, the monitor or the modem test showed at its end.
  std::string shown;

 private:
  template <class Clicked>
  void Click(Clicked& control) {
    const Exposure exposure;
    control.Click();
  }
  void Type(TextBox& box, const std::string& text) {
    const Exposure exposure;
    box.Edit(text);
  }

  static Strings UsableControls(Window& window) {
    Strings names;
    for (const Control* control : window.Controls())
      if (control->Enabled()) names.push_back(control->Name());
    return names;
  }

  /// What the user will do in a window. It must be idle behind that, and gone once closed.
  template <class Shown>
  void WillUse(const std::string& name, const std::function<void(Shown&)>& action) {
    host.windows.OnShown(name, [this, action](Window& window) {
      const Strings usable = UsableControls(window);
      visited_ = &window;
      action(dynamic_cast<Shown&>(window));
      visited_ = nullptr;
      Strings usableAgain = UsableControls(window);
      // What the session made ready to start stays so.
      std::erase_if(usableAgain,
                    [](const auto& control) { return control == "TabStart" || control == "ProStart"; });
      EXPECT_EQ(usableAgain, usable);
      if (window.IsOpen()) Close(window);
      EXPECT_FALSE(window.IsOpen()) << window.Name();
    });
  }
  template <class Shown>
  void Use(MenuEntry& entry, const std::string& name, const std::function<void(Shown&)>& action) {
    WillUse(name, action);
    Click(entry);
  }

  /// Clicks what opens the chooser and chooses a file for it; the chooser is closed where it stays open.
  template <class Clicked>
  void Choose(Clicked& control, const std::string& file) {
    host.windows.OnShown("Dateiwahl", [this, file](Window& window) {
      auto& chooser = dynamic_cast<Dateiwahl&>(window);
      Type(chooser.Text2, file);
      Click(chooser.Command1);
      if (chooser.IsOpen()) Close(chooser);
    });
    Click(control);
  }

  static constexpr char kBuild[] = "Orvanexe Service 4.0.0 (0123456789)";
  static Files& WithLogs(MemoryFiles& files, bool logs) {
    if (logs) files.content["/arbeit/Protokoll/liesmich"] = "";
    return files;
  }

  std::unique_ptr<sim::Device> device_;
  Journal journal_;
  JournaledHost logged_{host.host, journal_};
  Program program_{logged_.host};
  Window* visited_ = nullptr;
  bool plugged_ = true;
};

}  // namespace ox::test
