// A run of an update in its window: what is locked and shown, and how it begins and ends.
#pragma once

#include <functional>
#include <initializer_list>
#include <string_view>

#include "programming/device_search.h"
#include "programming/loader_link.h"
#include "programming/update_observer.h"
#include "programming/update_run.h"
#include "session/session_settings.h"
#include "ui/control_lock.h"
#include "ui/controls.h"
#include "ui/host.h"
#include "ui/window.h"
#include "updates/update_progress.h"

namespace ox {

/// Part of an update window. Closing never cuts a run off, since nothing in a run looks for it. The window
/// goes when the run has succeeded; after any other end it stays, since the device may wait in its loader for
/// another attempt.
class UpdateFrame : private UpdateObserver {
 public:
  /// `go` is the status line, which shows the marks. All outlive the frame.
  UpdateFrame(Window& window, Host& host, SessionSettings& settings, Label& go, UpdateProgress& progress,
              std::initializer_list<Control*> locked);

  /// What is done to the device; the search shows the connection test.
  using Procedure =
      std::function<UpdateEnd(LoaderLink& link, const DeviceSearch& search, UpdateObserver& observer)>;

  /// Carries out the procedure with the controls locked. The focus returns to the button that started it.
  UpdateEnd Run(Button& start, const Procedure& procedure);

  /// The user wants to close the window while a handler of it runs.
  void OnCloseWhileRunning() {
    if (running_) progress_.OnCloseRequest();
  }

  /// A handler of the window was left by an exception. If that was a run, the controls are unlocked and the
  /// window stays.
  void OnFailure();

 private:
  void Step(std::string_view what, int /*longestSeconds*/, std::size_t blocks) override {
    progress_.OnStep(what, blocks);
  }
  void BlockSent(std::size_t /*number*/) override { progress_.OnBlockSent(); }
  void StartMarks() override { go_.SetText(">"); }
  void Mark() override { go_.Append(">"); }
  void Tell(std::string_view message) override;
  void End();

  Window& window_;
  Host& host_;
  SessionSettings& settings_;
  Label& go_;
  UpdateProgress& progress_;
  ControlLock controls_;
  LoaderLink link_;
  bool running_ = false;
};

}  // namespace ox
