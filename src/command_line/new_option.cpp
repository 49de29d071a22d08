// The parser's own options behind it.
#include "command_line/new_option.h"

#include <CLI/CLI.hpp>
#include <cstdint>
#include <optional>
#include <vector>

namespace ox {

NewOption NewOption::Takes(const std::string& value) const {
  option_->type_name(value);
  return *this;
}

NewOption NewOption::Checked(const OptionCheck& check) const {
  option_->check(check);
  return *this;
}

NewOption NewOption::Required() const {
  option_->required();
  return *this;
}

NewOption NewOption::Words(int least, int most) const {
  option_->expected(least, most);
  return *this;
}

NewOption NewOption::Excludes(const NewOption& other) const {
  option_->excludes(other.option_);
  return *this;
}

NewOption AddFlag(CLI::App& app, const std::string& names, bool& given, const std::string& help) {
  return NewOption(*app.add_flag(names, given, help)->disable_flag_override());
}

template <typename Value>
NewOption AddOption(CLI::App& app, const std::string& names, Value& value, const std::string& help) {
  return NewOption(*app.add_option(names, value, help));
}
template NewOption AddOption(CLI::App&, const std::string&, std::string&, const std::string&);
template NewOption AddOption(CLI::App&, const std::string&, int&, const std::string&);
template NewOption AddOption(CLI::App&, const std::string&, std::vector<std::string>&, const std::string&);
template NewOption AddOption(CLI::App&, const std::string&, std::optional<std::uint64_t>&,
                             const std::string&);

}  // namespace ox
