// The line's own time, to the character.
#include "simulator/paced_line.h"

#include <gtest/gtest.h>

#include "simulator/output_queue.h"

namespace ox::sim {
namespace {

constexpr LineSettings kLine{1000, 'O', 7};  // one character in 10 ms
constexpr Seconds kCharacter = 0.01;
constexpr Seconds kMoment = 1e-6;

// Answers every character with two at once, and notes when each came.
class Echo : public Endpoint {
 public:
  void Receive(BytesView bytes, const LineSettings&, Seconds now) override {
    for (const char byte : bytes) {
      times.push_back(now);
      output.Add(now, Bytes(2, byte));
    }
  }
  std::optional<Seconds> NextOutput() const override { return output.Next(); }
  Bytes TakeSome(Seconds now, std::size_t most) override { return output.Take(now, most); }
  LineSettings Line() const override { return kLine; }

  std::vector<Seconds> times;
  OutputQueue output;
};

TEST(PacedLine, EveryCharacterTakesItsBits) {
  Echo echo;
  PacedLine line(echo, true);
  EXPECT_FALSE(line.NextEvent());
  line.FromPc("xy", kLine, 1);
  EXPECT_DOUBLE_EQ(*line.NextEvent(), 1 + kCharacter);
  EXPECT_EQ(line.Advance(1 + 2 * kCharacter - kMoment), "");
  EXPECT_EQ(echo.times.size(), 1U);
  EXPECT_EQ(line.Advance(1 + 2 * kCharacter + kMoment), "x");
  EXPECT_EQ(line.Advance(1 + 5 * kCharacter - kMoment), "xy");
  EXPECT_EQ(line.Advance(1 + 5 * kCharacter + kMoment), "y");
  EXPECT_FALSE(line.NextEvent());
}

TEST(PacedLine, LookingLateChangesNoTime) {
  Echo echo;
  PacedLine line(echo, true);
  line.FromPc("ab", kLine, 0);
  EXPECT_EQ(line.Advance(10), "aabb");
  EXPECT_DOUBLE_EQ(echo.times[0], kCharacter);
  EXPECT_DOUBLE_EQ(echo.times[1], 2 * kCharacter);
  line.FromPc("c", kLine, 20);
  line.FromPc("d", kLine, 20);
  line.Advance(30);
  EXPECT_DOUBLE_EQ(echo.times[3], 20 + 2 * kCharacter) << "one character after the other";
}

TEST(PacedLine, TheSpeedIsTheSendersOwn) {
  Echo echo;
  PacedLine line(echo, true);
  line.FromPc("a", {500, 'E', 7}, 0);
  EXPECT_DOUBLE_EQ(*line.NextEvent(), 2 * kCharacter);
}

TEST(PacedLine, UnpacedNothingTakesTime) {
  Echo echo;
  PacedLine line(echo, false);
  line.FromPc("abc", kLine, 3);
  EXPECT_EQ(line.Advance(3), "aabbcc");
}

}  // namespace
}  // namespace ox::sim
