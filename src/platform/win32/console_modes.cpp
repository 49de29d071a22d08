// Setting a console and giving it back.
#include "platform/win32/console_modes.h"

#include <fcntl.h>
#include <io.h>

#include <cstdio>

#include "platform/win32/windows_api.h"

namespace ox {
namespace {

bool IsConsole(DWORD stream) {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(stream), &mode) != FALSE;
}

}  // namespace

ConsoleModes::ConsoleModes() {
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  which_.input = IsConsole(STD_INPUT_HANDLE);
  which_.output = IsConsole(STD_OUTPUT_HANDLE);
  which_.messages = IsConsole(STD_ERROR_HANDLE);
  const bool outputObeys = !which_.output || Prepare(STD_OUTPUT_HANDLE);
  const bool messagesObey = !which_.messages || Prepare(STD_ERROR_HANDLE);
  which_.colours = outputObeys && messagesObey;
  if (!which_.output && !which_.messages) return;
  codePage_ = GetConsoleOutputCP();
  SetConsoleOutputCP(CP_UTF8);
}

ConsoleModes::~ConsoleModes() {
  std::fflush(stdout);  // what is still held back is UTF-8 too
  if (codePage_ != 0) SetConsoleOutputCP(codePage_);
  for (const auto& [console, before] : changed_) SetConsoleMode(console, before);
}

bool ConsoleModes::Prepare(unsigned long stream) {
  const HANDLE console = GetStdHandle(stream);
  DWORD mode = 0;
  if (GetConsoleMode(console, &mode) == FALSE) return false;
  if ((mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0) return true;
  if (SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) == FALSE) return false;
  changed_.push_back({console, mode});
  return true;
}

}  // namespace ox
