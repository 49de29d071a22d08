// The beginning and the end of a run in its window.
#include "updates/update_frame.h"

#include "link/verbindungstest.h"

namespace ox {

UpdateFrame::UpdateFrame(Window& window, Host& host, SessionSettings& settings, Label& go,
                         UpdateProgress& progress, std::initializer_list<Control*> locked)
    : window_(window),
      host_(host),
      settings_(settings),
      go_(go),
      progress_(progress),
      controls_(locked),
      link_(host, settings) {}

UpdateEnd UpdateFrame::Run(Button& start, const Procedure& procedure) {
  const DeviceSearch search = [this] {
    RunConnectionTest(host_, settings_);
    return settings_.Connected;
  };
  running_ = true;
  controls_.Lock();
  const UpdateEnd end = procedure(link_, search, *this);
  if (end == UpdateEnd::kFailed) window_.ForgetCloseRequest();
  End();
  start.SetFocus();
  return end;
}

void UpdateFrame::OnFailure() {
  if (!running_) return;
  window_.ForgetCloseRequest();
  End();
}

void UpdateFrame::End() {
  running_ = false;
  progress_.Clear();
  controls_.Unlock();
}

void UpdateFrame::Tell(std::string_view message) {
  progress_.Stop();
  host_.windows.ShowMessage(message);
}

}  // namespace ox
