// Words that stand for many files.
#pragma once

#include <string>
#include <vector>

namespace ox {

/// The files that a word with "*" or "?" behind its last separator fits, in the order of their names, each
/// behind the word's folder; hidden ones and folders are left out. A word without both, or that fits no file,
/// stays itself. Shells of other hosts do this; Windows leaves it to the program.
std::vector<std::wstring> FilesFitting(const std::wstring& word);

}  // namespace ox
