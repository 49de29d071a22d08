// The program update windows: loading files, whole updates, refused devices and closing.
#include <gtest/gtest.h>

#include "link/verbindungstest.h"
#include "programming/block_frame.h"
#include "programming/program_update_rig.h"
#include "simulator/demo_files.h"
#include "simulator/sample_program.h"

namespace ox::test {
namespace {

using Strings = std::vector<std::string>;
using namespace std::string_literals;

const std::string kSuccess = "Programmupdate erfolgreich abgeschlossen!";
const std::string kLoaded = "Programmdatei wird geladen ... O.K.!";
const std::string kHint =
    "Zum Programmupdate der Orvanexe II mit SW-Stand vor 3.0\r\n"
    "muss zuvor am Gerät der Programmiermodus eingestellt werden!\r\n"
    "Hierzu ist es bei gedrückten Pfeiltasten einzuschalten.";
const std::string kNoDevice =
    "Verbindung mit Orvanexe II konnte nicht hergestellt werden.\r\n"
    "Bitte überprüfen Sie, ob die Orvanexe am eingestellten\r\n"
    "COM-Port angeschlossen und eingeschaltet ist!\r\n"
    "\r\n" +
    kHint;
const std::string kGeneration1 =
    "Abbruch: OX 1 kann so nicht programmiert werden!\r\n"
    "Bitte wenden Sie sich an den Hersteller.";
const std::string kDeviceChanged =
    "Abbruch: Gerätewechsel während der Programmierung nicht zulässig !\r\n"
    "Bitte wenden Sie sich an den Hersteller.";

/// A loaded window in front of a device, and the one attempt to update it.
struct Attempt : ProgramUpdateRig {
  using ProgramUpdateRig::ProgramUpdateRig;

  Strings Start(const std::optional<sim::DeviceOptions>& options) {
    if (!window().ProStart.Enabled()) Load();
    if (options) Connect(*options);
    window().ProStart.Click();
    EXPECT_EQ(host.ports.OpenCount(), 0);
    for (const Control* control : window().Controls()) EXPECT_TRUE(control->Enabled()) << control->Name();
    return host.windows.TakeMessages();
  }

  bool Sent(BytesView text) const { return host.ports.Sent().find(text) != Bytes::npos; }

