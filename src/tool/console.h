// What a command of oxtool works with and answers.
#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

#include "platform/machine.h"
#include "platform/terminals.h"

namespace ox::tool {

/// With what oxtool ends.
enum class ExitStatus : std::uint8_t {
  kFine = 0,
  kFailed = 1,    ///< faults were found, or the command could not do what it should
  kWrongUse = 2,  ///< the command line is not to be understood
};

/// What commands that use a device ask of their host beside the machine.
struct ConsoleHost {
  /// The machine's serial ports made from now on are this device file, whatever their numbers.
  std::function<void(const std::string& path)> useDevice;
  /// From now on a request from outside that the program end (Ctrl+C) does not end it at once: it sets this
  /// flag in a turn of the event loop.
  std::function<const bool&()> holdEndRequests;
};

/// The host and the three streams. All texts are UTF-8.
struct Console {
  Machine& machine;
  std::istream& input;
  std::ostream& output;    ///< what a command was asked for, and nothing else
  std::ostream& messages;  ///< all that is said besides: failures, questions, progress
  Terminals terminals = {};
  ConsoleHost host = {};

  /// Says a line on the message stream, behind the program's name.
  void Say(std::string_view text) const;

  /// Says why a command ends without success; kFailed.
  ExitStatus Fail(std::string_view text) const;

  /// Says what is wrong with the command line; kWrongUse.
  ExitStatus WrongUse(const std::string& text) const;

  bool ColoursOnOutput() const { return terminals.output && terminals.colours; }
  bool ColoursOnMessages() const { return terminals.messages && terminals.colours; }
};

}  // namespace ox::tool
