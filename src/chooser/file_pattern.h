// File patterns as a user types them: "*.mes", "mst?.par; *.zuo".
#pragma once

#include <string_view>

namespace ox {

/// Whether a file's name fits one of the patterns, which ";" separates. "*" stands for any characters, "?"
/// for exactly one; letters, umlauts too, fit in either case. "*.*" fits names without "." too, and no
/// pattern at all fits every name. All UTF-8.
bool MatchesPattern(std::string_view name, std::string_view patterns);

}  // namespace ox
