// The dialogue: what goes over the line, what the trace says, what comes back, and how long every failure
// takes.
#include "link/device_link.h"

#include <gtest/gtest.h>

#include "platform/window.h"
#include "support/scripted_device.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

const std::string kNoAnswer = "Orvanexe antwortet nicht oder falsch: Prozedur abgebrochen!";

class DeviceDialogue : public testing::Test {
 protected:
  /// A window with nothing but a trace panel.
  struct TraceWindow : Window {
    explicit TraceWindow(WindowSystem& windows) : Window(windows, "TraceWindow", "") {}
    TextBox datanz{*this, "datanz"};
  };

  Bytes Run(const Bytes& request, bool multiRecord) {
    host_.ports.Connect(1, &device_);
    const double start = host_.clock.Elapsed();
    Bytes reply = link_.DeviceDialogue(request, multiRecord);
    seconds_ = host_.clock.Elapsed() - start;
    EXPECT_EQ(host_.ports.OpenCount(), 0);
    EXPECT_TRUE(device_.Done());
    return reply;
  }

  /// The trace as "T" and "R" entries, one after the other.
  std::string Trace() const {
    std::string trace = window_.datanz.Text();
    const auto replaceAll = [&](const std::string& from, const std::string& to) {
      for (auto at = trace.find(from); at != std::string::npos; at = trace.find(from, at)) {
        trace.replace(at, from.size(), to);
      }
    };
    replaceAll("PC -> OX  ", ">");
    replaceAll("PC <- OX  ", "<");
    replaceAll("\r\n", " ");
    return trace;
  }

  TestHost host_;
  SessionSettings settings_;
  TraceWindow window_{host_.windows};
  DeviceLink link_{host_.host, settings_, window_.datanz};
  ScriptedDevice device_;
  double seconds_ = 0;
};

using Strings = std::vector<std::string>;

TEST_F(DeviceDialogue, OneRecord) {
  device_.Expect("S", "A").Expect("J1\r", "0123\r456\r").Expect("A");
  EXPECT_EQ(Run("J1\r", false), "0123\r");
  EXPECT_EQ(Trace(), ">S <A >J1<CR> <0123<CR> >A");
  EXPECT_TRUE(host_.windows.Messages().empty());
  EXPECT_EQ(host_.ports.Openings(), Strings{"1:9600,O,7,1"});
}

TEST_F(DeviceDialogue, SeveralRecordsInPiecesUpToTheEndLine) {
  device_.Expect("S", {{0.9, "A"}})
      .Expect("P", {{0.5, "\rx"}, {1.4, "\rRy"}, {2.3, "z"}, {3.2, "\r"}, {3.3, "E\rnoch"}})
      .Expect("A");
  EXPECT_EQ(Run("P", true), "\rx\rRyz\rE\r");
  EXPECT_EQ(Trace(), ">S <A >P <<CR> <x<CR> <Ryz<CR> <E<CR> >A");
}

TEST_F(DeviceDialogue, WhatCameBehindAReplyIsNotTakenForTheNext) {
  device_.Expect("S", "A").Expect("T", "E\rnoch").Expect("A");
  EXPECT_EQ(Run("T", false), "E\r");
  device_.Expect("S", "A").Expect("T", "neu\r").Expect("A");
  EXPECT_EQ(Run("T", false), "neu\r");
}

TEST_F(DeviceDialogue, WakesUpToThreeTimes) {
  device_.Expect("S").Expect("S", "A").Expect("T", "1\r").Expect("A");
  EXPECT_EQ(Run("T", false), "1\r");
  EXPECT_EQ(Trace(), ">S >S <A >T <1<CR> >A");
  EXPECT_NEAR(seconds_, 1, 0.05);
}

TEST_F(DeviceDialogue, ASilentDeviceIsGivenUpAfterThreeSeconds) {
  device_.Expect("S").Expect("S").Expect("S").Expect("N");
  EXPECT_EQ(Run("T", false), "");
  EXPECT_EQ(Trace(), ">S >S >S >N");
  EXPECT_EQ(host_.windows.Messages(), Strings{kNoAnswer});
  EXPECT_NEAR(seconds_, 3, 0.1);
}

TEST_F(DeviceDialogue, AWrongWakeUpAnswerIsRefusedAtOnce) {
  for (const char* answer : {"AA", "N", "A\r", "x"}) {
    device_.Expect("S", answer).Expect("N");
    EXPECT_EQ(Run("T", false), "") << answer;
    EXPECT_EQ(host_.windows.TakeMessages(), Strings{kNoAnswer}) << answer;
  }
  EXPECT_TRUE(Trace().ends_with(">S <x >N"));
}

