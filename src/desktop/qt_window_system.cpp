// Modal windows one over the other, message boxes over all of them.
#include "desktop/qt_window_system.h"

#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "desktop/border.h"
#include "desktop/message_box.h"
#include "desktop/screen_text.h"

namespace ox {
namespace {

/// For whoever ends the program from outside, and sees no message box.
void TellOutside(std::string_view text) {
  std::fprintf(stderr, "oxservice: %s\n", OnMessageBox(text).toUtf8().constData());
}

/// Keeps a view among those shown as long as it runs.
class Shown {
 public:
  Shown(std::vector<View*>& shown, View& view) : shown_(shown) { shown_.push_back(&view); }
  Shown(const Shown&) = delete;
  Shown& operator=(const Shown&) = delete;
  ~Shown() { shown_.pop_back(); }

 private:
  std::vector<View*>& shown_;
};

}  // namespace

QtWindowSystem::QtWindowSystem(const OpenPorts& ports, const EndRequests& requests, const KeepAwake& awake,
                               WindowPlaces places)
    : awake_(awake),
      pump_(ports),
      places_(std::move(places)),
      endRequest_(requests.Handle(), [this] { AtBorder([this] { RequestEnd(); }); }),
      sessionEnd_([this] { return awake_.Held(); }, [this] { RequestEnd(); }),
      frameGuard_([this] { return awake_.Held(); }) {
  endRequest_.SetEnabled(true);
}

void QtWindowSystem::ShowModal(Window& window) {
  if (ending_ && !awake_.Held()) return;
  View view(window, Uppermost(), places_);
  if (!view.Complete()) {
    std::fprintf(stderr, "oxservice: the form of %s does not fit\n", window.Name().c_str());
    return;
  }
  const Shown shown(shown_, view);
  if (ending_) QTimer::singleShot(0, &view, [&view] { AtBorder([&view] { view.RequestEnd(); }); });
  view.Run();
}

Answer QtWindowSystem::ShowMessage(std::string_view text, Buttons buttons) {
  const Answer answer = ending_ ? AnswerOfNobody(buttons) : ShowMessageBox(Uppermost(), text, buttons);
  if (ending_) TellOutside(text);
  return answer;
}

void QtWindowSystem::AskWhereToSave(std::string_view name, const std::vector<FileKind>& kinds,
                                    SaveAnswer answer) {
  QWidget* form = Uppermost();
  if (form != nullptr && !ending_) saveQuestion_.Ask(*form, name, kinds, std::move(answer));
}

void QtWindowSystem::RequestEnd() {
  if (ending_) return;
  ending_ = true;
  for (auto view = shown_.rbegin(); view != shown_.rend(); ++view) (*view)->RequestEnd();
  CloseMessageBoxes();
}

void QtWindowSystem::EndProgram() {
  std::fflush(nullptr);
  std::_Exit(EXIT_SUCCESS);  // nothing may be run or saved on the way
}

QWidget* QtWindowSystem::Uppermost() const {
  for (auto view = shown_.rbegin(); view != shown_.rend(); ++view) {
    if ((*view)->Form()->isVisible()) return (*view)->Form();
  }
  return nullptr;
}

}  // namespace ox
