// The beginning and the end of a run in its window.
#include "updates/update_frame.h"

#include "link/verbindungstest.h"

namespace ox {

UpdateFrame::UpdateFrame(Window& window, Host& host, SessionSettings& settings, Label& go,
                         std::initializer_list<Control*> locked)
    : window_(window), host_(host), settings_(settings), go_(go), controls_(locked), link_(host, settings) {}

UpdateEnd UpdateFrame::Run(Button& start, const Procedure& procedure) {
  const DeviceSearch search = [this] {
    RunConnectionTest(host_, settings_);
    return settings_.Connected;
  };
  running_ = true;
  controls_.Lock();
  const UpdateEnd end = procedure(link_, search, *this);
  if (end == UpdateEnd::kFailed) window_.ForgetCloseRequest();
  running_ = false;
  controls_.Unlock();
  start.SetFocus();
  return end;
}

void UpdateFrame::OnFailure() {
  if (running_) window_.ForgetCloseRequest();
  running_ = false;
  controls_.Unlock();
}

}  // namespace ox
