// Waits and replies of the exchange with the loader.
#include "programming/loader_link.h"

#include <gtest/gtest.h>

#include "programming/block_frame.h"
#include "support/scripted_device.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

using Strings = std::vector<std::string>;
using Pieces = std::vector<ScriptedDevice::Piece>;

const Bytes kUpdateRequest = "S@UPDATEREQ\r";

class LoaderLinkTest : public testing::Test {
 protected:
  /// The device's reply to a "V", when it answers the wake-up and the frame so.
  Bytes Ask(const Pieces& wakeUp, const Pieces& reply, int seconds = 1) {
    ScriptedDevice device(sim::kLoaderLine);
    device.Expect("S", wakeUp).Expect(BuildBlockFrame('V', 0, {}), reply);
    host_.ports.Connect(1, &device);
    host_.ports.ForgetSent();
    link_.OpenForLoader();
    const double start = host_.clock.Elapsed();
    Bytes result = link_.SendBlock({'V', seconds});
    elapsed_ = host_.clock.Elapsed() - start;
    link_.Close();
    host_.ports.Connect(1, nullptr);
    return result;
  }

  /// Whether a device that answers the update request so counts as being in its loader.
  bool Enter(const Pieces& acknowledgement) {
    // It hears the request at the dialogue's settings and speaks at the loader's.
    class Switching : public ScriptedDevice {
     public:
      using ScriptedDevice::ScriptedDevice;
      sim::LineSettings Line() const override { return sim::kLoaderLine; }
    } device({4800, 'E', 7});
    device.Expect(kUpdateRequest, acknowledgement);
    host_.ports.Connect(1, &device);
    settings_.BaudRate = "4800";
    settings_.Parity = "E";
    const double start = host_.clock.Elapsed();
    const bool entered = link_.RequestUpdateMode();
    elapsed_ = host_.clock.Elapsed() - start;
    EXPECT_TRUE(device.Done());
    EXPECT_EQ(host_.ports.OpenCount(), 1);
    link_.Close();
    return entered;
  }

  TestHost host_;
  SessionSettings settings_;
  LoaderLink link_{host_.host, settings_};
  double elapsed_ = 0;
};

TEST_F(LoaderLinkTest, WakesTheLoaderBeforeTheFrameAndTakesTheFirstPieceAsReply) {
  const Bytes frame = BuildBlockFrame('V', 0, {});
  struct Case {
    Pieces wakeUp, reply;
    int seconds;
    Bytes result, sent;
    double elapsed;
  };
  for (const Case& c :
       {Case{{{0.9, "A"}}, {{0.9, "A"}}, 1, "A", "S" + frame, 1.8},
        Case{{{0, "A"}}, {{29, "N"}}, 30, "N", "S" + frame, 29},
        Case{{{0, "A"}}, {{0.1, "AA"}}, 1, "AA", "S" + frame, 0.1},
        Case{{{0, "A"}}, {{0.1, "A"}, {0.2, "\r"}}, 1, "A", "S" + frame, 0.1},
        Case{{{0, "A"}}, {}, 3, "", "S" + frame, 3}, Case{{{0, "A"}}, {{1.1, "A"}}, 1, "", "S" + frame, 1},
        Case{{}, {}, 30, "", "SN", 1}, Case{{{0.1, "N"}}, {}, 30, "", "SN", 0.1},
        Case{{{0.1, "AA"}}, {}, 30, "", "SN", 0.1}}) {
    EXPECT_EQ(Ask(c.wakeUp, c.reply, c.seconds), c.result);
    EXPECT_EQ(host_.ports.Sent(), c.sent);
    EXPECT_NEAR(elapsed_, c.elapsed, 0.02) << c.sent << c.result;
  }
}

TEST_F(LoaderLinkTest, DiscardsWhatIsLeftFromBefore) {
  ScriptedDevice device(sim::kLoaderLine);
  device.Expect("S", Pieces{{0, "A"}}).Expect(BuildBlockFrame('a', 0, {}), Pieces{{2, "N"}});
  device.Expect("S", Pieces{{0, "A"}}).Expect(BuildBlockFrame('b', 0, {}), "A");
  host_.ports.Connect(1, &device);
  link_.OpenForLoader();
  EXPECT_FALSE(link_.Accepts(request::kOlderKind));
  host_.windows.Pass(2);
  EXPECT_TRUE(link_.Accepts(request::kGeneration3Kind));
}

TEST_F(LoaderLinkTest, TakesOnlyTheWholeAcknowledgement) {
  EXPECT_TRUE(Enter({{0.1, "@UPDATEACK\r"}}));
  EXPECT_EQ(host_.ports.Openings(), (Strings{"1:4800,E,7,1", "1:19200,n,8,1"}));
  EXPECT_TRUE(Enter({{0.5, "@UPD"}, {3, "ATEACK"}, {4.9, "\r"}}));
  EXPECT_NEAR(elapsed_, 4.9, 0.02);
  EXPECT_FALSE(Enter({{0.1, "@UPDATEACK"}}));
  EXPECT_NEAR(elapsed_, 5, 0.02);
  EXPECT_FALSE(Enter({{0.1, " @UPDATEACK\r"}}));
  EXPECT_FALSE(Enter({{0.1, "@UPDATEACK\r\n"}}));
  EXPECT_FALSE(Enter({}));
}

TEST_F(LoaderLinkTest, AtMidnightAReplyIsAwaitedWithoutEndAndTheAcknowledgementNotAtAll) {
  host_.clock.StartAt(23, 59, 59.5);
  EXPECT_EQ(Ask({{0, "A"}}, {{5000, "A"}}), "A");
  TestHost other;
  other.clock.StartAt(23, 59, 59.5);
  LoaderLink link(other.host, settings_);
  EXPECT_FALSE(link.RequestUpdateMode());
  EXPECT_NEAR(other.clock.Elapsed(), 0.5, 0.02);
}

}  // namespace
}  // namespace ox::test
