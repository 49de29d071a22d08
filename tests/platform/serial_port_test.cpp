// What goes over an open port and back, on real pseudo-terminals.
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "platform/posix/posix_serial_port.h"
#include "platform/pseudo_terminal.h"
#include "platform/scratch_folder.h"

namespace ox {
namespace {

using std::chrono::steady_clock;

/// Bytes that differ from place to place, so that lost and swapped ones show.
Bytes Pattern(std::size_t size) {
  Bytes bytes;
  for (std::size_t at = 0; at < size; ++at) bytes += ByteOf(static_cast<unsigned>(at * 7 + at / 256));
  return bytes;
}

class SerialPortTest : public testing::Test {
 protected:
  void Open(std::string_view settings) {
    port_.SetSettings(settings);
    port_.Open();
  }

  /// Everything that arrives until `count` bytes are there.
  Bytes Take(std::size_t count) {
    Bytes taken;
    for (bool more = true; more && taken.size() < count;) {
      pollfd waited{openPorts_.Descriptors().at(0), POLLIN, 0};
      more = poll(&waited, 1, 500) > 0;
      taken += port_.Input();
    }
    return taken;
  }

  ScratchFolder scratch_;
  PseudoTerminal farEnd_;
  OpenPorts openPorts_;
  PosixSerialPort port_{openPorts_};
};

TEST_F(SerialPortTest, ClosingSendsWhatWasWritten) {
  constexpr std::size_t kSize = 300;
  Open("115200,n,8,1");
  const auto start = steady_clock::now();
  port_.Output(Pattern(kSize));
  port_.Close();
  EXPECT_GE(steady_clock::now() - start, std::chrono::milliseconds(26)) << "less than the line needs";
  EXPECT_FALSE(port_.PortOpen());
  EXPECT_TRUE(openPorts_.Descriptors().empty());
  EXPECT_EQ(farEnd_.Read(kSize), Pattern(kSize));
}

TEST_F(SerialPortTest, WhatArrivesWhileClosedIsThereAtTheNextOpening) {
  Open("9600,O,7,1");
  port_.Close();
  ASSERT_TRUE(farEnd_.Write("@UPDATEACK\r"));
  Open("19200,n,8,1");
  EXPECT_EQ(Take(11), "@UPDATEACK\r");
  ASSERT_TRUE(farEnd_.Write("unread"));
  port_.Close();
  Open("19200,n,8,1");
  EXPECT_EQ(Take(6), "unread");
  EXPECT_EQ(port_.Input(), "");
}

TEST_F(SerialPortTest, SevenDataBitsCutBytesEightDoNot) {
  struct {
    std::string_view settings;
    Bytes out, in;
  } const cases[] = {{"115200,O,7,1", ">\x7F\r", "A"}, {"115200,n,8,1", ">\xFF\r", "\xC1"}};
  for (const auto& each : cases) {
    Open(each.settings);
    port_.Output(">\xFF\r");
    EXPECT_EQ(farEnd_.Read(3), each.out);
    ASSERT_TRUE(farEnd_.Write("\xC1"));
    EXPECT_EQ(Take(1), each.in);
    port_.Close();
  }
}

TEST_F(SerialPortTest, EveryByteValuePassesUnchanged) {
  Open("115200,n,8,1");
  port_.Output(Pattern(256));
  EXPECT_EQ(farEnd_.Read(256), Pattern(256));
  ASSERT_TRUE(farEnd_.Write(Pattern(256)));
  EXPECT_EQ(Take(256), Pattern(256));
}

TEST_F(SerialPortTest, MoreThanTheHostBuffersIsSentWhole) {
  constexpr std::size_t kSize = 20000;
  Open("921600,n,8,1");
  Bytes received;
  std::thread reader([&] { received = farEnd_.Read(kSize); });
  EXPECT_NO_THROW(port_.Output(Pattern(kSize)));
  reader.join();
  EXPECT_TRUE(received == Pattern(kSize));
}

TEST_F(SerialPortTest, AReaderThatStallsEndsTheOutput) {
  Open("921600,n,8,1");
  EXPECT_THROW(port_.Output(Pattern(20000)), PortError);
  EXPECT_FALSE(port_.PortOpen());
  EXPECT_TRUE(openPorts_.Descriptors().empty());
}

TEST_F(SerialPortTest, AMissingModemLineIsNoError) {
  Open("9600,O,7,1");
  EXPECT_NO_THROW(port_.SetModemLine(false));
  EXPECT_NO_THROW(port_.SetModemLine(true));
  EXPECT_TRUE(port_.PortOpen());
}

TEST_F(SerialPortTest, AClosedPortRefusesItsUse) {
  EXPECT_THROW(port_.Input(), PortError);
  EXPECT_THROW(port_.Output("S"), PortError);
  EXPECT_THROW(port_.SetModemLine(true), PortError);
  port_.Close();
}

}  // namespace
}  // namespace ox
