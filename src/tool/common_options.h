// Options that several commands have.
#pragma once

#include <string>
#include <vector>

#include "command_line/new_option.h"
namespace ox::tool {

/// --json.
NewOption TakeJson(CLI::App& app, bool& json);

/// Station tables; the caller says how many.
NewOption TakeTables(CLI::App& app, std::vector<std::string>& paths);

/// What is wrong with the name of a file, for the option that takes it: that a script's variable was empty.
std::string FileNameFault(const std::string& path);

/// The file that is read, the one word without an option.
NewOption TakeFile(CLI::App& app, std::string& path, const std::string& help);

/// -o, --output: the file that is written; must be given.
NewOption TakeOutput(CLI::App& app, std::string& path);

}  // namespace ox::tool
