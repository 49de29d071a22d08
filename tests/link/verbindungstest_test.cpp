// The connection test: the order of its probes, what it takes for a device, what it leaves in the settings.
#include "link/verbindungstest.h"

#include <gtest/gtest.h>

#include "support/scripted_device.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

using Strings = std::vector<std::string>;

class ConnectionTest : public testing::Test {
 protected:
  void Run(sim::Endpoint* device) {
    host_.ports.Connect(1, device);
    RunConnectionTest(host_.host, settings_);
    EXPECT_EQ(host_.ports.OpenCount(), 0);
    EXPECT_EQ(settings_.Connected, !settings_.DeviceIdent.empty());
  }

  TestHost host_;
  SessionSettings settings_;
};

TEST_F(ConnectionTest, JudgesWakeUpAndIdentification) {
  struct Row {
    const char* what;
    double wakeUpSeconds;
    Bytes wakeUp;
    std::vector<ScriptedDevice::Piece> identification;
    Bytes sent;  // in the first probe
    Bytes ident;
  };
  const Bytes full = "OX 3 V4.00 30.10.2006";
  const Row rows[] = {
      {"in pieces", 0.48, "A", {{0.1, full.substr(0, 9)}, {0.5, full.substr(9) + "\r"}}, "SKAN", full},
      {"too late together", 0.3, "A", {{0.72, full + "\r"}}, "SKAN", ""},
      {"21 characters with CR", 0, "A", {{0, full.substr(1) + "\r"}}, "SKAN", ""},
      {"22 without CR", 0, "A", {{0, full + "7"}}, "SKAN", full},
      {"begins with N", 0, "A", {{0, "N\r"}}, "SKAN", "?"},
      {"long, begins with N", 0, "A", {{0, "N" + full + "\r"}}, "SKAN", "N" + full.substr(0, 20)},
      {"wake-up too late", 0.52, "A", {{0, full + "\r"}}, "S", ""},
      {"wake-up with more", 0, "AA", {{0, full + "\r"}}, "S", ""},
  };
  for (const Row& row : rows) {
    ScriptedDevice device;
    device.Expect("S", {{row.wakeUpSeconds, row.wakeUp}}).Expect("K", row.identification);
    host_.ports.ForgetSent();
    Run(&device);
    EXPECT_EQ(settings_.DeviceIdent, row.ident) << row.what;
    EXPECT_EQ(host_.ports.Sent(), row.sent + Bytes(row.ident.empty() ? 8 : 0, 'S')) << row.what;
  }
}

TEST_F(ConnectionTest, SearchesInItsOrderAndStoresWhatItFound) {
  ScriptedDevice device({19200, 'O', 7});
  device.Expect("S", "A").Expect("K", "OX 2 1234567890123456\r").Expect("A").Expect("N");
  Run(&device);
  EXPECT_EQ(settings_.BaudRate + settings_.Parity, "19200O");
  EXPECT_EQ(host_.ports.Openings(),
            (Strings{"1:9600,O,7,1", "1:2400,E,7,1", "1:2400,O,7,1", "1:4800,E,7,1", "1:4800,O,7,1",
                     "1:9600,E,7,1", "1:9600,O,7,1", "1:19200,E,7,1", "1:19200,O,7,1"}));
}

TEST_F(ConnectionTest, WithoutADeviceItShowsNinePairsHoweverEarlyItIsClosed) {
  for (double closed = 0; closed < 4.5; closed += 0.05) {
    settings_ = {.BaudRate = "1200", .Parity = "N", .Connected = true, .DeviceIdent = "OX 3"};
    Verbindungstest window(host_.host, settings_);
    std::string shown;
    host_.windows.In(0, [&] { EXPECT_EQ(host_.ports.OpenCount(), 0) << "drawn before it probes"; });
    host_.windows.In(closed, [&] { window.RequestClose(); });
    for (const int probe : {0, 1, 2, 3, 4, 5, 6, 7, 8}) {
      host_.windows.In(0.25 + 0.5 * probe,
                       [&] { shown += window.Baudanz.Text() + window.Paritätanz.Text() + " "; });
    }
    const double start = host_.clock.Elapsed();
    host_.windows.ShowModal(window);
    EXPECT_NEAR(host_.clock.Elapsed() - start, 4.5, 0.1);
    EXPECT_EQ(shown,
              "9600gerade 2400gerade 2400ungerade 4800gerade 4800ungerade 9600gerade 9600ungerade "
              "19200gerade 19200ungerade ");
    EXPECT_EQ(window.COM.Text(), "Schnittstelle: COM1");
    EXPECT_EQ(settings_.BaudRate + settings_.Parity + settings_.DeviceIdent, "9600E");
    EXPECT_FALSE(settings_.Connected);
  }
  EXPECT_TRUE(host_.windows.Messages().empty());
}

TEST_F(ConnectionTest, APortThatCannotBeOpenedEndsTheTestAtItsFirstProbeOnly) {
  settings_.ComPort = "2";
  Run(nullptr);
  EXPECT_EQ(host_.windows.TakeMessages(), Strings{"COM2: lässt sich nicht öffnen!"});
  settings_.ComPort = "1";
  host_.windows.In(0.3, [&] { host_.ports.Break(); });
  Run(nullptr);
  EXPECT_EQ(host_.windows.TakeMessages(), Strings(8, "COM1: lässt sich nicht öffnen!"));
}

TEST_F(ConnectionTest, AProbeOverMidnightEndsAtOnce) {
  host_.clock.StartAt(23, 59, 59.8);
  Run(nullptr);
  EXPECT_NEAR(host_.clock.Elapsed(), 0.2 + 8 * 0.5, 0.1);
}

}  // namespace
}  // namespace ox::test
