// A label for the quiet line at the foot of a window.
#pragma once

#include <QStringList>

#include "desktop/steady_label.h"

namespace ox {

/// As high as a fixed count of lines, whatever the text: the form's property "lines". A text that needs more
/// lines than there is room for ends in "…"; a tooltip shows the whole text.
class QuietLabel : public SteadyLabel {
 public:
  explicit QuietLabel(QWidget* parent);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool Fits() const override;

 private:
  struct Shown {
    QStringList lines;  // as many as the label has, at most
    bool whole = true;  // whether they hold all of the text
  };

  /// The lines that the form asks for.
  int LeastLines() const;
  /// The lines that there is room for.
  int LineCount() const;
  /// The text broken into lines as wide as the label.
  Shown Broken() const;
};

}  // namespace ox
