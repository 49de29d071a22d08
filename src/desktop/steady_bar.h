// A progress bar whose room does not depend on what it shows.
#pragma once

#include <QProgressBar>

namespace ox {

/// Keeps its room while it is hidden. It moves only when it is told to: nothing wakes the program up for it.
class SteadyBar : public QProgressBar {
 public:
  explicit SteadyBar(QWidget* parent = nullptr);

  void SetPercent(int percent);
  /// In place of a share: a mark that goes to and fro, by one step.
  void Pulse();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  static constexpr int kNoPulse = -1;

  int pulse_ = kNoPulse;
};

}  // namespace ox
