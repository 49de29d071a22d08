// From a parser's bytes to a message box.
#include "session/window_table_messages.h"

namespace ox {

void WindowTableMessages::Show(const std::string& text) {
  windows_.ShowMessage(text);
}

bool WindowTableMessages::Confirm(const std::string& text) {
  return windows_.ShowMessage(text, Buttons::kOkCancel) == Answer::kOk;
}

}  // namespace ox
