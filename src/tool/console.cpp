// The form in which oxtool speaks.
#include "tool/console.h"

#include <ostream>

namespace ox::tool {

void Console::Say(std::string_view text) const {
  messages << "oxtool: " << text << std::endl;
}

ExitStatus Console::Fail(std::string_view text) const {
  messages << (ColoursOnMessages() ? "\033[31moxtool:\033[0m " : "oxtool: ") << text << std::endl;
  return ExitStatus::kFailed;
}

ExitStatus Console::WrongUse(const std::string& text) const {
  Fail(text + " (siehe oxtool --help)");
  return ExitStatus::kWrongUse;
}

}  // namespace ox::tool
