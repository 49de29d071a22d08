// The life of a window.
#include "ui/window.h"

#include <exception>
#include <new>

namespace ox {
namespace {

constexpr std::string_view kOutOfMemory = "Nicht genügend Speicher: Vorgang abgebrochen!";
constexpr std::string_view kUnexpected = "Unerwarteter Fehler: Vorgang abgebrochen!";

/// Tells the user. When there is no memory even for the message, the command just ends.
void ReportFailure(WindowSystem& windows, std::string_view text) noexcept {
  try {
    windows.ShowMessage(text);
  } catch (const std::exception&) {
  }
}

}  // namespace

Window::Window(WindowSystem& windows, std::string_view name, std::string_view caption, std::string_view form)
    : windows_(windows), name_(name), caption_(caption), form_(form.empty() ? name : form) {}

void Window::Open() {
  open_ = true;
  closeRequested_ = false;
  endRequested_ = false;
  if (loaded_) return;
  loaded_ = true;
  Run([this] { OnLoad(); });
}

void Window::Activate() {
  if (open_) Run([this] { OnActivate(); });
}

void Window::RequestClose() {
  if (!open_) return;
  if (running_ > 0) {
    closeRequested_ = true;
    OnCloseWhileRunning();
    return;
  }
  Run([this] { OnClose(); });
}

void Window::RequestEnd() {
  endRequested_ = true;
  RequestClose();
}

void Window::Run(const std::function<void()>& handler) {
  ++running_;
  try {
    handler();
  } catch (const std::bad_alloc&) {
    OnFailure();
    ReportFailure(windows_, kOutOfMemory);
  } catch (const std::exception&) {
    OnFailure();
    ReportFailure(windows_, kUnexpected);
  }
  --running_;
  if (running_ == 0) windows_.CommandEnded();
  if (running_ == 0 && closeRequested_ && open_) {
    closeRequested_ = false;
    Run([this] { OnClose(); });
  }
}

void Window::Unload() {
  if (!loaded_) return;
  loaded_ = false;
  // OnUnload may fail to save something; the window goes from the screen all the same.
  Run([this] { OnUnload(); });
  LeaveScreen();
}

void Window::Hide() {
  LeaveScreen();
}

void Window::LeaveScreen() {
  if (!open_) return;
  open_ = false;
  if (closed_) closed_();
}

}  // namespace ox
