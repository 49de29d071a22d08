// Bands, axes and lines.
#include "desktop/curve_painting.h"

#include <QBuffer>
#include <QFont>
#include <QImage>
#include <QPainterPath>
#include <algorithm>

#include "desktop/curve_text.h"
#include "desktop/time_axis.h"

namespace ox {
namespace {

// Pixels at the scale of the screen.
constexpr int kGap = 6;
constexpr double kLineWidth = 2;
constexpr double kDotRadius = 2.5;
constexpr int kSampleLength = 30;
constexpr int kTickLength = 4;
constexpr int kDarkGround = 128;  // a ground of less lightness wants bright lines

constexpr double kLeastLength = 60;  // seconds

/// Colours that are told apart also without red or green, for a bright and for a dark ground, and a dash of
/// its own for each line.
struct LineLook {
  QRgb onBright;
  QRgb onDark;
  Qt::PenStyle dash;
};
constexpr std::array<LineLook, kCurveLines> kLooks = {{{0x0072B2, 0x56B4E9, Qt::SolidLine},
                                                       {0xB34A00, 0xF0A020, Qt::DashLine},
                                                       {0x00734F, 0x30D0A0, Qt::DotLine}}};

/// What the columns beside the plot must hold.
constexpr const char* kWidestAxis = "-00.000°C";
constexpr const char* kWidestRange = "00.000 bis 00.000V";
constexpr const char* kWidestTime = "00:00:00";

class CurvePainter {
 public:
  CurvePainter(QPainter& painter, const QRect& area, const QPalette& palette, const CurveData& data)
      : painter_(painter),
        palette_(palette),
        data_(data),
        layout_(area, painter.fontMetrics(), data),
        area_(area) {}

  void Paint(std::optional<double> marked) {
    painter_.setRenderHint(QPainter::Antialiasing);
    const CurveSpan* at = marked && !data_.spans.empty() ? SpanAt(data_, *marked) : nullptr;
    PaintTimes(at != nullptr);
    for (std::size_t line = 0; line < kCurveLines; ++line) PaintBand(line, at);
    if (at != nullptr) PaintMark(*at);
    if (data_.spans.empty()) {
      painter_.setPen(Ink());
      painter_.drawText(layout_.plot, Qt::AlignCenter, QStringLiteral("Noch keine Werte seit „Start“"));
    }
  }

 private:
  QColor Ink() const { return palette_.color(QPalette::Text); }

  QColor Pale() const {
    QColor pale = Ink();
    pale.setAlphaF(0.25F);
    return pale;
  }

  QColor ColourOf(std::size_t line) const {
    const bool dark = palette_.color(QPalette::Base).lightness() < kDarkGround;
    return QColor(dark ? kLooks[line].onDark : kLooks[line].onBright);
  }

  QPen PenOf(std::size_t line) const {
    return {ColourOf(line), kLineWidth, kLooks[line].dash, Qt::FlatCap, Qt::RoundJoin};
  }

  int TextHeight() const { return painter_.fontMetrics().height(); }

  void PaintTimes(bool onlyLines) {
    const QFontMetrics font = painter_.fontMetrics();
    const int most = std::max(2 * layout_.plot.width() / (3 * font.horizontalAdvance(kWidestTime)), 1);
    for (const TimeMark& mark : TimeMarks(data_.start, layout_.length, most)) {
      const double x = layout_.PlaceOf(mark.second);
      painter_.setPen(QPen(Pale(), 1));
      painter_.drawLine(QPointF(x, layout_.plot.top()), QPointF(x, layout_.plot.bottom() + kTickLength));
      if (!onlyLines) PaintTime(x, QString::fromStdString(mark.text));
    }
  }

  void PaintTime(double x, const QString& text) {
    QRect box = painter_.fontMetrics().boundingRect(text).adjusted(-2, 0, 2, 0);
    box.moveTop(layout_.plot.bottom() + kTickLength);
    box.moveLeft(static_cast<int>(x) - box.width() / 2);  // names and values have wider columns than a time
    painter_.setPen(Ink());
    painter_.drawText(box, Qt::AlignCenter, text);
  }

