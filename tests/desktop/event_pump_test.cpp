// Yield and Rest: what they wait for and what they let through.
#include "desktop/event_pump.h"

#include <gtest/gtest.h>
#include <sys/eventfd.h>

#include <QCoreApplication>

#include "platform/posix/descriptor.h"

namespace ox::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

class Pump : public testing::Test {
 protected:
  Pump() { ports.Add(line.Number()); }
  void Send() const { ASSERT_EQ(eventfd_write(line.Number(), 1), 0); }
  milliseconds Resting(int rests) {
    const auto start = steady_clock::now();
    while (rests-- > 0) pump.Rest();
    return std::chrono::duration_cast<milliseconds>(steady_clock::now() - start);
  }

  Descriptor line{eventfd(0, EFD_NONBLOCK)};
  OpenPorts ports;
  EventPump pump{ports};
};

TEST_F(Pump, ARestWaitsForInputOfAnOpenPort) {
  EXPECT_GT(Resting(2), milliseconds(10));
  Send();
  EXPECT_LT(Resting(200), milliseconds(1000)) << "ten seconds, were each to last its full time";
  ports.Remove(line.Number());
  EXPECT_GT(Resting(2), milliseconds(10));
}

TEST_F(Pump, ARestInsideARestEndsBoth) {
  bool ended = false;
  QTimer::singleShot(0, qApp, [&] {
    pump.Rest();
    ended = true;
  });
  pump.Rest();
  pump.Rest();
  EXPECT_TRUE(ended);
}

TEST_F(Pump, UnreadInputDoesNotKeepANestedLoopBusy) {
  Send();
  int rounds = 0;
  QTimer::singleShot(0, qApp, [&] {
    bool closed = false;  // the loop stands for a message box
    QTimer::singleShot(milliseconds(30), qApp, [&closed] { closed = true; });
    while (!closed) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
      ++rounds;
    }
  });
  while (rounds == 0) pump.Rest();
  EXPECT_LT(rounds, 20);
}

TEST_F(Pump, YieldLooksForEventsNowAndThen) {
  int looks = 0;
  QTimer everyLook;
  everyLook.callOnTimeout([&looks] { ++looks; });
  everyLook.start(0);
  const auto start = steady_clock::now();
  for (int character = 0; character < 24000 || looks == 0; ++character) pump.Yield();
  EXPECT_LE(looks, (steady_clock::now() - start) / milliseconds(1) + 1);
}

}  // namespace
}  // namespace ox::test
