// A label whose size does not depend on its text.
#pragma once

#include <QLabel>

namespace ox {

/// One line for a text that changes while the window is shown. Its width comes from the layout, and it is as
/// high as one line, whatever the text. Of a text that does not fit the end is shown, with "…" in front; a
/// tooltip shows the whole text.
class SteadyLabel : public QLabel {
 public:
  using QLabel::QLabel;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

  /// Where the text stands, within frame, margin and indent.
  QRect TextArea() const;
  /// Whether the whole text is shown.
  virtual bool Fits() const;
};

}  // namespace ox
