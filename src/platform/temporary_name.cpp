// Names of temporary files, made and read.
#include "platform/temporary_name.h"

#include <charconv>
#include <limits>

namespace ox {
namespace {

constexpr std::string_view kPrefix = ".ox-";
constexpr std::string_view kSuffix = ".tmp";
constexpr char kSeparator = '-';
constexpr std::int64_t kMostProcess = std::numeric_limits<std::uint32_t>::max();

/// Takes a number off the front of a text; -1 when there is none.
std::int64_t TakeNumber(std::string_view& text) {
  std::int64_t number = -1;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return error == std::errc() ? number : -1;
}

}  // namespace

std::string TemporaryName(std::uint32_t process, int number) {
  return std::string(kPrefix) + std::to_string(process) + kSeparator + std::to_string(number) +
         std::string(kSuffix);
}

std::uint32_t MakerOf(std::string_view name) {
  if (!name.starts_with(kPrefix)) return 0;
  name.remove_prefix(kPrefix.size());
  const std::int64_t maker = TakeNumber(name);
  if (maker <= 0 || maker > kMostProcess || !name.starts_with(kSeparator)) return 0;
  name.remove_prefix(1);
  return TakeNumber(name) >= 0 && name == kSuffix ? static_cast<std::uint32_t>(maker) : 0;
}

}  // namespace ox
