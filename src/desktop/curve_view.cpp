// Painting, pointer and keys of a curve, and its words.
#include "desktop/curve_view.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "desktop/curve_painting.h"
#include "desktop/curve_text.h"

namespace ox {
namespace {

constexpr int kMargin = 4;           // pixels, for the frame that shows the focus
constexpr int kLeastWidth = 400;     // pixels
constexpr double kPixelsOfStep = 3;  // of an arrow key, where spans are closer

class CurveWords : public QAccessibleWidget {
 public:
  explicit CurveWords(CurveView* view) : QAccessibleWidget(view, QAccessible::Chart) {}

  QString text(QAccessible::Text kind) const override {
    const auto* view = static_cast<const CurveView*>(widget());
    return kind == QAccessible::Description || kind == QAccessible::Value ? view->InWords()
                                                                          : QAccessibleWidget::text(kind);
  }
};

QAccessibleInterface* MakeWords(const QString& /*className*/, QObject* object) {
  auto* view = dynamic_cast<CurveView*>(object);
  return view != nullptr ? new CurveWords(view) : nullptr;
}

/// Comes before the first curve is named: what tells of a widget is made then, and kept.
void InstallCurveWords() {
  static const bool kInstalled = [] {
    QAccessible::installFactory(MakeWords);
    return true;
  }();
  static_cast<void>(kInstalled);
}

}  // namespace

CurveView::CurveView(QWidget* parent) : QWidget(parent) {
  InstallCurveWords();
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
}

QString CurveView::InWords() const {
  const CurveData* shown = Data();
  return shown != nullptr ? CurveInWords(*shown, marked_) : QString();
}

QSize CurveView::sizeHint() const {
  return minimumSizeHint();
}

QSize CurveView::minimumSizeHint() const {
  return {kLeastWidth, CurveLayout::LeastHeight(fontMetrics()) + 2 * kMargin};
}

QRect CurveView::Area() const {
  return rect().adjusted(kMargin, kMargin, -kMargin, -kMargin);
}

void CurveView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  QPalette colours = palette();
  // It stands on the window's own ground.
  colours.setColor(QPalette::Base, colours.color(QPalette::Window));
  colours.setColor(QPalette::Text, colours.color(QPalette::WindowText));
  if (Data() != nullptr) PaintCurve(painter, Area(), colours, *Data(), marked_);
  if (!hasFocus()) return;
  painter.setPen(colours.color(QPalette::Highlight));  // as lists show it
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void CurveView::mouseMoveEvent(QMouseEvent* event) {
  if (Data() == nullptr) return;
  const CurveLayout layout(Area(), fontMetrics(), *Data());
  const QPointF place = event->position();
  const bool inPlot = place.x() >= layout.plot.left() && place.x() <= layout.plot.right();
  Mark(inPlot ? std::optional(layout.TimeAt(place.x())) : std::nullopt);
}

void CurveView::leaveEvent(QEvent* event) {
  if (!hasFocus()) Mark({});
  QWidget::leaveEvent(event);
}

void CurveView::keyPressEvent(QKeyEvent* event) {
  const bool empty = Data() == nullptr || Data()->spans.empty();
  const int key = event->key();
  if (!empty && key == Qt::Key_Left) {
    Mark(Stepped(-1));
  } else if (!empty && key == Qt::Key_Right) {
    Mark(Stepped(1));
  } else if (!empty && key == Qt::Key_Home) {
    Mark(Data()->spans.front().first);
  } else if (!empty && key == Qt::Key_End) {
    Mark(Data()->spans.back().last);
  } else {
    QWidget::keyPressEvent(event);
  }
}

void CurveView::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  update();
}

void CurveView::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  if (event->reason() != Qt::PopupFocusReason) Mark({});
  update();
}

void CurveView::Mark(std::optional<double> second) {
  if (marked_ == second) return;
  marked_ = second;
  update();
  QAccessibleEvent changed(this, QAccessible::DescriptionChanged);
  QAccessible::updateAccessibility(&changed);
}

double CurveView::Stepped(int steps) const {
  const std::vector<CurveSpan>& spans = Data()->spans;
  const CurveLayout layout(Area(), fontMetrics(), *Data());
  const CurveSpan* here = SpanAt(*Data(), marked_.value_or(spans.back().last));
  const double least = kPixelsOfStep / std::max(layout.plot.width(), 1) * layout.length;
  const double from = here->last;
  // At least to the neighbour, else a visible step.
  const auto place = here - spans.data() + steps;
  const auto last = static_cast<std::ptrdiff_t>(spans.size()) - 1;
  const double neighbour = spans[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(place, 0, last))].last;
  const double wanted = steps > 0 ? std::max(neighbour, from + least) : std::min(neighbour, from - least);
  return SpanAt(*Data(), wanted)->last;
}

}  // namespace ox
