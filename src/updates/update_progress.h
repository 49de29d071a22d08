// What an update window shows of a run beside its marks: what is done, how far it is, how long it takes.
#pragma once

#include <cstddef>
#include <string_view>

#include "platform/clock.h"
#include "programming/update_estimate.h"
#include "ui/controls.h"
#include "ui/window.h"

namespace ox {

/// Part of an update window, all of it empty while nothing runs.
class UpdateProgress {
 public:
  /// Both outlive it.
  UpdateProgress(Window& window, Clock& clock);

  // Controls of the window.

  /// What is done now.
  Label Step;
  /// The seconds that remain, or those of a step whose end is not known.
  Label Rest;
  ProgressBar Bar;
  /// That the window goes when the run has succeeded.
  Label Closing;
  Timer Beat;

  // What a run tells, see UpdateObserver.

  void OnStep(std::string_view what, std::size_t blocks);
  void OnBlockSent() { estimate_.BlockSent(clock_.SecondsSinceMidnight()); }
  /// The user closes the window while it runs.
  void OnCloseRequest();
  /// The end is told: time no longer counts. How far the run came stays in sight.
  void Stop();
  /// The run is over.
  void Clear();

 private:
  void Show();

  Clock& clock_;
  UpdateEstimate estimate_;
  int beats_ = 0;
};

}  // namespace ox
