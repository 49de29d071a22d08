// Values, ranges and the whole curve in words.
#include "desktop/curve_text.h"

#include <algorithm>

#include "desktop/time_axis.h"

namespace ox {

QString ValueText(const CurveLine& line, double value) {
  return QString::number(value, 'f', line.decimals) + QString::fromStdString(line.unit);
}

QString RangeText(const CurveLine& line, const CurveRange& range) {
  const QString least = QString::number(range.least, 'f', line.decimals);
  const QString greatest = ValueText(line, range.greatest);
  return ValueText(line, range.least) == greatest ? greatest : least + QStringLiteral(" bis ") + greatest;
}

const CurveSpan* SpanAt(const CurveData& data, double second) {
  if (data.spans.empty()) return nullptr;
  const auto behind = std::ranges::lower_bound(data.spans, second, {}, &CurveSpan::last);
  if (behind == data.spans.end()) return &data.spans.back();
  if (behind == data.spans.begin() || behind->first <= second) return &*behind;
  const auto before = behind - 1;
  return second - before->last < behind->first - second ? &*before : &*behind;
}

QString CurveInWords(const CurveData& data, std::optional<double> marked) {
  if (data.spans.empty()) return QStringLiteral("Noch keine Werte");
  const CurveSpan& last = data.spans.back();
  const CurveSpan* at = marked ? SpanAt(data, *marked) : nullptr;
  QString words =
      at != nullptr
          ? QString::fromStdString(TimeText(data.start, at->last))
          : QString::fromStdString(DateAndTime(data.start, 0) + " bis " + TimeText(data.start, last.last));
  for (std::size_t line = 0; line < kCurveLines; ++line) {
    const CurveLine& quantity = data.lines[line];
    words += QStringLiteral("; ") + QString::fromStdString(quantity.name) + QChar(u' ');
    if (at != nullptr) {
      words += RangeText(quantity, at->ranges[line]);
      continue;
    }
    CurveRange all = last.ranges[line];
    for (const CurveSpan& span : data.spans) {
      all.least = std::min(all.least, span.ranges[line].least);
      all.greatest = std::max(all.greatest, span.ranges[line].greatest);
    }
    words += QStringLiteral("zuletzt %1, insgesamt %2")
                 .arg(ValueText(quantity, all.last), RangeText(quantity, all));
  }
  return words;
}

}  // namespace ox
