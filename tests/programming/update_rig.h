// What every update window is tried with: a host, a file chooser with its user, a simulated device.
#pragma once

#include <memory>
#include <string>

#include "chooser/dateiwahl.h"
#include "chooser/file_chooser.h"
#include "simulator/device.h"
#include "support/test_host.h"

namespace ox::test {

struct UpdateRig {
  void Connect(const sim::DeviceOptions& options) {
    device = std::make_unique<sim::Device>(options);
    host.ports.Connect(1, device.get());
  }

  /// The user clicks a box and types a path into the chooser; cancels it when the path is empty.
  void Choose(CheckBox& box, const std::string& path) {
    host.windows.OnShown("Dateiwahl", [path](Window& shown) {
      auto& dialogue = dynamic_cast<Dateiwahl&>(shown);
      dialogue.Text2.Edit(path);
      dialogue.Command1.Click();
    });
    box.Click();
  }

  TestHost host;
  Subs subs;
  FileChooser chooser{host.host, subs};
  std::unique_ptr<sim::Device> device;
};

}  // namespace ox::test
