// Passing everything on to the real window system, and noting it.
#include "journal/journal_windows.h"

#include "ui/window.h"

namespace ox {
namespace {

using As = JournalPiece::As;

constexpr std::string_view kOkName = "OK";
constexpr std::string_view kCancelName = "Abbrechen";

}  // namespace

void JournalWindows::Rest() {
  journal_.WriteOutInTime();
  real_.Rest();
}

void JournalWindows::ShowModal(Window& window) {
  journal_.Note({{"Fenster auf "}, {window.Name(), As::kText}, {" "}, {window.Caption(), As::kText}});
  journal_.WriteOut();
  ports_.LookAgain();
  real_.ShowModal(window);
  journal_.Note({{"Fenster zu "}, {window.Name(), As::kText}});
  journal_.WriteOut();
}

Answer JournalWindows::ShowMessage(std::string_view text, Buttons buttons) {
  const bool cancels = buttons == Buttons::kOkCancel;
  journal_.Note({{"Meldung "},
                 {text, As::kText},
                 {" "},
                 {kOkName},
                 {cancels ? "/" : ""},
                 {cancels ? kCancelName : ""}});
  journal_.WriteOut();
  const Answer answer = real_.ShowMessage(text, buttons);
  journal_.Note({{"Antwort "}, {answer == Answer::kOk ? kOkName : kCancelName}});
  return answer;
}

void JournalWindows::CommandEnded() noexcept {
  journal_.WriteOut();
  real_.CommandEnded();
}

void JournalWindows::EndProgram() {
  journal_.Note({{"Ende, Einstellungen nicht gespeichert"}});
  journal_.WriteOut();
  real_.EndProgram();
}

}  // namespace ox
