// What a curve says in words: beside it, and to assistive technology.
#pragma once

#include <QString>
#include <optional>

#include "ui/curve.h"

namespace ox {

/// A value as the fields of the window write it: "79.1%".
QString ValueText(const CurveLine& line, double value);

/// Least and greatest, or the one value when they are written alike: "78.9 bis 79.3%".
QString RangeText(const CurveLine& line, const CurveRange& range);

/// The span at this time, or the nearest one; null when there is none.
const CurveSpan* SpanAt(const CurveData& data, double second);

/// For who cannot see the curve: its time, and of each line the last value and its range; with a marked time
/// the values there.
QString CurveInWords(const CurveData& data, std::optional<double> marked);

}  // namespace ox
