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

const std::string kOldSoftware =
    "Abbruch: Geräte mit SW-Stand vor 3.0 können so nicht programmiert werden!" + kAskTheMaker;
const std::string kUnusable = "\r\nWarnung: Orvanexe nicht lauffähig! Bitte Werkstatt aufsuchen!";

struct Step {
  char letter;  // of the request to the loader, or '@' for the way into it
  double seconds = 1;
  std::string message = {};    // that a bad reply leads to; none: the update goes on to its success
  bool refusalPasses = false;  // "N" is as good as "A"
};

/// Of the tables and of the programs of generations II and III.
const std::vector<Step> kSteps[] = {
    {
        {'V', 1, std::string(kConnectionMessage)},
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
        {'V', 1, ProgramUpdateConnectionMessage()},
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

/// What is asked one after the other, with the marks of the status line in between.
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
    {"KindA", kTables, DeviceOf(2, "a"), Trace(">>@>Wa>2", 32, ">PP", "WLX"), 7, 131},
    {"KindB", kTables, DeviceOf(3, "bc"), Trace(">>@>Wab>2", 32, ">PP", "WLX"), 64, 1031},
    {"KindC", kTables, DeviceOf(3, "c", true), Trace(">Vabc>2", 32, ">PP", "WLX"), 64, 1031},
    {"Program2", kProgram2, DeviceOf(2, "a"), Trace(">@>Va>0>1P", 31, ">PPPP", ">PPPVLX"), 13, 523},
    {"Loader2", kProgram2, DeviceOf(2, "a", true), Trace(">V>Va>0>1P", 31, ">PPPP", ">PPPVLX"), 64, 523},
    {"Program3", kProgram3, DeviceOf(3, "bc"), Trace("@c", 32, ">PPPPPPPP", "VLX"), 33, 1031},
};

void PrintTo(const Procedure& procedure, std::ostream* out) {
  *out << procedure.name;
}

/// While the clock falls back to 0 a reply is awaited without end, but the way into the loader not at all.
constexpr std::string_view kOverMidnight = "over midnight";

const struct Break {
  std::string_view name;
  sim::ReplyFault fault;
  bool harmless = false;
} kBreaks[] = {
    {"request lost", {.kind = Kind::Silence, .requestLost = true}},
    {"end of the reply lost", {.kind = Kind::LastCharacterLost}},
    {"refused", {.kind = Kind::Replaced, .text = "N", .requestLost = true}},
    {"another character", {.kind = Kind::Replaced, .text = "\xC1"}},
    {"twice", {.kind = Kind::Doubled}},
    {"noise before", {.kind = Kind::NoiseBefore, .text = "\xFF"}},
    {"behind its time-out", {.kind = Kind::Late, .delay = 0.1}},
    {kOverMidnight, {.kind = Kind::Late}, true},
    {"just in time", {.kind = Kind::Late, .delay = -0.1}, true},
    {"in pieces", {.kind = Kind::Split, .delay = 0.1}, true},
};

class Sweep : public testing::TestWithParam<Procedure> {
 protected:
  Sweep() { rig_.Load(); }

  /// Generation III is asked in its dialogue first, which a device that was left in its loader has not.
  void ExpectRecovery() {
    constexpr double kPause = 40;  // seconds; the latest reply has come, any frame is forgotten
    rig_.host.ports.Mend();
    rig_.device->Faults().Clear();
    rig_.device->Faults().Observe(nullptr);
    rig_.host.windows.Pass(kPause);
    if (rig_.update == kProgram3 && rig_.device->LoaderRunning()) return;
    EXPECT_EQ(rig_.Start(), Strings{rig_.success});
    EXPECT_FALSE(rig_.device->LoaderRunning());
    if (rig_.update != kTables) return;
    EXPECT_EQ(rig_.device->Stations().offices.size(), 3U);
    EXPECT_EQ(rig_.window->Go.Text(), "");
  }

  /// Breaks the reply `index` of the loader, which belongs to the step. Where nothing else should come of it,
  /// the user wants to close the window at that moment.
  void BreakReply(const Step& step, Stage stage, int index, std::ptrdiff_t marks, const Break& how) {
    const bool harmless =
        how.harmless && (how.name != kOverMidnight || stage != Stage::UpdateAcknowledgement);
    rig_.Connect(GetParam().device);
    rig_.device->Faults().Observe([&, seen = 0](const sim::ReplyOrigin& origin) mutable {
      if (origin.stage == Stage::DialogueWakeUp || origin.stage == Stage::DialogueReply) return;
      if (seen++ != index) return;
      EXPECT_TRUE(origin.stage == stage && (stage != Stage::LoaderReply || origin.letter == step.letter));
      sim::ReplyFault fault = how.fault;
      if (fault.kind == Kind::Late) fault.delay += stage == Stage::LoaderWakeUp ? 1 : step.seconds;
      if (how.name == kOverMidnight) {
        rig_.host.clock.StartAt(23, 59, 59.9 - rig_.host.clock.Elapsed());
        fault.delay = stage == Stage::UpdateAcknowledgement ? 2 : 40;
      }
      rig_.device->Faults().Add(fault);
      if (!harmless) return;
      rig_.host.windows.In(0, [this] { rig_.leave.Click(); });
      rig_.host.windows.In(0, [this] { rig_.window->RequestClose(); });
    });
    const bool passes = harmless || step.message.empty() ||
                        (step.refusalPasses && stage == Stage::LoaderReply && how.fault.text == "N");
    const std::string before = rig_.update == kProgram3 ? rig_.window->Go.Text() : "";
    EXPECT_EQ(rig_.Start(), Strings{passes ? rig_.success : step.message});
    if (passes) marks = std::ranges::count(GetParam().trace, '>');
    EXPECT_EQ(rig_.status, before + std::string(static_cast<std::size_t>(marks), '>'));
    EXPECT_EQ(rig_.window->IsOpen(), !harmless);
    if (!harmless) return;
    rig_.host.windows.OpenMain(*rig_.window);
    rig_.Load();
  }

  UpdateRig rig_{GetParam().update};
};

TEST_P(Sweep, EveryReplyBroken) {
  const auto& [name, update, device, trace, blockStride, cutStride] = GetParam();
  auto next = kSteps[update].begin();
  Step step{};
  int index = 0, block = 0;
  for (auto at = trace.begin(); at != trace.end(); ++at) {
    if (*at == '>') continue;
    if (*at != 'P' || step.letter != 'P') {
      next = std::ranges::find(next, kSteps[update].end(), *at, &Step::letter);
      step = *next++;
    }
    // The device takes a later query as well.
    if (*at >= 'a' && device.loaderKinds->back() > *at) step.message.clear();
    const bool passedOver = *at == 'P' && block++ % blockStride != 0;
    for (const Stage stage : {Stage::UpdateAcknowledgement, Stage::LoaderWakeUp, Stage::LoaderReply}) {
      if ((stage == Stage::UpdateAcknowledgement) != (*at == '@')) continue;
      for (const Break& how : kBreaks) {
        // The simulated device keeps everything back behind a late reply, and the one to "X" is never heard.
        const bool late = how.fault.kind == Kind::Late && how.fault.delay >= 0;
        if (passedOver || (late && step.message.empty())) continue;
        BreakReply(step, stage, index, std::count(trace.begin(), at, '>'), how);
        ExpectRecovery();
        ASSERT_FALSE(HasFailure()) << how.name << ", reply " << index << " at " << *at;
      }
      ++index;
    }
  }
}

TEST_P(Sweep, LineCutAfterEveryCharacter) {
  constexpr std::size_t kCutEach = 80;  // until the first block has begun
  rig_.Connect(GetParam().device);
  ExpectRecovery();
  const std::size_t end = rig_.host.ports.Sent().size();
  for (std::size_t cut = 0; cut < end; cut += cut < kCutEach ? 1 : GetParam().cutStride) {
    rig_.Connect(GetParam().device);
    rig_.host.ports.BreakAfterSending(cut);
    const Strings said = rig_.Start();
    // A port that goes during the connection test is that test's affair; the update ends all the same.
    EXPECT_EQ(said.empty() ? "" : said.front(), "COM2: lässt sich nicht öffnen!");
    EXPECT_EQ(std::ranges::count(said, rig_.success), 0);
    EXPECT_EQ(rig_.host.ports.Sent().size(), cut);
    ExpectRecovery();
    ASSERT_FALSE(HasFailure()) << "cut after " << cut << " characters";
  }
}

INSTANTIATE_TEST_SUITE_P(Of, Sweep, testing::ValuesIn(kProcedures), testing::PrintToStringParamName());

}  // namespace
}  // namespace ox::test
