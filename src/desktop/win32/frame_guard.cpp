// The messages of Windows by which a window's frame takes the thread.
#include "desktop/frame_guard.h"

#include <windows.h>

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>

namespace ox {
namespace {

/// The low bits of a system command are the system's own.
constexpr WPARAM kCommandBits = 0xFFF0;

bool IsFrame(WPARAM place) {
  return place == HTCAPTION || place == HTSYSMENU || (place >= HTSIZEFIRST && place <= HTSIZELAST);
}

/// Whether Windows would answer the message by a loop of its own.
bool HoldsUp(const MSG& message) {
  switch (message.message) {
    case WM_NCLBUTTONDOWN:
    case WM_NCRBUTTONDOWN:
    case WM_NCRBUTTONUP:
      return IsFrame(message.wParam);
    case WM_SYSCOMMAND: {
      const WPARAM command = message.wParam & kCommandBits;
      return command == SC_MOVE || command == SC_SIZE || command == SC_MOUSEMENU || command == SC_KEYMENU;
    }
    case WM_SYSKEYDOWN:  // the toolkit opens the system menu by itself
    case WM_SYSCHAR:
      return message.wParam == VK_SPACE;
    default:
      return false;
  }
}

}  // namespace

struct FrameGuard::Filter : QAbstractNativeEventFilter {
  explicit Filter(const std::function<bool()>& asked) : busy(asked) {}

  bool nativeEventFilter(const QByteArray& /*type*/, void* message, qintptr* result) override {
    if (!HoldsUp(*static_cast<const MSG*>(message)) || !busy()) return false;
    if (result != nullptr) *result = 0;  // a message from the queue has none
    return true;
  }

  std::function<bool()> busy;
};

FrameGuard::FrameGuard(const std::function<bool()>& busy) : filter_(std::make_unique<Filter>(busy)) {
  QCoreApplication::instance()->installNativeEventFilter(filter_.get());
}

FrameGuard::~FrameGuard() {
  QCoreApplication::instance()->removeNativeEventFilter(filter_.get());
}

}  // namespace ox