  bool Tested() const { return std::ranges::count(host.windows.Shown(), std::string("Verbindungstest")) > 0; }
};

TEST(ProgramUpdateFiles, OnlyAGoodFileCanBeWritten) {
  for (const int generation : {2, 3}) {
    ProgramUpdateRig rig(generation);
    ProgramUpdateWindow& window = rig.window();
    Bytes good = rig.host.files.content[rig.path];
    rig.host.files.content = {
        {"/gut.p", good}, {"/kurz.p", good.substr(1)}, {"/lang.p", good + "x"}, {"/leer.p", ""}};
    good[1000] = static_cast<char>(~good[1000]);
    rig.host.files.content["/falsch.p"] = good;
    rig.host.files.content["/gesperrt.p"] = good;
    rig.host.files.unreadable = {"/gesperrt.p"};
    const auto faulty = [](const std::string& path) { return Strings{"Datei " + path + " fehlerhaft!"}; };
    const struct {
      std::string path;
      Strings messages;
    } rows[] = {{"/gut.p", {}},
                {"/kurz.p", faulty("/kurz.p")},
                {"/gut.p", {}},
                {"", {}},
                {"/lang.p", faulty("/lang.p")},
                {"/leer.p", faulty("/leer.p")},
                {"/gut.p", {}},
                {"/falsch.p", {"Checksummenfehler in Datei /falsch.p!"}},
                {"/gesperrt.p", faulty("/gesperrt.p")},
                {"/fehlt.p", faulty("/fehlt.p")},
                {"/gut.p", {}}};
    for (const auto& row : rows) {
      rig.host.windows.OnMessage([&](const std::string&) { EXPECT_FALSE(window.ChPro.Checked()); });
      rig.Choose(window.ChPro, row.path);
      const bool loaded = row.path == "/gut.p";
      EXPECT_EQ(rig.host.windows.TakeMessages(), row.messages) << row.path;
      EXPECT_EQ(window.ChPro.Checked(), loaded) << row.path;
      EXPECT_EQ(window.ProStart.Enabled(), loaded) << row.path;
      EXPECT_EQ(window.Go.Text(), loaded ? kLoaded : "") << row.path;
      if (!loaded) continue;
      window.ChPro.Click();  // the user clears the box again
      EXPECT_FALSE(window.ProStart.Enabled());
      EXPECT_EQ(window.Go.Text(), "");
    }
    window.ProStart.Click();
    EXPECT_TRUE(rig.host.ports.Openings().empty());
    EXPECT_EQ(rig.subs.chooser.FilePattern, generation == 2 ? "*.pro" : "*.pr3");
  }
}

TEST(ProgramUpdate, WritesTheProgramThatTheDeviceThenTells) {
  const struct {
    int generation;
    bool inLoader;
    Bytes version, lastBlock, pastEnd;
    std::string marks;
  } rows[] = {
      {2, false, "V4.20 22.11.2026", "P\x13\x58\0\x7F"s, "P\x13\x58\0\x80"s, std::string(4 + 32, '>')},
      {2, true, "V4.20 22.11.2026", "P\x13\x58\0\x7F"s, "P\x13\x58\0\x80"s, std::string(4 + 32, '>')},
      {3, false, "V5.10 22.11.2026", "P\x13\x58\0\xFF"s, "0\x13\x58"s, kLoaded + std::string(32, '>')}};
  for (const auto& row : rows) {
    Attempt attempt(row.generation);
    EXPECT_EQ(attempt.Start(DeviceOfGeneration(row.generation, row.inLoader)), Strings{kSuccess});
    EXPECT_TRUE(attempt.device->Memory().Program() == attempt.DemoProgram());
    EXPECT_TRUE(attempt.device->Memory().ProgramSound());
    EXPECT_FALSE(attempt.device->LoaderRunning());
    EXPECT_EQ(attempt.window().Go.Text(), row.marks);
    EXPECT_EQ(attempt.Tested(), !row.inLoader);
    EXPECT_EQ(attempt.Sent("@UPDATEREQ"), !row.inLoader);
    EXPECT_TRUE(attempt.Sent(row.lastBlock));
    EXPECT_FALSE(attempt.Sent(row.pastEnd));
    EXPECT_TRUE(attempt.window().ChPro.Checked()) << "the file stays loaded";
    RunConnectionTest(attempt.host.host, attempt.subs.settings);
    EXPECT_EQ(attempt.subs.settings.SoftwareVersion(), row.version);
    EXPECT_EQ(attempt.Start({}), Strings{kSuccess}) << "once more";
  }
}

TEST(ProgramUpdate, TakesOnlyTheDeviceItWasOpenedFor) {
  const auto accepting = [](const Bytes& kinds, int generation, bool inLoader = false) {
    sim::DeviceOptions options = DeviceOfGeneration(generation, inLoader);
    options.loaderKinds = kinds;
    return options;
  };
  const struct {
    int window;
    std::optional<sim::DeviceOptions> device;
    std::string message;
    bool inLoader;
  } rows[] = {{2, std::nullopt, kNoDevice, false},
              {3, std::nullopt, kNoDevice, false},
              {3, DeviceOfGeneration(3, true), kNoDevice, true},
              {2, DeviceOfGeneration(1), kGeneration1, false},
              {2, DeviceOfGeneration(3), kHint, false},
              {3, DeviceOfGeneration(1), kDeviceChanged, false},
              {3, DeviceOfGeneration(2), kDeviceChanged, false},
              {2, accepting("", 2), kGeneration1, true},
              {2, DeviceOfGeneration(1, true), kGeneration1, true},
              {2, accepting("a", 3, true), WrongAnswer(13), true},
              {3, accepting("b", 3), WrongAnswer(91), true}};
  for (const auto& row : rows) {
    Attempt attempt(row.window);
    EXPECT_EQ(attempt.Start(row.device), Strings{row.message});
    EXPECT_FALSE(attempt.Sent("P\x13"));
    EXPECT_EQ(attempt.device && attempt.device->LoaderRunning(), row.inLoader) << row.message;
  }
}

TEST(ProgramUpdate, GrowsItsStatusLineBeforeTheRightBlocks) {
  const struct {
    int generation, refused;
    std::size_t marks;
  } rows[] = {{2, 0, 4}, {2, 1, 5}, {2, 4, 5}, {2, 5, 6}, {3, 0, 1}, {3, 7, 1}, {3, 8, 2}};
  for (const auto& row : rows) {
    Attempt attempt(row.generation);
    attempt.Connect(DeviceOfGeneration(row.generation));
    attempt.device->Faults().Add(
        {.which = {.letter = 'P', .nth = row.refused}, .kind = sim::ReplyFault::Kind::Replaced, .text = "N"});
    EXPECT_EQ(attempt.Start({}).size(), 1U);
    const std::string before = row.generation == 2 ? "" : kLoaded;
    EXPECT_EQ(attempt.window().Go.Text(), before + std::string(row.marks, '>')) << row.refused;
  }
}

TEST(ProgramUpdate, GivesEveryReplyItsTime) {
  constexpr double kMargin = 0.1;
  const struct {
    int generation;
    char letter;
    double seconds;
  } rows[] = {{2, 'V', 1}, {2, 'a', 1}, {2, '0', 30}, {2, '1', 30},
              {2, 'P', 5}, {3, 'c', 1}, {3, 'P', 10}, {3, 'V', 1}};
  for (const auto& row : rows) {
    for (const bool late : {false, true}) {
      Attempt attempt(row.generation);
      attempt.Connect(DeviceOfGeneration(row.generation));
      attempt.device->Faults().Add({.which = {.stage = sim::ReplyStage::LoaderReply, .letter = row.letter},
                                    .kind = sim::ReplyFault::Kind::Late,
                                    .delay = row.seconds + (late ? kMargin : -kMargin)});
      EXPECT_EQ(attempt.Start({}) == Strings{kSuccess}, !late) << row.generation << row.letter;
    }
  }
}

TEST(ProgramUpdate, ReportsAMissingPort) {
  for (const int generation : {2, 3}) {
    Attempt attempt(generation);
    attempt.host.ports.Remove(1);
    const Strings messages = attempt.Start({});
    ASSERT_FALSE(messages.empty());
    EXPECT_EQ(messages.front(), "COM1: lässt sich nicht öffnen!");
    // The connection test reports the port, and the update then that it found no device.
    EXPECT_EQ(messages.size(), generation == 2 ? 1U : 2U);
    EXPECT_EQ(messages.back(), generation == 2 ? messages.front() : kNoDevice);
  }
}

// Generation III is asked in its dialogue first, which a device with half a program has not.
TEST(ProgramUpdate, AHalfWrittenProgramOfGeneration2IsWrittenByTheNextAttempt) {
  for (const int generation : {2, 3}) {
    Attempt attempt(generation);
    attempt.Load();
    attempt.Connect(DeviceOfGeneration(generation));
    attempt.device->Faults().Add({.which = {.letter = 'P', .nth = 100}});
    const std::string workshop = "\r\nWarnung: Orvanexe nicht lauffähig! Bitte Werkstatt aufsuchen!";
    EXPECT_EQ(attempt.Start({}), Strings{WrongAnswer(15) + (generation == 2 ? workshop : "")});
    attempt.device->Restart();
    EXPECT_TRUE(attempt.device->LoaderRunning());
    EXPECT_EQ(attempt.Start({}), Strings{generation == 2 ? kSuccess : kNoDevice});
    EXPECT_EQ(attempt.device->LoaderRunning(), generation == 3);
  }
}

TEST(ProgramUpdate, IsNeverCutOffByTheCloseBox) {
  for (const int generation : {2, 3}) {
    for (const double moment : {0.0, 0.5, 1.7, 2.0, 2.6, 3.4}) {
      Attempt attempt(generation);
      attempt.Load();
      attempt.Connect(DeviceOfGeneration(generation));
      attempt.device->Faults().Add(
          {.which = {.times = 1000}, .kind = sim::ReplyFault::Kind::Late, .delay = 0.01});
      const double start = attempt.host.clock.Elapsed();
      attempt.host.windows.In(moment, [&] { attempt.window().proEnd.Click(); });
      attempt.host.windows.In(moment, [&] { attempt.window().RequestClose(); });
      attempt.host.windows.OnMessage([&](const std::string&) { EXPECT_TRUE(attempt.window().IsOpen()); });
      EXPECT_EQ(attempt.Start({}), Strings{kSuccess});
      EXPECT_GT(attempt.host.clock.Elapsed() - start, moment);
      EXPECT_FALSE(attempt.window().IsOpen());
      EXPECT_TRUE(attempt.device->Memory().Program() == attempt.DemoProgram());
    }
  }
}

}  // namespace
}  // namespace ox::test
