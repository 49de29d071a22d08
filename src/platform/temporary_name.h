// How a host names the files that it moves into the place of others.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ox {

/// ".ox-<process>-<number>.tmp": tells which process has made the file.
std::string TemporaryName(std::uint32_t process, int number);

/// Which process has made a temporary file; 0 when the name is none of such a file.
std::uint32_t MakerOf(std::string_view name);

}  // namespace ox
