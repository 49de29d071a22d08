// Turn by turn, until the wait's rule ends it.
#include "link/wait.h"

#include <cmath>

namespace ox {
namespace {

/// The length of FixedSecond, whatever its argument.
constexpr Seconds kFixedLength = 1.0F;

bool GoesOn(Seconds end, int seconds, Seconds now) {
  return now < end || now < static_cast<Seconds>(seconds);
}

bool Ended(const FixedSecond& rule, Seconds start, Seconds now) {
  return !GoesOn(start + kFixedLength, rule.seconds, now);
}

bool Ended(const SilenceOf& rule, Seconds start, Seconds now) {
  return !GoesOn(start + static_cast<Seconds>(rule.seconds), rule.seconds, now);
}

bool Ended(const Difference& rule, Seconds /*start*/, Seconds now) {
  return std::abs(rule.start - now) >= rule.length;
}

bool Ended(const Until& rule, Seconds start, Seconds now) {
  return now > start + static_cast<Seconds>(rule.seconds);
}

}  // namespace

bool Wait(Machine& machine, const EndRule& rule, const std::function<Found()>& look, bool inHand) {
  const auto now = [&] { return machine.clock.SecondsSinceMidnight(); };
  const bool startsAnew = std::holds_alternative<SilenceOf>(rule);
  Seconds start = now();
  while (!std::visit([&](const auto& kind) { return Ended(kind, start, now()); }, rule)) {
    if (inHand) {
      machine.events.Yield();
    } else {
      machine.events.Rest();
    }
    const Found found = look();
    if (found == Found::kAll) return true;
    if (startsAnew && found != Found::kNothing) start = now();
    inHand = found == Found::kMoreInHand;
  }
  return false;
}

void Pause(Machine& machine, const EndRule& rule, const bool& stop) {
  if (stop) return;
  Wait(machine, rule, [&stop] { return stop ? Found::kAll : Found::kNothing; });
}

}  // namespace ox
