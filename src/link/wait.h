// The one loop that waits, and the rules by which a wait ends.
//
// All rules compare in single precision, on a clock that falls back to 0 at midnight. What follows from that
// is told with each of them.
#pragma once

#include <functional>
#include <variant>

#include "platform/clock.h"
#include "platform/machine.h"

namespace ox {

/// Ends 1.0 s after its start, but not while the clock stands below `seconds`. A wait that midnight overtakes
/// ends only with what it waits for; in the first seconds of a day none ends by time.
struct FixedSecond {
  int seconds;
};

/// Ends `seconds` after its start or after the last character, but not while the clock stands below
/// `seconds`. Midnight as with FixedSecond.
struct SilenceOf {
  int seconds;
};

/// Ends when the clock is `length` away from `start`, before or behind: midnight ends it. Several waits may
/// share a start.
struct Difference {
  Seconds start;
  Seconds length;
};

/// Ends when the clock is later than `seconds` after its start. A wait that midnight overtakes ends only with
/// what it waits for.
struct Until {
  int seconds;
};

using EndRule = std::variant<FixedSecond, SilenceOf, Difference, Until>;

/// What was found in one turn of a wait.
enum class Found {
  kNothing,
  kCharacter,   // a character, and nothing is left to look at
  kMoreInHand,  // a character, and there are more: the next turn does not rest
  kAll,         // what was waited for: the wait ends
};

/// Gives the host its turn and then looks, again and again; true as soon as `look` has found all, false when
/// the rule ends the wait. When characters are in hand from before, the first turn does not rest either. What
/// `look` throws ends the wait.
bool Wait(Machine& machine, const EndRule& rule, const std::function<Found()>& look, bool inHand = false);

/// Waits until the rule says so, or until `stop` is set, as by a click in one of the turns.
void Pause(Machine& machine, const EndRule& rule, const bool& stop);

}  // namespace ox
