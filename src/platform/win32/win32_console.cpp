// The command line of this host.
#include "platform/win32/win32_console.h"

#include "platform/win32/wide_text.h"
#include "platform/win32/wildcards.h"
#include "platform/win32/windows_api.h"
// Behind the host's declarations, which it needs.
#include <shellapi.h>

namespace ox {

std::vector<std::string> Win32Console::Words(int /*count*/, char** /*arguments*/) {
  int count = 0;
  wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> words;
  for (int number = 1; wide != nullptr && number < count; ++number) {
    for (const std::wstring& word : FilesFitting(wide[number])) words.push_back(Narrow(word).value_or("?"));
  }
  LocalFree(wide);
  return words;
}

}  // namespace ox
