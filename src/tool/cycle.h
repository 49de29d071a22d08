// Commands that ask a device again and again.
#pragma once

#include <functional>

#include "command_line/new_option.h"
#include "tool/console.h"

namespace ox::tool {

/// How often: --every and --count.
struct CycleOptions {
  int seconds = 0;  ///< from the beginning of one turn to that of the next; 0: not given
  int count = 0;    ///< turns; 0: not given
};

void DefineCycleOptions(CLI::App& app, CycleOptions& options);

/// How a turn went.
enum class Turn { kWell, kFailed, kLast };

/// Takes turns until the count is reached, a turn is the last, the output breaks or somebody wants the
/// program to end, which lets the turn under way end first. `seconds` and `count` hold where an option is not
/// given; a count of 0 stands for no end. kFailed when a turn failed. A turn that takes longer than the time
/// between two is followed by the next at once.
ExitStatus TakeTurns(Console& console, const CycleOptions& options, int seconds, int count,
                     const std::function<Turn()>& turn);

}  // namespace ox::tool
