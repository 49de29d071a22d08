// The size of an empty line, and a text cut off at its front.
#include "desktop/steady_label.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>
#include <algorithm>

namespace ox {

QSize SteadyLabel::sizeHint() const {
  const int border = 2 * (frameWidth() + margin());
  return QSize(0, fontMetrics().height()) + QSize(border, border);
}

bool SteadyLabel::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip || Fits()) return QLabel::event(event);
  // As marked text, so that it is broken into lines and "<" stays what it is.
  const QString whole = QStringLiteral("<p>") + text().toHtmlEscaped() + QStringLiteral("</p>");
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), whole, this);
  return true;
}

void SteadyLabel::paintEvent(QPaintEvent* event) {
  if (Fits()) {
    QLabel::paintEvent(event);
    return;
  }
  QPainter painter(this);
  drawFrame(&painter);
  const QString line = text().replace(u'\n', u' ');
  const QString end = fontMetrics().elidedText(line, Qt::ElideLeft, TextArea().width());
  style()->drawItemText(&painter, TextArea(), static_cast<int>(alignment()), palette(), isEnabled(), end,
                        foregroundRole());
}

QRect SteadyLabel::TextArea() const {
  const int indented = (alignment() & Qt::AlignLeft) != 0 ? std::max(indent(), 0) : 0;
  return contentsRect().adjusted(margin() + indented, margin(), -margin(), -margin());
}

bool SteadyLabel::Fits() const {
  return !text().contains(u'\n') && fontMetrics().horizontalAdvance(text()) <= TextArea().width();
}

}  // namespace ox
