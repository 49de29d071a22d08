// The table update, broken wherever it can break.
#include <gtest/gtest.h>

#include "app/messages.h"
#include "programming/sweep.h"
#include "programming/table_update_rig.h"

namespace ox::test {
namespace {

const std::string kSuccess = "Tabellenupdate erfolgreich abgeschlossen!";
const std::string kUnknownKind =
    "Abbruch: Geräte mit SW-Stand vor 3.0 können so nicht programmiert werden!\r\n"
    "Bitte wenden Sie sich an den Hersteller.";

class TableSweep : public testing::Test {
 protected:
  TableSweep() { rig_.Load(kSmallTables); }

  /// Writes the tables once without a break, to know the image of this kind of device.
  Sweep Prepare(char kind) {
    rig_.Connect(DeviceOfKind(kind));
    rig_.window.TabStart.Click();
    EXPECT_EQ(rig_.host.windows.TakeMessages(), std::vector<std::string>{kSuccess});
    image_ = rig_.device->Memory().Tables();
    return Sweep(rig_.host,
                 {.window = rig_.window,
                  .start = rig_.window.TabStart,
                  .success = kSuccess,
                  .written = [this](const sim::Device& d) { return d.Memory().Tables() == image_; },
                  .afterBadReply = Expected});
  }

  static Consequence Expected(char letter, int before) {
    switch (letter) {
      case 'V':
        return {std::string(kConnectionMessage)};  // a loader does not answer the connection test
      case Sweep::kUpdateRequest:
        return {WrongAnswer(1)};
      case 'W':
        if (before == 0) return {WrongAnswer(2), /*refusalPasses=*/true};
        return {"Abbruch der Programmierung(5): Checksummenfehler!"};
      case 'a':
      case 'b':
      case 'c':
        return {.message = kUnknownKind, .mayGoOn = true};
      case '2':
        return {WrongAnswer(3)};
      case 'P':
        return {WrongAnswer(4)};
      default:
        return {kSuccess};
    }
  }

  static sim::DeviceOptions InLoader(sim::DeviceOptions options) {
    options.startInLoader = true;
    return options;
  }

  TableUpdateRig rig_;
  Bytes image_;
};

TEST_F(TableSweep, EveryReplyFromTheUpdateRequestOn) {
  Prepare('a').BreakReplies(DeviceOfKind('a'));
}

TEST_F(TableSweep, EveryReplyUpToTheLastKindQueryOfARunningLoader) {
  constexpr std::size_t kReplies = 8;  // to the wake-ups and frames of "V", "a", "b" and "c"
  Prepare('c').BreakReplies(InLoader(DeviceOfKind('c')), kReplies);
}

TEST_F(TableSweep, EveryCharacterUntilTheTablesAreErased) {
  constexpr std::size_t kCharacters = 60;
  Prepare('c').CutLine(DeviceOfKind('c'), kCharacters, 1, 1);
}

TEST_F(TableSweep, EveryCharacterOfAnUpload) {
  Prepare('a').CutLine(InLoader(DeviceOfKind('a')), Bytes::npos, 1, 61);
}

}  // namespace
}  // namespace ox::test
