// To UTF-16 and back.
#include "platform/win32/wide_text.h"

#include <limits>

#include "platform/win32/windows_api.h"

namespace ox {
namespace {

constexpr std::size_t kLongest = std::numeric_limits<int>::max();

}  // namespace

std::optional<std::wstring> Wide(std::string_view text) {
  if (text.empty()) return std::wstring();
  if (text.size() > kLongest) return std::nullopt;
  const int size = static_cast<int>(text.size());
  const int length = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), size, nullptr, 0);
  if (length <= 0) return std::nullopt;
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), size, wide.data(), length);
  return wide;
}

std::optional<std::string> Narrow(std::wstring_view text) {
  if (text.empty()) return std::string();
  if (text.size() > kLongest) return std::nullopt;
  const int length = static_cast<int>(text.size());
  const int size =
      WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, text.data(), length, nullptr, 0, nullptr, nullptr);
  if (size <= 0) return std::nullopt;
  std::string narrow(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, text.data(), length, narrow.data(), size, nullptr,
                      nullptr);
  return narrow;
}

}  // namespace ox
