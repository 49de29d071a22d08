// What every port promises, tried on the ports of this host and on those that the tests of windows stand on.
#include "platform/posix/posix_serial_port.h"
#include "simulator/pty/line_host.h"
#include "support/scratch_folder.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

constexpr const char* kAsTheEnd = "9600,O,7,1";

/// A port and its far end, which says what the test wants.
struct Line {
  virtual ~Line() = default;
  virtual SerialPorts& Ports() = 0;
  virtual void Say(char said) = 0;
  virtual void Pull() {}
  /// Lets the line carry what is under way.
  virtual void Work() {}
};

struct OnThisHost : Line {
  ScratchFolder folder;
  OpenPorts openPorts;
  PosixSerialPorts ports{openPorts};
  SerialPorts& Ports() override { return ports; }
};

struct FarEnd : sim::PtyLine {
  sim::PortLink link{"COM1", Path()};
};

/// The host keeps what comes to a pseudo-terminal, open or not.
struct OnAPseudoTerminal : OnThisHost {
  std::optional<FarEnd> end{std::in_place};
  void Say(char said) override { end->Write({&said, 1}); }
  void Pull() override {
    end.reset();
    std::filesystem::create_symlink("/dev/unplugged", "COM1");  // else it would be the built-in port
  }
};

struct OnTheSimulatedLine : OnThisHost {
  ScriptedDevice end;
  sim::LineHost host{end, {"COM1", false, std::nullopt}};
  void Say(char said) override { end.Say({{0, Bytes(1, said)}}); }
  void Work() override { host.Work(); }
};

struct InMemory : Line {
  explicit InMemory(bool keeps) {
    host.ports.Connect(1, &end);
    host.ports.KeepForClosedPorts(keeps);
  }
  ScriptedDevice end;
  TestHost host;
  SerialPorts& Ports() override { return host.ports; }
  void Say(char said) override { end.Say({{0, Bytes(1, said)}}); }
  void Pull() override { host.ports.Break(); }
};

/// Does what the letter tells; whether the port allowed it.
bool Try(char letter, SerialPort& port, SerialPort& other, Line& line) {
  const std::map<char, std::function<void()>> operations = {{'o', [&] { port.Open(); }},
                                                            {'c', [&] { port.Close(); }},
                                                            {'i', [&] { port.Input(); }},
                                                            {'s', [&] { port.Output("S"); }},
                                                            {'m', [&] { port.SetModemLine(true); }},
                                                            {'=', [&] { port.SetSettings(kAsTheEnd); }},
                                                            {'e', [&] { port.SetSettings("9600,E,7,1"); }},
                                                            {'w', [&] { port.SetSettings("9600,X,7,1"); }},
                                                            {'0', [&] { port.SetCommPort(0); }},
                                                            {'1', [&] { port.SetCommPort(1); }},
                                                            {'9', [&] { port.SetCommPort(9999); }},
                                                            {'t', [&] { other.Open(); }},
                                                            {'f', [&] { other.Close(); }},
                                                            {'p', [&] { line.Pull(); }}};
  try {
    operations.at(letter)();
    return true;
  } catch (const PortError&) {
    return false;
  }
}

class PortContract : public testing::Test {
 protected:
  void On(Line& line) {
    port_ = line.Ports().Create();
    other_ = line.Ports().Create();
    for (SerialPort* each : {port_.get(), other_.get()}) {
      each->SetSettings(kAsTheEnd);
      each->SetCommPort(1);
    }
  }

  std::unique_ptr<SerialPort> port_, other_;
};

TEST_F(PortContract, WhatItRefusesAndWhetherItIsOpenThen) {
  // Letters as in Try; then for each: refused (!), the port open (o) or closed (c) afterwards.
  const std::tuple<const char*, std::string, std::string> rows[] = {
      {"a closed port", "ismcic", "!c!c!cc!cc"},
      {"opened and closed", "omsisci", "oooooc!c"},
      {"opened twice", "oosc", "oooc"},
      {"another number", "o9ic1o", "o!oocco"},
      {"no such port", "0o9o1o", "c!cc!cco"},
      {"wrong settings", "wo=o", "c!cco"},
      {"taken", "tosfotc", "c!c!cco!oc"},
      {"a pulled cable, read", "opisco", "oo!c!cc!c"},
      {"a pulled cable, written", "opsio", "oo!c!c!c"},
      {"a pulled cable, its modem line", "opm", "oo!c"},
      {"a pulled cable, closed", "opco", "ooc!c"},
  };
  for (const bool inMemory : {false, true}) {
    for (const auto& [what, letters, expected] : rows) {
      const std::unique_ptr<Line> line =
          inMemory ? std::unique_ptr<Line>(new InMemory(false)) : std::make_unique<OnAPseudoTerminal>();
      On(*line);
      std::string seen;
      testing::internal::CaptureStderr();  // the host's port says why it cannot be opened
      for (const char letter : letters) {
        if (!Try(letter, *port_, *other_, *line)) seen += '!';
        seen += port_->PortOpen() ? 'o' : 'c';
        const auto* host = dynamic_cast<OnThisHost*>(line.get());
        const int open = (port_->PortOpen() ? 1 : 0) + (other_->PortOpen() ? 1 : 0);
        EXPECT_TRUE(host == nullptr || std::ssize(host->openPorts.Handles()) == open) << "what Rest waits on";
      }
      testing::internal::GetCapturedStderr();
      EXPECT_EQ(seen, expected) << what << (inMemory ? " in memory" : "");
      port_.reset(), other_.reset();
    }
  }
}

TEST_F(PortContract, OpeningDropsNothingThatTheHostHasKept) {
  const Bytes damaged(2, '\0');
  // Letters as in Try, and digits that the far end says; what is read at the end where the host keeps what
  // comes to a closed port, and where nobody does.
  const std::tuple<std::string, Bytes, Bytes> rows[] = {{"o34", "34", "34"},    {"3o4", "34", "4"},
                                                        {"oc3o4", "34", "4"},   {"o3co4", "34", "4"},
                                                        {"eo3c=o4", "34", "4"}, {"eo34", damaged, damaged}};
  const std::pair<const char*, std::function<std::unique_ptr<Line>()>> lines[] = {
      {"a pseudo-terminal", std::make_unique<OnAPseudoTerminal>},
      {"memory that keeps", [] { return std::make_unique<InMemory>(true); }},
      {"the simulated line", std::make_unique<OnTheSimulatedLine>},
      {"memory that loses", [] { return std::make_unique<InMemory>(false); }}};
  for (const auto& [happening, kept, lost] : rows) {
    for (const auto& each : lines) {
      const bool bare = &each == &lines[0];
      if (bare && kept == damaged) continue;  // it judges no parity
      const std::unique_ptr<Line> line = each.second();
      On(*line);
      for (const char letter : happening) {
        if (letter == '3' || letter == '4') {
          line->Say(letter);
        } else {
          Try(letter, *port_, *other_, *line);
        }
        line->Work();
      }
      const Bytes expected = bare || &each == &lines[1] ? kept : lost;
      const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(500);
      Bytes read;
      while (read.size() < expected.size() && std::chrono::steady_clock::now() < end) read += port_->Input();
      EXPECT_EQ(read + port_->Input(), expected) << happening << " on " << each.first;
      port_.reset(), other_.reset();
    }
  }
}

}  // namespace
}  // namespace ox::test
