// The options of a command line, without the parser's own header: reading that costs a compiler seconds in
// every source.
#pragma once

#include <functional>
#include <string>

namespace CLI {  // NOLINT(readability-identifier-naming): the parser gives the name
class App;
class Option;
}  // namespace CLI

namespace ox {

/// What is wrong with a word that an option takes, UTF-8; empty when it is right.
using OptionCheck = std::function<std::string(const std::string& word)>;

/// An option that a program or one of its commands has been given, for what else is to be said of it. A copy
/// stands for the same option, which lives as long as its command.
class NewOption {
 public:
  explicit NewOption(CLI::Option& option) : option_(&option) {}

  /// The name of its value in the help.
  NewOption Takes(const std::string& value) const;
  /// A word is refused with what the check says.
  NewOption Checked(const OptionCheck& check) const;
  NewOption Required() const;
  /// It takes so many words.
  NewOption Words(int least, int most) const;
  /// It does not go together with the other one.
  NewOption Excludes(const NewOption& other) const;

 private:
  CLI::Option* option_;
};

/// An option without a value. `names` as "-y,--yes"; `given`, which outlives the reading, tells whether it
/// was there.
NewOption AddFlag(CLI::App& app, const std::string& names, bool& given, const std::string& help);

/// An option with a value that is read into `value`, which outlives the reading; a name without dashes is
/// that of words without an option. For std::string, int, std::vector<std::string> and
/// std::optional<std::uint64_t>.
template <typename Value>
NewOption AddOption(CLI::App& app, const std::string& names, Value& value, const std::string& help);

}  // namespace ox
