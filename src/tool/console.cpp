// The form in which oxtool speaks.
#include "tool/console.h"

#include <ostream>

namespace ox::tool {

void Console::Say(std::string_view text) const {
  messages << "oxtool: " << text << std::endl;
}

ExitStatus Console::Fail(std::string_view text) const {
  const bool red = terminals.messages && terminals.colours;
  messages << (red ? "\033[31moxtool:\033[0m " : "oxtool: ") << text << std::endl;
  return ExitStatus::kFailed;
}

}  // namespace ox::tool
