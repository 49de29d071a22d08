// The groove of the toolkit's style, and in it a mark that moves.
#include "desktop/steady_bar.h"

#include <QPainter>
#include <QStyleOptionProgressBar>

namespace ox {
namespace {

constexpr int kSteps = 16;     // from one end to the other
constexpr int kMarksWide = 5;  // so many marks would fill the groove

}  // namespace

SteadyBar::SteadyBar(QWidget* parent) : QProgressBar(parent) {
  QSizePolicy policy = sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  setSizePolicy(policy);
}

void SteadyBar::SetPercent(int percent) {
  pulse_ = kNoPulse;
  setValue(percent);
  update();
}

void SteadyBar::Pulse() {
  pulse_ = (pulse_ + 1) % (2 * kSteps);
  update();
}

void SteadyBar::paintEvent(QPaintEvent* event) {
  if (pulse_ == kNoPulse) {
    QProgressBar::paintEvent(event);
    return;
  }
  QStyleOptionProgressBar option;
  initStyleOption(&option);
  QPainter painter(this);
  style()->drawControl(QStyle::CE_ProgressBarGroove, &option, &painter, this);
  QRect mark = style()->subElementRect(QStyle::SE_ProgressBarContents, &option, this).adjusted(1, 1, -1, -1);
  const int room = mark.width();
  const int step = pulse_ < kSteps ? pulse_ : 2 * kSteps - pulse_;
  mark.setWidth(room / kMarksWide);
  mark.translate((room - mark.width()) * step / kSteps, 0);
  painter.fillRect(mark, palette().color(QPalette::Highlight));
}

}  // namespace ox
