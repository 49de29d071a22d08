// Message boxes.
#pragma once

#include <QWidget>
#include <functional>
#include <string_view>

#include "ui/window_system.h"

namespace ox {

/// What a message box answers that is closed without a choice.
constexpr Answer AnswerOfNobody(Buttons buttons) {
  return buttons == Buttons::kOkCancel ? Answer::kCancel : Answer::kOk;
}

/// Shows the text (UTF-8) over the parent, or alone when that is null, and returns the user's answer.
Answer ShowMessageBox(QWidget* parent, std::string_view text, Buttons buttons);

/// Shows the text and goes on: what runs is not kept waiting. The box goes with its parent.
void ShowNote(QWidget* parent, std::string_view text);

/// The same for a question; `onOk` is called when the user has answered with OK.
void AskBeside(QWidget* parent, std::string_view text, std::function<void()> onOk);

/// Closes all that are open, without a choice.
void CloseMessageBoxes();

}  // namespace ox
