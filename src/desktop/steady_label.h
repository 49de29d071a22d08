// A label whose text says nothing about its size.
#pragma once

#include <QLabel>

namespace ox {

/// One line for a text that comes and grows while the window is shown: as wide as its layout makes it and as
/// high as a line, whatever it says. A text that does not fit keeps its end in sight, "…" in front; a tooltip
/// shows the whole of it.
class SteadyLabel : public QLabel {
 public:
  using QLabel::QLabel;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  /// Where the text stands, within frame and margin.
  QRect TextArea() const;
  bool Fits() const;
};

}  // namespace ox
