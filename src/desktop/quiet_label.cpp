// A text in a fixed count of lines.
#include "desktop/quiet_label.h"

#include <QPainter>
#include <QStyle>
#include <QTextLayout>
#include <algorithm>

namespace ox {
namespace {

constexpr int kUsualLines = 2;

}  // namespace

QuietLabel::QuietLabel(QWidget* parent) : SteadyLabel(parent) {
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

int QuietLabel::LeastLines() const {
  const QVariant lines = property("lines");
  return lines.isValid() ? lines.toInt() : kUsualLines;
}

int QuietLabel::LineCount() const {
  return std::max(LeastLines(), TextArea().height() / fontMetrics().lineSpacing());
}

QSize QuietLabel::sizeHint() const {
  return SteadyLabel::sizeHint() + QSize(0, (LeastLines() - 1) * fontMetrics().lineSpacing());
}

QuietLabel::Shown QuietLabel::Broken() const {
  const QString whole = QString(text()).replace(u'\n', QChar::LineSeparator);
  const int width = std::max(TextArea().width(), 1);
  QTextLayout layout(whole, font());
  QTextOption wrapping;
  wrapping.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(wrapping);
  QStringList lines;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    const bool last = lines.size() + 1 == LineCount();
    const bool cut = last && line.textStart() + line.textLength() < whole.size();
    const QString rest = whole.mid(line.textStart(), cut ? -1 : line.textLength());
    lines += QString(rest).replace(QChar::LineSeparator, u' ');
    if (cut) lines.last() = fontMetrics().elidedText(lines.last(), Qt::ElideRight, width);
    if (last) return {lines, !cut};
  }
  return {lines, true};
}

bool QuietLabel::Fits() const {
  return Broken().whole;
}

void QuietLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  drawFrame(&painter);
  style()->drawItemText(&painter, TextArea(), static_cast<int>(Qt::AlignLeft | Qt::AlignTop), palette(),
                        isEnabled(), Broken().lines.join(u'\n'), foregroundRole());
}

}  // namespace ox
