// The updates and the loader's link, with a device whose replies are spoiled as the input says.
#include "programming/program_update.h"
#include "programming/table_update.h"
#include "simulator/device/sample_program.h"
#include "support/test_host.h"
#include "watched_device.h"

namespace ox {
namespace {

/// An update tells its end once, and then the PC may sleep.
struct Ending : UpdateObserver {
  explicit Ending(test::TestHost& rig) : host(rig) {}
  void StartMarks() override {}
  void Mark() override {}
  void BlockSent(std::size_t number) override { Require(number == blocks++); }
  void Tell(std::string_view text) override {
    Require(message.empty() && !text.empty() && !host.awake.Held());
    message = text;
  }

  test::TestHost& host;
  std::size_t blocks = 0;
  std::string message;
};

}  // namespace

void Fuzz(unsigned choice, BytesView input) {
  static const Bytes programs[] = {sim::SampleProgram(sim::kSmallProgram, "V2", 2),
                                   sim::SampleProgram(sim::kLargeProgram, "V3", 3)};
  static const TableImages images{{ImageStatus::kBuilt, Bytes(sim::kTableChecksumAt, '\x5A') + "\xFE\xB2"},
                                  {ImageStatus::kBuilt, Bytes(sim::kTableChecksumAt, '\xFF') + "\x04\xBE"}};
  const bool tables = choice % 2 == 0;
  const std::size_t kind = choice / 2 % 2;
  test::TestHost host;
  WatchedDevice device({.generation = static_cast<int>(2 + kind), .startInLoader = choice / 4 % 2 != 0});
  host.ports.Connect(1, &device);
  const bool lies = input.find('A') != BytesView::npos;  // it may say that it took what it did not
  while (!input.empty()) device.Spoil(input);
  SessionSettings settings;
  settings.DeviceIdent = choice / 8 % 4 == 0 ? "OX 1" : kind == 0 ? "OX 2" : "OX 3";
  LoaderLink link(host.host, settings);
  Ending ending(host);
  const DeviceSearch search = [&] { return choice / 32 != 0; };
  const bool succeeded = UpdateEnd::kSucceeded == (tables ? RunTableUpdate(link, search, images, ending)
                                                          : RunProgramUpdate(DeviceKinds()[kind], link,
                                                                             search, programs[kind], ending));
  Require(succeeded == ending.message.ends_with("update erfolgreich abgeschlossen!") &&
          !ending.message.empty());
  Require(host.ports.OpenCount() == 0 && host.awake.taken == 1 && host.clock.Elapsed() < 100);
  if (!succeeded || lies) return;
  Require(tables ? device.Memory().Tables() == (kind == 0 ? images.older : images.generation3).bytes
                 : device.Memory().Program() == programs[kind]);
}

}  // namespace ox
