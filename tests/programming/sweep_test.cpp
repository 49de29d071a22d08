// The three update procedures, whole and broken wherever they can break, one break per attempt.
#include "app/messages.h"
#include "programming/update_rig.h"

namespace ox::test {
namespace {

using Kind = sim::ReplyFault::Kind;
using Stage = sim::ReplyStage;

std::string Wrong(int number) {
  return "Abbruch der Programmierung(" + std::to_string(number) + "): OX antwortet nicht oder falsch!";
}

const std::string kNoTables(kConnectionMessage);
const std::string kNoProgram = ProgramUpdateConnectionMessage();
const std::string kOldSoftware =
    "Abbruch: Geräte mit SW-Stand vor 3.0 können so nicht programmiert werden!" + kAskTheMaker;
const std::string kPortMessage = "COM2: lässt sich nicht öffnen!";
const std::string kUnusable = "\r\nWarnung: Orvanexe nicht lauffähig! Bitte Werkstatt aufsuchen!";

struct Step {
  char letter;  // of the request to the loader, or '@' for the way into it
  double seconds;
  std::string message = {};    // that a bad reply leads to; none: the update goes on to its success
  bool refusalPasses = false;  // "N" is as good as "A"
};

/// Of the tables and of the programs of generations II and III.
const std::vector<Step> kSteps[] = {
    {
        {'V', 1, kNoTables},
        {'@', 5, Wrong(1)},
        {'W', 1, Wrong(2), true},
        {'a', 1, kOldSoftware},
        {'b', 1, kOldSoftware},
        {'c', 1, kOldSoftware},
        {'2', 30, Wrong(3)},
        {'P', 3, Wrong(4)},
        {'W', 1, "Abbruch der Programmierung(5): Checksummenfehler!"},
        {'L', 3},
        {'X', 1},
    },
    {
        {'V', 1, kNoProgram},
        {'@', 5, Wrong(11)},
        {'V', 1, Wrong(12), true},
        {'a', 1, kGeneration1},
        {'0', 30, Wrong(13)},
        {'1', 30, Wrong(14)},
        {'P', 5, Wrong(15) + kUnusable},
        {'V', 1, Wrong(16)},
        {'L', 3},
        {'X', 1},
    },
    {{'@', 5, Wrong(11)}, {'c', 1, Wrong(91)}, {'P', 10, Wrong(15)}, {'V', 1, Wrong(16)}, {'L', 3}, {'X', 1}},
};

/// What is asked, with the marks of the status line in between.
std::string Trace(std::string trace, int times, const std::string& blocks, const std::string& last) {
  while (times-- > 0) trace += blocks;
  return trace + last;
}

struct Procedure {
  const char* name;
  Update update;
  sim::DeviceOptions device;
  std::string trace;
  int blockStride;        // of the blocks that are broken
  std::size_t cutStride;  // of the line's cuts behind the first block's begin
} const kProcedures[] = {
    {"KindA", kTables, DeviceOf(2, "a"), Trace(">>@>Wa>2", 32, ">PP", "WLX"), 3, 61},
    {"KindB", kTables, DeviceOf(3, "bc"), Trace(">>@>Wab>2", 32, ">PP", "WLX"), 64, 1031},
    {"KindC", kTables, DeviceOf(3, "c", true), Trace(">Vabc>2", 32, ">PP", "WLX"), 64, 1031},
    {"Program2", kProgram2, DeviceOf(2, "a"), Trace(">@>Va>0>1P", 31, ">PPPP", ">PPPVLX"), 9, 523},
    {"Loader2", kProgram2, DeviceOf(2, "a", true), Trace(">V>Va>0>1P", 31, ">PPPP", ">PPPVLX"), 64, 131},
    {"Program3", kProgram3, DeviceOf(3, "bc"), Trace("@c", 32, ">PPPPPPPP", "VLX"), 17, 523},
};

void PrintTo(const Procedure& procedure, std::ostream* out) {
  *out << procedure.name;
}

enum Effect { kBad, kTooLate, kRefusal, kHarmless, kPortGone, kCloseWish };

const struct Break {
  const char* name;
  Effect effect;
  sim::ReplyFault fault = {};
} kBreaks[] = {
    {"request lost", kBad, {.kind = Kind::Silence, .requestLost = true}},
    {"end of the reply lost", kBad, {.kind = Kind::LastCharacterLost}},
    {"too late", kTooLate, {.kind = Kind::Late, .delay = 0.1}},  // than the time-out
    {"refused", kRefusal, {.kind = Kind::Replaced, .text = "N", .requestLost = true}},
    {"another character", kBad, {.kind = Kind::Replaced, .text = "\xC1"}},
    {"twice", kBad, {.kind = Kind::Doubled}},
    {"noise before", kBad, {.kind = Kind::NoiseBefore, .text = "\xFF"}},
    {"just in time", kHarmless, {.kind = Kind::Late, .delay = -0.1}},
    {"in pieces", kHarmless, {.kind = Kind::Split, .delay = 0.1}},
    {"port gone", kPortGone, {.kind = Kind::Split}},
    {"close wish", kCloseWish, {.kind = Kind::Split}},
};

class Sweep : public testing::TestWithParam<Procedure> {
 protected:
  Sweep() {
    rig_.Load();
    before_ = rig_.update == kProgram3 ? rig_.window->Go.Text() : "";  // the marks grow behind it
    rig_.Connect(device_);
  }

