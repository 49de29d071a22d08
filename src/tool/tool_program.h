// oxtool from its command line to its exit status.
#pragma once

#include <string>
#include <vector>

#include "tool/console.h"

namespace ox::tool {

/// Reads the arguments behind the program's name and does what they ask for.
ExitStatus RunTool(const std::vector<std::string>& arguments, Console& console);

}  // namespace ox::tool
