// The whole program on a virtual host, in front of a simulated device, with a user who knows its windows.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/program.h"
#include "chooser/dateiwahl.h"
#include "exchange/datenaustausch.h"
#include "modem/modem.h"
#include "power/power_monitor.h"
#include "program/sheltered_host.h"
#include "programming/firmware_packer.h"
#include "programming/updatepro.h"
#include "programming/updatepro_ox3.h"
#include "programming/updatetab.h"
#include "simulator/device.h"
#include "support/test_host.h"

namespace ox::test {

/// The working folder holds the demonstration files. What the user does counts as the program's doing.
class ProgramRig {
 public:
  ProgramRig();

  void Connect(const sim::DeviceOptions& options);
  sim::Device& Device() { return *device_; }
  Start& Main() { return program_.MainWindow(); }
  const SessionSettings& Settings() const { return program_.Values().settings; }
  std::vector<std::string> Messages() { return host.windows.TakeMessages(); }

  /// The user clicks; the next line runs when everything that this led to has ended.
  template <class Clicked>
  void Click(Clicked& control) {
    const Exposure exposure;
    control.Click();
  }
  void Type(TextBox& box, const std::string& text) {
    const Exposure exposure;
    box.Edit(text);
  }
  void Close(Window& window) {
    const Exposure exposure;
    window.RequestClose();
  }
  /// Opens a window by its menu entry, does something in it and closes it.
  template <class Shown>
  void In(MenuEntry& entry, const std::string& name, const std::function<void(Shown&)>& action) {
    host.windows.OnShown(name, [this, action](Window& window) {
      const Visit visit(*this, window);
      action(dynamic_cast<Shown&>(window));
    });
    Click(entry);
  }
  /// Ticks a box and chooses a file for it; the chooser stays open on nothing.
  void Choose(CheckBox& box, const std::string& file);
  void Choose(Button& button, const std::string& file);

  void Exchange(const std::function<void(Datenaustausch&)>& action) {
    In(Main().MenuDaten, "Datenaustausch", action);
  }
  /// Loads the three demonstration tables and starts the update.
  void UpdateTables();
  /// Loads the demonstration program and starts the update that the device's generation calls for.
  void UpdateProgram();
  void Monitor(double seconds);
  void TestModem();
  void PackFirmware();

  /// The window that one of the above has opened; null while there is none.
  Window* Visited() { return visited_; }

  TestHost host;

 private:
  /// The user's time in a window, which must be idle before it is closed and gone then.
  class Visit {
   public:
    Visit(ProgramRig& rig, Window& window);
    Visit(const Visit&) = delete;
    Visit& operator=(const Visit&) = delete;
    ~Visit();

   private:
    ProgramRig& rig_;
    Window& window_;
  };

  void WillChoose(const std::string& file);

  ShelteredHost sheltered_{host};
  std::unique_ptr<sim::Device> device_;
  Program program_{sheltered_.host};
  Window* visited_ = nullptr;
};

/// What the user was told of a whole update.
inline const std::string kTablesWritten = "Tabellenupdate erfolgreich abgeschlossen!";
inline const std::string kProgramWritten = "Programmupdate erfolgreich abgeschlossen!";
inline const std::string kConnected = "Verbindung ist hergestellt!";

}  // namespace ox::test
