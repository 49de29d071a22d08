// The three update procedures, whole and broken wherever they can break, one break per attempt.
#include "session/messages.h"
#include "updates/update_rig.h"

namespace ox::test {
namespace {

using Kind = sim::ReplyFault::Kind;
using Stage = sim::ReplyStage;

std::string Wrong(int number) {
  return "Abbruch der Programmierung(" + std::to_string(number) + "): OX antwortet nicht oder falsch!";
}

const std::string kOldSoftware =
    "Abbruch: Geräte mit SW-Stand vor 3.0 können so nicht programmiert werden!" + kAskTheMaker;

struct Step {
  char letter;  // of the request to the loader, or '@' for the way into it
  double seconds = 1;
  std::string message = {};    // that a bad reply leads to; none: the update goes on to its success
  bool refusalPasses = false;  // "N" is as good as "A"
};

/// Of the tables and of the programs of generations II and III; what is asked behind these decides nothing.
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
    },
    {
        {'V', 1, std::string(DeviceKinds().front().program.notFound)},
        {'@', 5, Wrong(11)},
        {'V', 1, Wrong(12), true},
        {'a', 1, kGeneration1},
        {'0', 30, Wrong(13)},
        {'1', 30, Wrong(14)},
        {'P', 5, Wrong(15) + "\r\nWarnung: Orvanexe nicht lauffähig! Bitte Werkstatt aufsuchen!"},
        {'V', 1, Wrong(16)},
    },
    {{'@', 5, Wrong(11)}, {'c', 1, Wrong(91)}, {'P', 10, Wrong(15)}, {'V', 1, Wrong(16)}},
};

struct Procedure {
  const char* name;
  Update update;
  sim::DeviceOptions device;
  std::string trace;  // what is asked one after the other, with the marks of the status line in between
} kProcedures[] = {
    {"KindA", kTables, WithSoundTables(DeviceOf(2, "a")), ">>@>Wa>2" + Times(32, ">PP") + "WLX"},
    {"KindB", kTables, DeviceOf(3, "bc"), ">>@>Wab>2" + Times(32, ">PP") + "WLX"},
    {"KindC", kTables, DeviceOf(3, "c", true), ">Vabc>2" + Times(32, ">PP") + "WLX"},
    {"Program2", kProgram2, DeviceOf(2, "a"), ">@>Va>0>1P" + Times(31, ">PPPP") + ">PPPVLX"},
    {"Loader2", kProgram2, DeviceOf(2, "a", true), ">V>Va>0>1P" + Times(31, ">PPPP") + ">PPPVLX"},
    {"Program3", kProgram3, DeviceOf(3, "bc"), "@c" + Times(32, ">PPPPPPPP") + "VLX"},
};

void PrintTo(const Procedure& procedure, std::ostream* out) {
  *out << procedure.name;
}

const struct Break {
  const char* name;
  sim::ReplyFault fault;  // delays count from the time-out on
  bool harmless = false, cablePulled = false, overMidnight = false;
  bool whileAwaited = false;  // the cable, when the request has gone out
} kBreaks[] = {
    {"request lost", {.kind = Kind::kSilence, .requestLost = true}},
    {"refused", {.kind = Kind::kReplaced, .text = "N", .requestLost = true}},
    {"end of the reply lost", {.kind = Kind::kLastCharacterLost}},
    {"twice", {.kind = Kind::kDoubled}},
    {"behind its time-out", {.kind = Kind::kLate, .delay = 0.1}},
    {"just in time", {.kind = Kind::kLate, .delay = -0.1}, true},
    {"in pieces", {.kind = Kind::kSplit, .delay = 0.1}, true},
    {"cable pulled", {}, false, true},
    {"cable pulled while the reply is awaited", {.kind = Kind::kSilence}, false, true, false, true},
    // While the clock falls back to 0 a reply is awaited without end, but the way into the loader not at all.
    {"over midnight", {.kind = Kind::kLate, .delay = 9}, true, false, true},
};

struct Sweep : testing::TestWithParam<Procedure> {
  Sweep() { rig_.Load(); }

  /// Of an update during which the user wants to close the window.
  std::string TraceOfAnUpdate() {
    std::string trace;
    rig_.Connect(GetParam().device);
    rig_.device->Faults().Observe([&](const sim::ReplyOrigin& origin) {
      if (origin.stage != Stage::kUpdateAcknowledgement && origin.stage != Stage::kLoaderReply) return;
      EXPECT_EQ(rig_.go.Text().starts_with('>'), rig_.update != kProgram3) << rig_.go.Text();
      const auto marks = [](const std::string& text) { return std::ranges::count(text, '>'); };
      trace += Times(marks(rig_.go.Text()) - marks(trace), ">");
      trace += origin.stage == Stage::kLoaderReply ? origin.letter : '@';
      rig_.leave.Click();
      rig_.window->RequestClose();
    });
    EXPECT_EQ(rig_.Start(), Strings{rig_.success});
    EXPECT_FALSE(rig_.device->LoaderRunning());
    EXPECT_TRUE(rig_.update != kTables || rig_.device->Stations().offices.size() == 3);
    return trace;
  }