TEST_F(DeviceDialogue, SilenceInTheReplyReturnsWhatCame) {
  device_.Expect("S", "A").Expect("P", "\r1\rabgebro").Expect("N");
  EXPECT_EQ(Run("P", true), "\r1\rabgebro") << "the cut-off line counts as a part, then there is silence";
  EXPECT_EQ(Trace(), ">S <A >P <<CR> <1<CR> <abgebro >N");
  EXPECT_EQ(host_.windows.Messages(), Strings{kNoAnswer});
  EXPECT_NEAR(seconds_, 2, 0.1) << "one second behind the last character, one more for the next line";
}

TEST_F(DeviceDialogue, ADeviceThatRefusesIsStillWaitedFor) {
  device_.Expect("S", "A").Expect("T", {{0.1, "N"}, {0.9, "N"}, {1.8, "ja\r"}}).Expect("A");
  EXPECT_EQ(Run("T", false), "ja\r");
  EXPECT_EQ(Trace(), ">S <A >T <N <N <ja<CR> >A");
  device_.Expect("S", "A").Expect("T", "N").Expect("N");
  EXPECT_EQ(Run("T", false), "");
  EXPECT_TRUE(Trace().ends_with(">S <A >T <N >N"));
  EXPECT_EQ(host_.windows.Messages(), Strings{kNoAnswer});
}

TEST_F(DeviceDialogue, ADeviceThatEndsGetsNoAcknowledgement) {
  device_.Expect("S", "A").Expect("P", {{0, "\r1\r"}, {0.3, "R"}});
  EXPECT_EQ(Run("P", true), "\r1\r");
  EXPECT_EQ(Trace(), ">S <A >P <<CR> <1<CR> <R");
  EXPECT_TRUE(host_.windows.Messages().empty());
  EXPECT_EQ(device_.Unexpected(), "");
}

TEST_F(DeviceDialogue, APortThatFailsAnywhereGetsOneMessageAndNoResult) {
  const Strings message{"2: lässt sich nicht öffnen!"};
  settings_.ComPort = "2";
  EXPECT_EQ(Run("T", false), "");
  EXPECT_EQ(host_.windows.TakeMessages(), message) << "not there";
  for (std::size_t sent = 0; sent < 3; ++sent) {
    ScriptedDevice device;
    device.Expect("S", "A").Expect("T", "1\r").Expect("A");
    host_.ports.Connect(2, &device);
    host_.ports.BreakAfterSending(sent);
    EXPECT_EQ(Run("T", false), "") << sent;
    EXPECT_EQ(host_.windows.TakeMessages(), message) << sent;
    host_.ports.Mend();
  }
  settings_.ComPort = "x";
  EXPECT_EQ(Run("T", false), "");
  EXPECT_EQ(host_.windows.TakeMessages(), Strings{"x: lässt sich nicht öffnen!"});
}

TEST_F(DeviceDialogue, TheCableIsPulledInAWait) {
  device_.Expect("S", "A").Expect("P", "\r1\r");
  host_.windows.In(0.4, [&] { host_.ports.Break(); });
  EXPECT_EQ(Run("P", true), "");
  EXPECT_EQ(host_.windows.Messages(), Strings{"1: lässt sich nicht öffnen!"});
}

TEST_F(DeviceDialogue, MidnightStretchesTheWaitThatItOvertakes) {
  host_.clock.StartAt(23, 59, 59.5);
  device_.Expect("S", {{7, "A"}}).Expect("T", "1\r").Expect("A");
  EXPECT_EQ(Run("T", false), "1\r") << "the first wake-up waits on, however long the answer takes";
  EXPECT_EQ(Trace(), ">S <A >T <1<CR> >A");
}

TEST_F(DeviceDialogue, TheTraceIsKeptOrShowsTheLatestDialogueOnly) {
  DeviceLink latest{host_.host, settings_, window_.datanz, TraceMode::LatestOnly};
  device_.Expect("S", "A").Expect("T", "1\r").Expect("A");
  Run("T", false);
  device_.Expect("S", "A").Expect("T", "2\r").Expect("A");
  latest.DeviceDialogue("T", false);
  EXPECT_EQ(Trace(), ">S <A >T <2<CR> >A");
}

TEST_F(DeviceDialogue, TheTraceShowsOneLineAnEntry) {
  SerialLine line{host_.host, settings_, window_.datanz, kModemTrace};
  std::string painted;
  host_.windows.In(0, [&] { painted = window_.datanz.Text(); });
  line.WriteTrace("R0\r1\r");
  EXPECT_EQ(painted, "PC <- Modem  0\r1<CR>") << "at once, not with the next wait";
  line.WriteTrace("T");
  line.WriteTrace("T\xFC\n\r\r");
  EXPECT_EQ(window_.datanz.Text(), "PC <- Modem  0\r1<CR>\r\nPC -> Modem  \r\nPC -> Modem  ü\n\r<CR>");
}

}  // namespace
}  // namespace ox::test
