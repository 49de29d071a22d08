// Modal windows one over the other, message boxes over all of them.
#include "desktop/qt_window_system.h"

#include <cstdio>
#include <cstdlib>

#include "desktop/message_box.h"

namespace ox {
namespace {

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

void QtWindowSystem::ShowModal(Window& window) {
  View view(window, Uppermost());
  if (!view.Complete()) {
    std::fprintf(stderr, "oxservice: the form of %s does not fit\n", window.Name().c_str());
    return;
  }
  const Shown shown(shown_, view);
  view.Run();
}

Answer QtWindowSystem::ShowMessage(std::string_view text, Buttons buttons) {
  return ShowMessageBox(Uppermost(), text, buttons);
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
