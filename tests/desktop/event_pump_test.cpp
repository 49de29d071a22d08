// Yield and Rest: what they wait for and what they let through.
#include "desktop/event_pump.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/posix/descriptor.h"
#include "scripted_desktop.h"

namespace ox::test {
namespace {

using std::chrono::steady_clock;

class Pump : public testing::Test {
 protected:
  Pump() {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("pipe");
    reader = Descriptor(ends[0]);
    writer = Descriptor(ends[1]);
    ports.Add(reader.Number());
  }

  Descriptor reader;
  Descriptor writer;
  OpenPorts ports;
  EventPump pump{ports};
};

TEST_F(Pump, InputEndsARestAtOnce) {
  ASSERT_EQ(write(writer.Number(), "A", 1), 1);
  constexpr int kRests = 200;  // six seconds, were each to last its full time
  const auto start = steady_clock::now();
  for (int rest = 0; rest < kRests; ++rest) pump.Rest();
  EXPECT_LT(steady_clock::now() - start, std::chrono::seconds(1));
}

TEST_F(Pump, ASilentLineEndsARestSoon) {
  const auto start = steady_clock::now();
  pump.Rest();
  ports.Remove(reader.Number());
  pump.Rest();
  EXPECT_GT(steady_clock::now() - start, std::chrono::milliseconds(10)) << "it waits";
}

TEST_F(Pump, ARestInsideARestEndsBoth) {
  int depth = 0;
  Later([&] {
    pump.Rest();
    ++depth;
  });
  pump.Rest();
  pump.Rest();
  EXPECT_EQ(depth, 1);
}

TEST_F(Pump, UnreadInputDoesNotKeepANestedLoopBusy) {
  ASSERT_EQ(write(writer.Number(), "A", 1), 1);
  int rounds = 0;
  Later([&rounds] {
    bool closed = false;  // the loop stands for a message box
    QTimer::singleShot(std::chrono::milliseconds(30), qApp, [&closed] { closed = true; });
    while (!closed) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
      ++rounds;
    }
  });
  while (rounds == 0) pump.Rest();
  EXPECT_LT(rounds, 20);
}

TEST_F(Pump, YieldLooksForEventsNowAndThen) {
  constexpr int kCharacters = 24000;
  int looks = 0;
  QTimer everyLook;
  QObject::connect(&everyLook, &QTimer::timeout, [&looks] { ++looks; });
  everyLook.start(0);
  const auto start = steady_clock::now();
  for (int character = 0; character < kCharacters || looks == 0; ++character) pump.Yield();
  const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(steady_clock::now() - start);
  EXPECT_LE(looks, took.count() + 1);
}

}  // namespace
}  // namespace ox::test
