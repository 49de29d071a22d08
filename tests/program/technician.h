// The whole program on a virtual host, in front of a simulated device, with a user who knows its windows.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/program.h"
#include "simulator/device/device.h"
#include "simulator/device/modem.h"
#include "support/side.h"
#include "support/test_host.h"

namespace ox::test {

/// The working folder holds the demonstration files. What the user does counts as the program's doing.
class Technician {
 public:
  Technician();

  /// Puts a device at the other end of the line.
  void Connect(const sim::DeviceOptions& options);
  /// Whether COM1 is there at all; it is at first.
  void PlugIn(bool plugged);
  sim::Device& Device() { return *device_; }
  Start& Main() { return program_.MainWindow(); }
  std::vector<std::string> Messages() { return host.windows.TakeMessages(); }
  /// The window that a session has opened; null while there is none.
  Window* Visited() { return visited_; }

  // The sessions: each opens its window, works in it and closes it.

  void TestConnection() { Click(Main().MenuVerb); }
  /// Loads names, polls one value, then all, then the time.
  void Poll();
  /// Polls until a user who looks away and misses the button closes the window.
  void PollCyclically();
  /// Loads the three demonstration tables and starts the update.
  void UpdateTables();
  /// Loads the demonstration program and starts the update that the device's generation calls for.
  void UpdateProgram();
  void Monitor();
  /// With a modem in the device's place.
  void TestModem();
  void PackFirmware();
  /// Leaves the program and starts it again.
  void Restart();

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
  /// What the user will do in a window. It must be idle behind that, and gone once closed.
  template <class Shown>
  void WillUse(const std::string& name, const std::function<void(Shown&)>& action);
  /// Clicks what opens the chooser and chooses a file for it; the chooser is closed where it stays open.
  template <class Clicked>
  void Choose(Clicked& control, const std::string& file);

  std::unique_ptr<sim::Device> device_;
  Program program_{host.host};
  Window* visited_ = nullptr;
  bool plugged_ = true;
};

}  // namespace ox::test
