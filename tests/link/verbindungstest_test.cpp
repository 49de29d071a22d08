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
    const double start = host_.clock.Elapsed();
    RunConnectionTest(host_.host, settings_);
    seconds_ = host_.clock.Elapsed() - start;
    EXPECT_EQ(host_.ports.OpenCount(), 0);
  }

  Bytes Stored() const { return settings_.BaudRate + settings_.Parity; }

  TestHost host_;
  SessionSettings settings_;
  double seconds_ = 0;
};

const Strings kSearch{"1:2400,E,7,1", "1:2400,O,7,1", "1:4800,E,7,1",  "1:4800,O,7,1",
                      "1:9600,E,7,1", "1:9600,O,7,1", "1:19200,E,7,1", "1:19200,O,7,1"};

TEST_F(ConnectionTest, FindsTheDeviceWithTheStoredPairInOneProbe) {
  ScriptedDevice device;
  device.Expect("S", {{0.48, "A"}})
      .Expect("K", {{0.1, "OX 3 V4.00 30.10."}, {0.5, "2006\r"}})
      .Expect("A")
      .Expect("N");
  bool drawn = false;
  host_.windows.In(0, [&] { drawn = host_.ports.Openings().empty(); });
  Run(&device);
  EXPECT_TRUE(drawn) << "before the first probe";
  EXPECT_TRUE(device.Done());
  EXPECT_TRUE(settings_.Connected);
  EXPECT_EQ(settings_.DeviceIdent, "OX 3 V4.00 30.10.2006");
  EXPECT_EQ(host_.ports.Openings(), Strings{"1:9600,O,7,1"});
}

TEST_F(ConnectionTest, SearchesInItsOrderAndStoresWhatItFound) {
  ScriptedDevice device({4800, 'O', 7});
  device.Expect("S", "A").Expect("K", "OX 2 1234567890123456\r").Expect("A").Expect("N");
  Run(&device);
  EXPECT_TRUE(settings_.Connected);
  EXPECT_EQ(Stored(), "4800O");
  Strings order{"1:9600,O,7,1"};
  order.insert(order.end(), kSearch.begin(), kSearch.begin() + 4);
  EXPECT_EQ(host_.ports.Openings(), order);
}

TEST_F(ConnectionTest, WithoutADeviceItTakesNineProbesAndKeepsNormalisedSettings) {
  settings_.BaudRate = "1200";
  settings_.Parity = "N";
  settings_.Connected = true;
  settings_.DeviceIdent = "OX 3";
  Run(nullptr);
  EXPECT_FALSE(settings_.Connected);
  EXPECT_EQ(settings_.DeviceIdent, "");
  EXPECT_EQ(Stored(), "9600E");
  Strings order{"1:9600,E,7,1"};
  order.insert(order.end(), kSearch.begin(), kSearch.end());
  EXPECT_EQ(host_.ports.Openings(), order);
  EXPECT_EQ(host_.ports.Sent(), Bytes(9, 'S'));
  EXPECT_NEAR(seconds_, 4.5, 0.1);
  EXPECT_TRUE(host_.windows.Messages().empty());
}

TEST_F(ConnectionTest, JudgesWakeUpAndIdentification) {
  struct Case {
    const char* what;
    std::vector<ScriptedDevice::Piece> wakeUp, identification;
    const char* ident;  // null: not found
  };
  const Bytes full = "OX 3 1234567890123456";
  for (const Case& c : std::vector<Case>{
           {"22 characters", {{0, "A"}}, {{0, full + "\r"}}, "OX 3 1234567890123456"},
           {"21 characters", {{0, "A"}}, {{0, full.substr(1) + "\r"}}, nullptr},
           {"longer", {{0, "A"}}, {{0, full + "7890\r"}}, "OX 3 1234567890123456"},
           {"22 without CR", {{0, "A"}}, {{0, full + "7"}}, "OX 3 1234567890123456"},
           {"begins with N", {{0, "A"}}, {{0, "N\r"}}, "?"},
           {"long, begins with N", {{0, "A"}}, {{0, "N" + full + "\r"}}, "NOX 3 123456789012345"},
           {"silent", {{0, "A"}}, {}, nullptr},
           {"too late together", {{0.3, "A"}}, {{0.72, full + "\r"}}, nullptr},
           {"wake-up too late", {{0.52, "A"}}, {{0, full + "\r"}}, nullptr},
           {"wake-up with more", {{0, "AA"}}, {{0, full + "\r"}}, nullptr},
           {"wrong wake-up", {{0, "N"}}, {{0, full + "\r"}}, nullptr},
       }) {
    ScriptedDevice device;
    device.Expect("S", c.wakeUp).Expect("K", c.identification);
    settings_ = SessionSettings();
    Run(&device);
    EXPECT_EQ(settings_.Connected, c.ident != nullptr) << c.what;
    EXPECT_EQ(settings_.DeviceIdent, c.ident != nullptr ? c.ident : "") << c.what;
  }
}

TEST_F(ConnectionTest, APortThatCannotBeOpenedEndsTheTestAtItsFirstProbe) {
  settings_.ComPort = "2";
  Run(nullptr);
  EXPECT_EQ(host_.windows.TakeMessages(), Strings{"COM2: lässt sich nicht öffnen!"});
  EXPECT_FALSE(settings_.Connected);
  // In the search every pair says so, and the search goes on.
  settings_.ComPort = "1";
  host_.windows.In(0.3, [&] { host_.ports.Break(); });
  Run(nullptr);
  EXPECT_EQ(host_.windows.TakeMessages(), Strings(8, "COM1: lässt sich nicht öffnen!"));
}

TEST_F(ConnectionTest, AProbeOverMidnightEndsAtOnce) {
  host_.clock.StartAt(23, 59, 59.8);
  Run(nullptr);
  EXPECT_NEAR(seconds_, 0.2 + 8 * 0.5, 0.1);
}

TEST_F(ConnectionTest, ShowsWhatItTriesAndCanBeClosedAtAnyMoment) {
  for (double moment = 0; moment < 4.7; moment += 0.05) {
    Verbindungstest window(host_.host, settings_);
    Strings shown;
    window.Paritätanz.ConnectView(
        [&](Change) { shown.push_back(window.Baudanz.Text() + window.Paritätanz.Text()); });
    host_.windows.In(moment, [&] { window.RequestClose(); });
    host_.windows.ShowModal(window);
    host_.windows.Pass(5);
    EXPECT_FALSE(window.IsOpen());
    EXPECT_EQ(shown.size(), 9U);
    EXPECT_EQ(shown[3], "4800gerade");
    EXPECT_EQ(window.COM.Text(), "Schnittstelle: COM1");
  }
}

}  // namespace
}  // namespace ox::test