  /// Breaks, in a new attempt, the reply of this stage that comes behind so many others.
  void BreakReply(const Step& step, Stage stage, int others, const Break& how) {
    rig_.host.ports.Mend();
    rig_.Connect(GetParam().device);
    std::vector<double> brokenAndAfter;  // when the reply is broken, and whenever the device speaks behind it
    rig_.device->Faults().Observe([&, left = others](const sim::ReplyOrigin& origin) mutable {
      if (left < 0) brokenAndAfter.push_back(rig_.host.clock.Elapsed());
      if (origin.stage != stage || left-- != 0) return;
      brokenAndAfter.push_back(rig_.host.clock.Elapsed());
      sim::ReplyFault fault = how.fault;
      if (fault.kind == Kind::kLate) fault.delay += stage == Stage::kLoaderWakeUp ? 1 : step.seconds;
      rig_.device->Faults().Add(fault);
      if (how.whileAwaited) {
        rig_.host.windows.In(0, [this] { rig_.host.ports.Break(); });
      } else if (how.cablePulled) {
        rig_.host.ports.Break();
      }
      if (how.overMidnight) rig_.host.clock.StartAt(23, 59, 59.9 - rig_.host.clock.Elapsed());
    });
    const Strings said = rig_.Start();
    brokenAndAfter.push_back(rig_.host.clock.Elapsed());
    const bool searches =
        others == 0 && step.letter == 'V';  // behind the silence, for a device in its dialogue
    if (how.fault.kind == Kind::kSilence && !how.cablePulled && !searches) {
      EXPECT_NEAR(brokenAndAfter[1] - brokenAndAfter[0], stage == Stage::kLoaderWakeUp ? 1 : step.seconds,
                  0.1);
    }
    // The port has the word before the loader is spoken to, and where the request's own message has no
    // number.
    const bool portTells = step.letter == '@' ? !how.whileAwaited
                                              : step.letter != 'L' && step.letter != 'X' &&
                                                    step.message.find('(') == std::string::npos;
    if (how.cablePulled && portTells) {
      EXPECT_EQ(said, Strings{"COM2: lässt sich nicht öffnen!"});
    } else if (step.message.empty() || (how.harmless && (!how.overMidnight || step.letter != '@')) ||
               (step.refusalPasses && stage == Stage::kLoaderReply && how.fault.text == "N")) {
      EXPECT_EQ(said, Strings{rig_.success});
    } else {
      EXPECT_EQ(said, Strings{step.message});
      EXPECT_TRUE(how.cablePulled || stage != Stage::kLoaderWakeUp ||
                  rig_.host.ports.sent.find("SN") != Bytes::npos);
      // Whoever starts again at once finds the loader ready.
      if (how.fault.text != "N" || rig_.update == kProgram3 || !rig_.device->LoaderRunning()) return;
      EXPECT_EQ(rig_.Start(), Strings{rig_.success});
    }
  }

  UpdateRig rig_{GetParam().update};
};

TEST_P(Sweep, EveryReplyBroken) {
  const auto& [name, update, device, trace] = GetParam();
  ASSERT_EQ(TraceOfAnUpdate(), trace);
  auto next = kSteps[update].begin();
  Step step{};
  int requests = 0;
  for (const char letter : trace) {
    if (letter == '>') continue;
    if (letter != 'P' || step.letter != 'P') {
      next = std::ranges::find(next, kSteps[update].end(), letter, &Step::letter);
      step = next != kSteps[update].end() ? *next++ : Step{letter, letter == 'L' ? 3.0 : 1.0};
    }
    // The device takes a later query as well.
    if (letter >= 'a' && device.loaderKinds->back() > letter) step.message.clear();
    const bool passedOver = letter == 'P' && requests % 31 != 0;
    for (const Stage stage : {Stage::kUpdateAcknowledgement, Stage::kLoaderWakeUp, Stage::kLoaderReply}) {
      if (passedOver || (stage == Stage::kUpdateAcknowledgement) != (letter == '@')) continue;
      for (const Break& how : kBreaks) {
        // The simulated device keeps everything back behind a late reply, and the one to "X" is never heard.
        if (step.message.empty() && how.fault.kind == Kind::kLate && how.fault.delay >= 0) continue;
        BreakReply(step, stage, letter == '@' ? 0 : requests, how);
        ASSERT_FALSE(HasFailure()) << how.name << ", request " << requests << ": " << letter;
      }
    }
    if (letter != '@') ++requests;
  }
}

INSTANTIATE_TEST_SUITE_P(Of, Sweep, testing::ValuesIn(kProcedures), testing::PrintToStringParamName());

}  // namespace
}  // namespace ox::test
