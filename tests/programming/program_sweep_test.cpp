// Both program updates, broken wherever they can break.
#include <gtest/gtest.h>

#include "programming/program_update_rig.h"
#include "programming/sweep.h"

namespace ox::test {
namespace {

const std::string kSuccess = "Programmupdate erfolgreich abgeschlossen!";
const std::string kGeneration1 =
    "Abbruch: OX 1 kann so nicht programmiert werden!\r\nBitte wenden Sie sich an den Hersteller.";
const std::string kUnusable = "\r\nWarnung: Orvanexe nicht lauffähig! Bitte Werkstatt aufsuchen!";

/// What a bad reply to the `asked`-th of the three "V" of generation II leads to.
Consequence AfterProgramProbe(int asked) {
  if (asked == 0) return {ProgramUpdateConnectionMessage()};  // a loader does not answer the connection test
  if (asked == 1) return {WrongAnswer(12), /*refusalPasses=*/true};
  return {WrongAnswer(16)};
}

Consequence Expected2(char letter, int probe) {
  switch (letter) {
    case Sweep::kUpdateRequest:
      return {WrongAnswer(11)};
    case 'V':
      return AfterProgramProbe(probe);
    case 'a':
      return {kGeneration1};
    case '0':
      return {WrongAnswer(13)};
    case '1':
      return {WrongAnswer(14)};
    case 'P':
      return {WrongAnswer(15) + kUnusable};
    default:
      return {kSuccess};
  }
}

Consequence Expected3(char letter, int /*before*/) {
  switch (letter) {
    case Sweep::kUpdateRequest:
      return {WrongAnswer(11)};
    case 'c':
      return {WrongAnswer(91)};
    case 'P':
      return {WrongAnswer(15)};
    case 'V':
      return {WrongAnswer(16)};
    default:
      return {kSuccess};
  }
}

class ProgramSweep : public testing::Test {
 protected:
  static Sweep Prepare(ProgramUpdateRig& rig, std::function<Consequence(char, int)> expected) {
    if (!rig.window().ProStart.Enabled()) rig.Load();
    EXPECT_EQ(rig.host.windows.TakeMessages(), std::vector<std::string>{});
    return Sweep(
        rig.host,
        {.window = rig.window(),
         .start = rig.window().ProStart,
         .success = kSuccess,
         .written = [p = rig.DemoProgram()](const sim::Device& d) { return d.Memory().Program() == p; },
         .afterBadReply = std::move(expected),
         // Generation III is asked in its dialogue first, which a device with a spoiled program has not.
         .findsRunningLoader = rig.generation == 2});
  }

  ProgramUpdateRig rig2_{2};
  ProgramUpdateRig rig3_{3};
};

TEST_F(ProgramSweep, EveryReplyOfGeneration2FromTheUpdateRequestOn) {
  // The first "V" went unanswered: the device was in its dialogue.
  const auto expected = [](char letter, int before) { return Expected2(letter, before + 1); };
  Prepare(rig2_, expected).BreakReplies(DeviceOfGeneration(2), Bytes::npos, 8);
}

TEST_F(ProgramSweep, EveryReplyOfARunningLoaderOfGeneration2) {
  constexpr std::size_t kReplies =
      2 * 6;  // wake-ups and answers of "V", "V", "a", "0", "1" and the first "P"
  Prepare(rig2_, Expected2).BreakReplies(DeviceOfGeneration(2, true), kReplies);
}

TEST_F(ProgramSweep, EveryReplyOfGeneration3) {
  Prepare(rig3_, Expected3).BreakReplies(DeviceOfGeneration(3), Bytes::npos, 16);
}

TEST_F(ProgramSweep, CutsOfTheLine) {
  constexpr std::size_t kUntilTheFirstBlock = 70;
  Prepare(rig2_, Expected2).CutLine(DeviceOfGeneration(2), kUntilTheFirstBlock, 1, 1);
  Prepare(rig2_, Expected2).CutLine(DeviceOfGeneration(2, true), Bytes::npos, 131, 1);
  Prepare(rig3_, Expected3).CutLine(DeviceOfGeneration(3), kUntilTheFirstBlock, 1, 1);
  Prepare(rig3_, Expected3).CutLine(DeviceOfGeneration(3), Bytes::npos, 523, 1);
}

}  // namespace
}  // namespace ox::test
