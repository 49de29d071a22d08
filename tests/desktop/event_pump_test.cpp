// Rest: what it waits for and what it lets through.
#include "desktop/event_pump.h"

#include <gtest/gtest.h>
#include <sys/eventfd.h>

#include <QCoreApplication>

#include "platform/posix/descriptor.h"

namespace ox::test {
namespace {

using std::chrono::milliseconds;

struct Pump : testing::Test {
  Pump() { ports.Add(line.Number()); }
  auto Resting(int rests) {
    const auto start = std::chrono::steady_clock::now();
    while (rests-- > 0) pump.Rest();
    return std::chrono::steady_clock::now() - start;
  }

  Descriptor line{eventfd(0, EFD_NONBLOCK)};
  OpenPorts ports;
  EventPump pump{ports};
};

TEST_F(Pump, ARestWaitsForInputOfAnOpenPort) {
  eventfd_write(line.Number(), 1);
  EXPECT_LT(Resting(200), milliseconds(1000)) << "ten seconds, were each to last its full time";
  ports.Remove(line.Number());
  EXPECT_GT(Resting(2), milliseconds(10));
}

TEST_F(Pump, UnreadInputDoesNotKeepANestedLoopBusy) {
  eventfd_write(line.Number(), 1);
  int rounds = 0;
  QTimer::singleShot(0, qApp, [&] {
    bool closed = false;  // the loop stands for a message box
    QTimer::singleShot(milliseconds(30), qApp, [&closed] { closed = true; });
    while (!closed) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
      ++rounds;
    }
    pump.Rest();  // and then the outer one goes on resting
  });
  while (rounds == 0) pump.Rest();
  EXPECT_LT(rounds, 20);
}

}  // namespace
}  // namespace ox::test