  void ExpectWholeUpdate() { EXPECT_EQ(rig_.Start(), Strings{rig_.success}); }

  /// Generation III is asked in its dialogue first, which a device that was left in its loader has not.
  void ExpectRecovery() {
    constexpr double kPause = 40;  // seconds; the latest reply has come, any frame is forgotten
    rig_.host.ports.Mend();
    rig_.device->Faults().Clear();
    rig_.device->Faults().Observe(nullptr);
    rig_.host.windows.Pass(kPause);
    if (rig_.update != kProgram3 || !rig_.device->LoaderRunning()) ExpectWholeUpdate();
    rig_.Connect(device_);
    rig_.window->Go.SetText(before_);
  }

  /// Breaks the reply `which` to the step, before which the status line shows so many marks.
  void BreakReply(const Step& step, std::size_t marks, const sim::ReplySelection& which, const Break& how) {
    sim::ReplyFault fault = how.fault;
    fault.which = which;
    if (fault.kind == Kind::Late) fault.delay += which.stage == Stage::LoaderWakeUp ? 1 : step.seconds;
    rig_.device->Faults().Add(fault);
    rig_.device->Faults().Observe([&, seen = 0](const sim::ReplyOrigin& origin) mutable {
      if (origin.stage != which.stage || origin.letter != which.letter || seen++ != which.nth) return;
      if (how.effect == kPortGone) rig_.host.ports.Break();
      if (how.effect == kCloseWish) {
        rig_.host.windows.In(0, [this] { rig_.leave.Click(); });
        rig_.host.windows.In(0, [this] { rig_.window->RequestClose(); });
      }
    });
    const bool passes = step.message.empty() || how.effect == kHarmless || how.effect == kCloseWish ||
                        (how.effect == kRefusal && step.refusalPasses && which.stage == Stage::LoaderReply);
    const std::string& expected = how.effect == kPortGone ? kPortMessage
                                  : passes                ? rig_.success
                                                          : step.message;
    EXPECT_EQ(rig_.Start(), Strings{expected});
    if (expected != rig_.success) {
      EXPECT_EQ(rig_.status, before_ + std::string(marks, '>'));
    }
    EXPECT_EQ(rig_.window->IsOpen(), how.effect != kCloseWish);
    if (rig_.window->IsOpen()) return;
    rig_.host.windows.OpenMain(*rig_.window);
    rig_.Load();
  }