  void PaintBand(std::size_t line, const CurveSpan* at) {
    const QRect band = layout_.Band(line);
    painter_.setPen(QPen(Pale(), 1));
    painter_.setBrush(Qt::NoBrush);
    painter_.drawRect(QRectF(band).adjusted(0.5, 0.5, -0.5, -0.5));
    PaintName(line, band);
    if (data_.spans.empty()) return;
    AxisRange axis = Axis(line);
    painter_.setPen(Ink());
    const CurveLine& quantity = data_.lines[line];
    const QRect ends = band.adjusted(-layout_.plot.left() + area_.left(), 0, -band.width() - kGap, 0);
    painter_.drawText(ends, Qt::AlignRight | Qt::AlignTop, ValueText(quantity, axis.high));
    painter_.drawText(ends, Qt::AlignRight | Qt::AlignBottom, ValueText(quantity, axis.low));
    const CurveSpan& told = at != nullptr ? *at : data_.spans.back();
    QFont bold = painter_.font();
    bold.setBold(true);
    const QFont usual = painter_.font();
    painter_.setFont(bold);
    painter_.drawText(
        QRect(band.right() + kGap, band.top(), area_.right() - band.right() - kGap, band.height()),
        Qt::AlignLeft | Qt::AlignVCenter,
        at != nullptr ? RangeText(quantity, told.ranges[line]) : ValueText(quantity, told.ranges[line].last));
    painter_.setFont(usual);
    PaintLine(line, band, axis);
  }

  /// To the left of the axis, with a piece of its line below.
  void PaintName(std::size_t line, const QRect& band) {
    painter_.setPen(Ink());
    const QRect text(area_.left(), band.center().y() - TextHeight(), band.left() - area_.left(),
                     TextHeight());
    painter_.drawText(text, Qt::AlignLeft | Qt::AlignVCenter, QString::fromStdString(data_.lines[line].name));
    painter_.setPen(PenOf(line));
    const double y = band.center().y() + TextHeight() / 2.0;
    painter_.drawLine(QPointF(area_.left(), y), QPointF(area_.left() + kSampleLength, y));
  }

  AxisRange Axis(std::size_t line) const {
    double least = data_.spans.front().ranges[line].least;
    double greatest = data_.spans.front().ranges[line].greatest;
    for (const CurveSpan& span : data_.spans) {
      least = std::min(least, span.ranges[line].least);
      greatest = std::max(greatest, span.ranges[line].greatest);
    }
    return RangeAround(least, greatest, data_.lines[line].least);
  }

  /// The last values as a line, and behind it, pale, how far the values of each span went.
  void PaintLine(std::size_t line, const QRect& band, const AxisRange& axis) {
    const auto y = [&](double value) {
      const double share = (value - axis.low) / (axis.high - axis.low);
      return band.bottom() - kDotRadius - share * (band.height() - 2 * kDotRadius);
    };
    QColor pale = ColourOf(line);
    pale.setAlphaF(0.35F);
    QPainterPath path;
    const CurveSpan* before = nullptr;
    for (const CurveSpan& span : data_.spans) {
      const CurveRange& range = span.ranges[line];
      const double x = layout_.PlaceOf(span.last);
      if (range.least < range.greatest) {
        painter_.setPen(QPen(pale, kLineWidth));
        painter_.drawLine(QPointF(x, y(range.least)), QPointF(x, y(range.greatest)));
      }
      if (before == nullptr || span.afterGap) {
        PaintDot(line, {layout_.PlaceOf(span.first), y(range.last)});  // it may stand alone
        path.moveTo(layout_.PlaceOf(span.first), y(range.last));
      }
      path.lineTo(x, y(range.last));
      before = &span;
    }
    painter_.setPen(PenOf(line));
    painter_.setBrush(Qt::NoBrush);
    painter_.drawPath(path);
    PaintDot(line, {layout_.PlaceOf(before->last), y(before->ranges[line].last)});
  }

