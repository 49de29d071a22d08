// The commands of oxtool. Each has a file of its own, NAME_command.cpp, which defines it.
#pragma once

#include <functional>
#include <span>

#include "command_line/new_option.h"
#include "tool/console.h"

namespace ox::tool {

/// What a command does once its options are read.
using Action = std::function<ExitStatus(Console&)>;

struct Command {
  const char* name;
  const char* purpose;  ///< for the help; German, begins in lower case
  /// Adds the command's options to its part of the command line, and returns what it does. The options are
  /// read into places that the action owns as well.
  Action (*define)(CLI::App& app);
};

/// All commands in the order in which the help shows them.
std::span<const Command> Commands();

Action DefineCheck(CLI::App& app);
Action DefineImage(CLI::App& app);
Action DefineLog(CLI::App& app);
Action DefinePack(CLI::App& app);
Action DefineProgram(CLI::App& app);
Action DefineTables(CLI::App& app);
Action DefineUnpack(CLI::App& app);
Action DefineIdentify(CLI::App& app);
Action DefinePoll(CLI::App& app);
Action DefineUpdateProgram(CLI::App& app);
Action DefineUpdateTables(CLI::App& app);
Action DefineWatch(CLI::App& app);

}  // namespace ox::tool
