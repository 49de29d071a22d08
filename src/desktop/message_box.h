// Message boxes.
#pragma once

#include <QWidget>
#include <string_view>

#include "ui/window_system.h"

namespace ox {

/// What a message box answers that is closed without a choice.
constexpr Answer AnswerOfNobody(Buttons buttons) {
  return buttons == Buttons::kOkCancel ? Answer::kCancel : Answer::kOk;
}

/// Shows the text (UTF-8) over the parent, or alone when that is null, and returns the user's answer.
Answer ShowMessageBox(QWidget* parent, std::string_view text, Buttons buttons);

/// Closes all that are open, without a choice.
void CloseMessageBoxes();

}  // namespace ox
