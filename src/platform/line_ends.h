// The characters that end lines and records, on the line, in files and in what is shown.
#pragma once

#include <string_view>

namespace ox {

constexpr char kCr = '\r';
constexpr char kLf = '\n';
constexpr std::string_view kCrLf = "\r\n";

}  // namespace ox
