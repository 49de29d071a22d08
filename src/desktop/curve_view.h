// The widget that shows a curve.
#pragma once

#include <QWidget>
#include <optional>

#include "ui/curve.h"

namespace ox {

/// Draws a curve, and the values under the pointer, and tells both to assistive technology. With the keyboard
/// the arrow keys, Home and End move the place whose values are told. It is drawn anew only when the data,
/// the place or its size have changed.
class CurveView : public QWidget {
 public:
  explicit CurveView(QWidget* parent);

  /// Follows the control, which outlives the tie.
  void Follow(const Curve& control) { control_ = &control; }

  /// The data in words, with the values of the place that is marked.
  QString InWords() const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  /// Null as long as there is nothing to draw.
  const CurveData* Data() const { return control_ != nullptr ? control_->Data() : nullptr; }
  QRect Area() const;
  void Mark(std::optional<double> second);
  /// The time that is so many steps from the marked one.
  double Stepped(int steps) const;

  const Curve* control_ = nullptr;
  std::optional<double> marked_;  // seconds since the start
};

}  // namespace ox
