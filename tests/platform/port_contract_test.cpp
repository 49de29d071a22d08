// What every port promises, tried on the ports of this host and on those that the tests of windows stand on.
#include "platform/port_contract.h"

#include <chrono>

#include "support/test_host.h"

namespace ox::test {
namespace {

constexpr const char* kAsTheEnd = "9600,O,7,1";

template <bool keeps>
struct InMemory : Line {
  InMemory() { host.ports.Connect(1, &end), host.ports.KeepForClosedPorts(keeps); }
  ScriptedDevice end;
  TestHost host;
  SerialPorts& Ports() override { return host.ports; }
  void Say(char said) override { end.Say({{0, Bytes(1, said)}}); }
  void Pull() override { host.ports.Break(); }
};

class PortContract : public testing::TestWithParam<Kind> {
 protected:
  void Begin() {
    port_.reset(), other_.reset(), line_.reset();
    line_ = GetParam().make();
    port_ = line_->Ports().Create(), other_ = line_->Ports().Create();
    for (SerialPort* port : {port_.get(), other_.get()}) {
      port->SetSettings(kAsTheEnd);
      port->SetCommPort(line_->Number());
    }
  }

  /// Does what the letter tells, a digit is said by the far end; whether the port allowed it.
  bool Try(char letter) {
    const std::map<char, std::function<void()>> operations{
        {'o', [&] { port_->Open(); }},
        {'c', [&] { port_->Close(); }},
        {'i', [&] { port_->Input(); }},
        {'s', [&] { port_->Output("S"); }},
        {'m', [&] { port_->SetModemLine(true); }},
        {'=', [&] { port_->SetSettings(kAsTheEnd); }},
        {'e', [&] { port_->SetSettings("9600,E,7,1"); }},
        {'w', [&] { port_->SetSettings("9600,X,7,1"); }},
        {'x', [&] { port_->SetCommPort(0); }},
        {'y', [&] { port_->SetCommPort(line_->Number()); }},
        {'z', [&] { port_->SetCommPort(9999); }},
        {'t', [&] { other_->Open(); }},
        {'f', [&] { other_->Close(); }},
        {'p', [&] { line_->Pull(); }}};
    const auto operation = operations.find(letter);
    try {
      operation != operations.end() ? operation->second() : line_->Say(letter);
    } catch (const PortError&) {
      return false;
    }
    line_->Work();
    return true;
  }

  std::unique_ptr<Line> line_;
  std::unique_ptr<SerialPort> port_, other_;
};

TEST_P(PortContract, WhatItRefusesAndWhetherItIsOpenThen) {
  // Letters as in Try; then for each: refused (!), the port open (o) or closed (c) afterwards.
  const std::tuple<const char*, std::string, std::string> rows[] = {
      {"a closed port", "ismcic", "!c!c!cc!cc"},
      {"opened and closed", "omsisci", "oooooc!c"},
      {"opened twice", "oosc", "oooc"},
      {"another number", "ozicyo", "o!oocco"},
      {"no such port", "xozoyo", "c!cc!cco"},
      {"wrong settings", "wo=o", "c!cco"},
      {"taken", "tosfotc", "c!c!cco!oc"},
      {"a pulled cable, read", "opisco", "oo!c!cc!c"},
      {"a pulled cable, written", "opsio", "oo!c!c!c"},
      {"a pulled cable, its modem line", "opm", "oo!c"},
      {"a pulled cable, closed", "opco", "ooc!c"},
  };
  for (const auto& [what, letters, expected] : rows) {
    if (letters.starts_with('t') && !GetParam().alone) continue;
    Begin();
    std::string seen;
    testing::internal::CaptureStderr();  // the host's port says why it cannot be opened
    for (const char letter : letters) {
      if (!Try(letter)) seen += '!';
      seen += port_->PortOpen() ? 'o' : 'c';
      const OpenPorts* waiting = line_->Waiting();
      const int open = (port_->PortOpen() ? 1 : 0) + (other_->PortOpen() ? 1 : 0);
      EXPECT_TRUE(waiting == nullptr || std::ssize(waiting->Handles()) == open) << "what Rest waits on";
    }
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(seen, expected) << what;
  }
}

TEST_P(PortContract, OpeningDropsNothingThatTheHostHasKept) {
  // Letters as in Try; what is read then where the line keeps all, what came to a closed port, or nothing.
  const std::tuple<std::string, Bytes, Bytes, Bytes> rows[] = {{"o34", "34", "34", "34"},
                                                               {"3o4", "34", "34", "4"},
                                                               {"oc3o4", "34", "34", "4"},
                                                               {"o3co4", "34", "4", "4"},
                                                               {"eo3c=o4", "34", "4", "4"}};
  const auto expectRead = [&](const std::string& happening, const Bytes& expected) {
    Begin();
    for (const char letter : happening) Try(letter);
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(500);
    Bytes read;
    while (read.size() < expected.size() && std::chrono::steady_clock::now() < end) read += port_->Input();
    EXPECT_EQ(read + port_->Input(), expected) << happening;
  };
  for (const auto& [happening, all, later, none] : rows) {
    const Keeps keeps = GetParam().keeps;
    expectRead(happening, keeps == Keeps::kAll ? all : keeps == Keeps::kNothing ? none : later);
  }
  expectRead("eo34", GetParam().judges ? Bytes(2, '\0') : "34");
}

std::string NameOf(const testing::TestParamInfo<Kind>& kind) {
  return kind.param.name;
}

INSTANTIATE_TEST_SUITE_P(OnThisHost, PortContract, testing::ValuesIn(KindsOfThisHost()), NameOf);
INSTANTIATE_TEST_SUITE_P(InMemory, PortContract,
                         testing::Values(Kind{"ThatKeeps", Make<InMemory<true>>, Keeps::kAll},
                                         Kind{"ThatLoses", Make<InMemory<false>>, Keeps::kNothing}),
                         NameOf);

}  // namespace
}  // namespace ox::test