  void PaintDot(std::size_t line, const QPointF& place) {
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(ColourOf(line));
    painter_.drawEllipse(place, kDotRadius, kDotRadius);
  }

  void PaintMark(const CurveSpan& at) {
    const double x = layout_.PlaceOf(at.last);
    painter_.setPen(QPen(Ink(), 1));
    painter_.drawLine(QPointF(x, layout_.plot.top()), QPointF(x, layout_.plot.bottom() + kTickLength));
    PaintTime(x, QString::fromStdString(TimeText(data_.start, at.last)));
  }

  QPainter& painter_;
  const QPalette& palette_;
  const CurveData& data_;
  const CurveLayout layout_;
  const QRect area_;
};

QPalette BrightPalette() {
  QPalette palette;
  palette.setColor(QPalette::Base, Qt::white);
  palette.setColor(QPalette::Text, Qt::black);
  return palette;
}

}  // namespace

CurveLayout::CurveLayout(const QRect& area, const QFontMetrics& font, const CurveData& data) : bandGap(kGap) {
  int names = 0;
  for (const CurveLine& line : data.lines) {
    names = std::max(names, font.horizontalAdvance(QString::fromStdString(line.name)));
  }
  const int left = names + font.horizontalAdvance(QString::fromUtf8(kWidestAxis)) + 2 * kGap;
  const int right = font.horizontalAdvance(kWidestRange) * 5 / 4 + kGap;  // bold
  plot = area.adjusted(left, 0, -right, -font.height() - kTickLength);
  length = std::max(data.spans.empty() ? 0.0 : data.spans.back().last, kLeastLength);
}

QRect CurveLayout::Band(std::size_t line) const {
  const int lines = static_cast<int>(kCurveLines);
  const int height = (plot.height() - (lines - 1) * bandGap) / lines;
  return {plot.left(), plot.top() + static_cast<int>(line) * (height + bandGap), plot.width(), height};
}

double CurveLayout::PlaceOf(double second) const {
  return plot.left() + second / length * (plot.width() - 1);
}

double CurveLayout::TimeAt(double place) const {
  return (place - plot.left()) / std::max(plot.width() - 1, 1) * length;
}

int CurveLayout::LeastHeight(const QFontMetrics& font) {
  constexpr int kTextLinesOfBand = 2;  // both ends of its axis
  const int lines = static_cast<int>(kCurveLines);
  return lines * kTextLinesOfBand * font.height() + (lines - 1) * kGap + font.height() + kTickLength;
}

void PaintCurve(QPainter& painter, const QRect& area, const QPalette& palette, const CurveData& data,
                std::optional<double> marked) {
  CurvePainter(painter, area, palette, data).Paint(marked);
}

QByteArray PictureOfCurve(const CurveData& data, const QString& title) {
  constexpr QSize kSize(1000, 480);  // at the usual scale of a screen
  constexpr int kScale = 2;
  constexpr int kMargin = 12;
  QImage image(kSize * kScale, QImage::Format_RGB32);
  image.setDevicePixelRatio(kScale);
  image.fill(Qt::white);
  QPainter painter(&image);
  const QRect area = QRect(QPoint(), kSize).adjusted(kMargin, kMargin, -kMargin, -kMargin);
  painter.setPen(Qt::black);
  QString heading = title;
  if (!data.spans.empty()) {
    heading += QStringLiteral(", %1 bis %2")
                   .arg(QString::fromStdString(DateAndTime(data.start, 0)),
                        QString::fromStdString(TimeText(data.start, data.spans.back().last)));
  }
  painter.drawText(area, Qt::AlignLeft | Qt::AlignTop, heading);
  PaintCurve(painter, area.adjusted(0, painter.fontMetrics().height() + kMargin, 0, 0), BrightPalette(), data,
             {});
  painter.end();
  QByteArray png;
  QBuffer buffer(&png);
  image.save(&buffer, "PNG");
  return png;
}

}  // namespace ox