  UpdateRig rig_{GetParam().update};
  const sim::DeviceOptions device_ = GetParam().device;
  std::string before_;
};

TEST_P(Sweep, WholeUpdate) {
  std::string trace, marks;
  double lastSteps = 0;
  rig_.device->Faults().Add({.which = {.letter = 'L'}, .kind = Kind::Silence});
  rig_.device->Faults().Observe([&](const sim::ReplyOrigin& origin) {
    if (origin.stage != Stage::UpdateAcknowledgement && origin.stage != Stage::LoaderReply) return;
    const std::string shown = rig_.window->Go.Text().substr(before_.size());
    trace += shown.substr(marks.size()) + (origin.letter == '\0' ? '@' : origin.letter);
    marks = shown;
    if (origin.letter == 'L') lastSteps = rig_.host.clock.Elapsed();
  });
  ExpectWholeUpdate();
  EXPECT_EQ(trace, GetParam().trace);
  // The silent "L", and "X", whose reply nobody hears: the device has left its loader.
  EXPECT_NEAR(rig_.saidAt - lastSteps, 3 + 1, 0.1);
  EXPECT_EQ(rig_.host.windows.Shown().back() == "Verbindungstest", !device_.startInLoader);
  EXPECT_FALSE(rig_.device->LoaderRunning());
  EXPECT_EQ(rig_.window->Go.Text(), rig_.update == kTables ? "" : before_ + marks);
  if (rig_.update != kTables) return;
  ASSERT_EQ(rig_.device->Stations().offices.size(), 3U);
  EXPECT_EQ(rig_.device->Stations().points[0].number, "10100100");
  EXPECT_EQ(rig_.device->Stations().points[0].parameters, (Strings{"0005", "0004", "0014", "0013"}));
}

TEST_P(Sweep, EveryReplyBroken) {
  const std::vector<Step>& steps = kSteps[rig_.update];
  auto next = steps.begin();
  Step step{};
  std::size_t marks = 0;
  std::map<char, int> seen;
  for (const char letter : GetParam().trace) {
    if (letter == '>') {
      ++marks;
      continue;
    }
    if (step.letter != 'P' || letter != 'P') {
      next = std::ranges::find(next, steps.end(), letter, &Step::letter);
      step = *next++;
    }
    // The device takes a later query as well.
    if (letter >= 'a' && device_.loaderKinds->back() > letter) step.message.clear();
    const int nth = seen[letter]++;
    std::vector<sim::ReplySelection> replies{{Stage::LoaderReply, letter, nth}};
    if (letter == '@') {
      replies = {{Stage::UpdateAcknowledgement, '\0'}};
    } else {
      replies.push_back({Stage::LoaderWakeUp, '\0', seen['S']++});
    }
    if (letter == 'P' && nth % GetParam().blockStride != 0) continue;
    for (const auto& which : replies) {
      for (const Break& how : kBreaks) {
        // The simulated device would keep the replies to the steps behind it back.
        if (how.effect == kTooLate && step.message.empty()) continue;
        BreakReply(step, marks, which, how);
        ExpectRecovery();
        ASSERT_FALSE(HasFailure()) << how.name << " at " << letter << nth;
      }
    }
  }
}

TEST_P(Sweep, LineCutAfterEveryCharacter) {
  constexpr std::size_t kCutEach = 80;  // until the first block has begun
  ExpectWholeUpdate();
  const std::size_t end = rig_.host.ports.Sent().size();
  for (std::size_t cut = 0; cut < end; cut += cut < kCutEach ? 1 : GetParam().cutStride) {
    rig_.Connect(device_);
    rig_.host.ports.BreakAfterSending(cut);
    const Strings said = rig_.Start();
    // A port that goes during the connection test is that test's affair; the update ends all the same.
    EXPECT_EQ(said.empty() ? "" : said.front(), kPortMessage);
    EXPECT_EQ(std::ranges::count(said, rig_.success), 0);
    EXPECT_EQ(rig_.host.ports.Sent().size(), cut);
    ExpectRecovery();
    ASSERT_FALSE(HasFailure()) << "cut after " << cut << " characters";
  }
}

INSTANTIATE_TEST_SUITE_P(Of, Sweep, testing::ValuesIn(kProcedures), testing::PrintToStringParamName());

}  // namespace
}  // namespace ox::test
