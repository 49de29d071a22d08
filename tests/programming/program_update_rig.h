// A program update window of either generation in front of a simulated device.
#pragma once

#include <memory>
#include <string>

#include "programming/demo_file.h"
#include "programming/update_rig.h"
#include "programming/updatepro.h"
#include "programming/updatepro_ox3.h"

namespace ox::test {

struct ProgramUpdateRig : UpdateRig {
  /// Generation 2 or 3; the demonstration programs lie where Load expects them.
  explicit ProgramUpdateRig(int deviceGeneration) : generation(deviceGeneration) {
    if (generation == 2) {
      made = std::make_unique<updatepro>(host.host, subs, chooser);
    } else {
      made = std::make_unique<UpdateproOx3>(host.host, subs, chooser);
    }
    host.files.content["/demo.2"] = DemoFile("ox2.pro");
    host.files.content["/demo.3"] = DemoFile("ox3.pr3");
    path = "/demo." + std::to_string(generation);
    format = generation == 2 ? kProgramFormat2 : kProgramFormat3;
    host.windows.OpenMain(*made);
  }

  void Load() { Choose(window().ChPro, path); }

  ProgramUpdateWindow& window() { return *made; }

  /// What the device holds after an update with the demonstration program.
  Bytes DemoProgram() { return ReadProgramFile(host.files.content[path], format).program; }

  const int generation;
  std::unique_ptr<ProgramUpdateWindow> made;
  std::string path;
  ProgramFormat format = kProgramFormat2;
};

inline sim::DeviceOptions DeviceOfGeneration(int generation, bool startInLoader = false) {
  sim::DeviceOptions options;
  options.generation = generation;
  options.startInLoader = startInLoader;
  return options;
}

}  // namespace ox::test
