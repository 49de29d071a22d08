// The connection test: the order of its probes, what it takes for a device, what it leaves in the settings.
#include "link/verbindungstest.h"

#include "support/test_host.h"

namespace ox::test {
namespace {

struct ConnectionTest : testing::Test {
  void Run(sim::Endpoint* device) {
    host_.ports.Connect(1, device);
    host_.windows.OnShown("Verbindungstest", [](Window&) { FAIL() << "it stays"; });
    RunConnectionTest(host_.host, settings_);
    EXPECT_EQ(host_.ports.OpenCount(), 0);
    EXPECT_EQ(settings_.Connected, !settings_.DeviceIdent.empty());
  }

  TestHost host_;
  SessionSettings settings_;
};

TEST_F(ConnectionTest, JudgesWakeUpAndIdentification) {
  const Bytes full = "OX 3 V4.00 30.10.2006";
  const struct {
    const char* what;
    std::vector<ScriptedDevice::Piece> wakeUp, identification;
    Bytes ident;
  } rows[] = {
      {"in pieces", {{0.48, "A"}}, {{0.1, full.substr(0, 9)}, {0.5, full.substr(9) + "\r"}}, full},
      {"too late together", {{0.3, "A"}}, {{0.72, full + "\r"}}, ""},
      {"21 characters with CR", {{0, "A"}}, {{0, full.substr(1) + "\r"}}, ""},
      {"begins with N", {{0, "A"}}, {{0, "N\r"}}, "?"},
      {"wake-up too late", {{0.52, "A"}}, {{0, full + "\r"}}, ""},
      {"wake-up with more", {{0, "AA"}}, {{0, full + "\r"}}, ""},
  };
  for (const auto& row : rows) {
    ScriptedDevice device;
    device.Expect("S", row.wakeUp).Expect("K", row.identification);
    Run(&device);
    EXPECT_EQ(settings_.DeviceIdent, row.ident) << row.what;
  }
}

TEST_F(ConnectionTest, TriesTheStoredPairFirstAndStoresWhatItFound) {
  ScriptedDevice device({4800, 'E', 7});
  device.Expect("S", "A").Expect("K", "OX 2 1234567890123456\r");
  Run(&device);
  EXPECT_EQ(host_.ports.sent, "SSSSKAN");
  EXPECT_EQ(host_.ports.openings, (Strings{"1:9600,O,7,1", "1:2400,E,7,1", "1:2400,O,7,1", "1:4800,E,7,1"}));
  EXPECT_EQ(settings_.BaudRate + settings_.Parity, "4800E");
}

TEST_F(ConnectionTest, WithoutADeviceItTriesEveryPairFromTheUsualOneOn) {
  settings_ = {.BaudRate = "1200", .Parity = "N", .Connected = true, .DeviceIdent = "OX 3"};
  host_.clock.StartAt(23, 59, 59.8);  // midnight ends the first probe
  Verbindungstest window(host_.host, settings_);
  std::string seen;
  for (const double seconds : {0.0, 0.1, 1.0}) {
    host_.windows.In(seconds, [&] {
      seen += std::to_string(host_.ports.openings.size()) + window.COM.Text() + window.Baudanz.Text() +
              window.Paritätanz.Text() + " ";
    });
  }
  host_.windows.ShowModal(window);
  EXPECT_EQ(seen, "0 1Schnittstelle: COM19600gerade 3Schnittstelle: COM12400ungerade ");
  EXPECT_NEAR(host_.clock.Elapsed(), 0.2 + 8 * 0.5, 0.1);
  EXPECT_EQ(host_.ports.openings,
            (Strings{"1:9600,E,7,1", "1:2400,E,7,1", "1:2400,O,7,1", "1:4800,E,7,1", "1:4800,O,7,1",
                     "1:9600,E,7,1", "1:9600,O,7,1", "1:19200,E,7,1", "1:19200,O,7,1"}));
  EXPECT_EQ(settings_.BaudRate + settings_.Parity + settings_.DeviceIdent, "9600E");
  EXPECT_FALSE(settings_.Connected);
}

TEST_F(ConnectionTest, APortThatCannotBeOpenedEndsTheTestAtItsFirstProbeOnly) {
  settings_.ComPort = "2";
  Run(nullptr);
  EXPECT_EQ(host_.windows.TakeMessages(), Strings{"COM2: lässt sich nicht öffnen!"});
  settings_.ComPort = "1";
  host_.windows.In(0.3, [&] { host_.ports.Break(); });
  Run(nullptr);
  EXPECT_EQ(host_.windows.TakeMessages(), Strings(8, "COM1: lässt sich nicht öffnen!"));
  host_.ports.Mend();
  host_.windows.In(0.3, [] { throw std::runtime_error("unexpected"); });
  Run(nullptr);
}

}  // namespace
}  // namespace ox::test
