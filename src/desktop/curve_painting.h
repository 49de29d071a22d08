// How a curve is drawn, on the screen and in a file.
#pragma once

#include <QByteArray>
#include <QFontMetrics>
#include <QPainter>
#include <QPalette>
#include <QRect>
#include <QString>
#include <optional>

#include "ui/curve.h"

namespace ox {

/// Where the parts of a curve stand: a band for each line, one over the other, names and ends of the axes to
/// the left, values to the right, times below.
struct CurveLayout {
  CurveLayout(const QRect& area, const QFontMetrics& font, const CurveData& data);

  QRect Band(std::size_t line) const;
  /// Where a time is, and which time is where.
  double PlaceOf(double second) const;
  double TimeAt(double place) const;

  /// The least height at which all of it can be read.
  static int LeastHeight(const QFontMetrics& font);

  QRect plot;
  double length = 0;  // of the time axis, in seconds
  int bandGap = 0;
};

/// Draws the curve in the colours of the palette, bright or dark. At the marked time stands a line, and its
/// values in place of the last ones.
void PaintCurve(QPainter& painter, const QRect& area, const QPalette& palette, const CurveData& data,
                std::optional<double> marked);

/// A PNG of the curve in bright colours, whatever the screen has, with a title and its time above.
QByteArray PictureOfCurve(const CurveData& data, const QString& title);

}  // namespace ox
