// Three panels over one axis of time.
#include "tool/log_curves.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <optional>
#include <sstream>
#include <vector>

#include "platform/time_text.h"
#include "power/power_log_reader.h"

namespace ox::tool {
namespace {

// In pixels.
constexpr std::size_t kColumns = 860;
constexpr double kLeft = 70;
constexpr double kPanelHeight = 170;
constexpr double kPanelStep = 220;
constexpr double kFirstPanel = 50;
constexpr double kWidth = kLeft + static_cast<double>(kColumns) + 70;
constexpr double kHeight = kFirstPanel + 3 * kPanelStep + 30;
constexpr double kLabelGap = 18;

struct Curve {
  LogValue value = LogValue::kCharge;
  const char* name = "";
  const char* colour = "";
};

struct Panel {
  const char* unit = "";
  double step = 1;  // its range ends at multiples of this
  bool fromZero = false;
  std::array<std::optional<Curve>, 2> curves;
};

constexpr std::array<Panel, 3> kPanels{{
    {"%",
     100,
     true,
     {{{{LogValue::kCharge, "Akkuladung", "#1f5fa8"}}, {{LogValue::kCapacity, "Akkukapazität", "#d07000"}}}}},
    {"V",
     1,
     true,
     {{{{LogValue::kBatteryVoltage, "Akkuspannung", "#1f5fa8"}},
       {{LogValue::kMainsVoltage, "Netzteilspannung", "#d07000"}}}}},
    {"°C", 10, false, {{{{LogValue::kTemperature, "Temperatur", "#b02020"}}, std::nullopt}}},
}};

/// Seconds of a calendar without summer time.
double Seconds(const CivilTime& time) {
  const std::chrono::year_month_day day{std::chrono::year(time.year),
                                        std::chrono::month(static_cast<unsigned>(time.month)),
                                        std::chrono::day(static_cast<unsigned>(time.day))};
  const auto midnight = std::chrono::sys_days(day).time_since_epoch();
  return static_cast<double>(std::chrono::seconds(midnight).count()) + time.hour * 3600.0 +
         time.minute * 60.0 + time.second;
}

/// "2026-11-16 14:05", with ":58" behind it where minutes are too coarse.
std::string TimeText(double seconds, bool withSeconds) {
  const auto whole = std::chrono::seconds(std::llround(seconds));
  const auto days = std::chrono::floor<std::chrono::days>(whole);
  const std::chrono::year_month_day day{std::chrono::sys_days(days)};
  const std::chrono::hh_mm_ss time(whole - days);
  std::string text =
      IsoTime({static_cast<int>(day.year()), static_cast<int>(static_cast<unsigned>(day.month())),
               static_cast<int>(static_cast<unsigned>(day.day())), static_cast<int>(time.hours().count()),
               static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count())});
  text.replace(text.find('T'), 1, " ");
  if (!withSeconds) text.erase(text.rfind(':'));
  return text;
}

std::string WithComma(double value) {
  std::ostringstream text;
  text << value;
  std::string written = text.str();
  std::ranges::replace(written, '.', ',');
  return written;
}

struct Range {
  double low = INFINITY;
  double high = -INFINITY;

  void Take(double value) {
    low = std::min(low, value);
    high = std::max(high, value);
  }
  double Share(double value) const { return high > low ? (value - low) / (high - low) : 0.5; }
};

/// Calls for each entry with the number of its run, from 0.
template <typename Visit>
void VisitEntries(BytesView log, Visit visit) {
  PowerLogReader reader(log);
  std::size_t run = 0;
  while (!reader.AtEnd()) {
    const LogLineKind kind = reader.Next();
    if (kind == LogLineKind::kRuler) ++run;
    if (kind == LogLineKind::kEntry) visit(reader.Entry(), run);
  }
}

/// What of a curve falls on one column.
struct Column {
  bool used = false;
  std::size_t run = 0;
  float first = 0;
  float low = 0;
  float high = 0;
  float last = 0;

  void Take(float value, std::size_t itsRun) {
    if (!used) *this = {true, itsRun, value, value, value, value};
    run = itsRun;
    low = std::min(low, value);
    high = std::max(high, value);
    last = value;
  }
};

struct Ranges {
  Range time;
  std::array<Range, kLogValues> values;
};

Range RangeOf(const Panel& panel, const Ranges& ranges) {
  Range range;
  if (panel.fromZero) range.Take(0);
  for (const auto& curve : panel.curves) {
    if (!curve) continue;
    range.Take(ranges.values[static_cast<std::size_t>(curve->value)].low);
    range.Take(ranges.values[static_cast<std::size_t>(curve->value)].high);
  }
  range.low = std::floor(range.low / panel.step) * panel.step;
  range.high = std::max(std::ceil(range.high / panel.step) * panel.step, range.low + panel.step);
  return range;
}

/// Draws into a stream of SVG elements.
class Picture {
 public:
  Picture(BytesView log, const Ranges& ranges) : log_(log), ranges_(ranges) {
    svg_ << R"(<svg xmlns="http://www.w3.org/2000/svg" width=")" << kWidth << R"(" height=")" << kHeight
         << R"(" viewBox="0 0 )" << kWidth << " " << kHeight
         << "\" font-family=\"sans-serif\" font-size=\"13\">\n<title>Stromversorgung der Orvanexe</title>\n"
         << "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n";
  }

  void Draw(const Panel& panel, double top) {
    const Range range = RangeOf(panel, ranges_);
    svg_ << "<rect x=\"" << kLeft << "\" y=\"" << top << "\" width=\"" << kColumns << "\" height=\""
         << kPanelHeight << "\" fill=\"none\" stroke=\"#888888\"/>\n";
    for (const double share : {0.0, 0.5, 1.0}) {
      const double y = top + kPanelHeight * (1 - share);
      Line(kLeft, y, kLeft + kColumns, y);
      const double value = range.low + share * (range.high - range.low);
      Text(kLeft - 6, y + 4, "end", "#333333") << WithComma(value) << " " << panel.unit << "</text>\n";
    }
    double name = kLeft;
    for (const auto& curve : panel.curves) {
      if (!curve) continue;
      Text(name, top - 8, "start", curve->colour) << curve->name << "</text>\n";
      name += 130;
      DrawCurve(*curve, range, top);
    }
    DrawTimes(top + kPanelHeight);
  }

  std::string Finish() { return svg_.str() + "</svg>\n"; }

 private:
  std::ostream& Text(double x, double y, const char* anchor, const char* colour) {
    return svg_ << "<text x=\"" << x << "\" y=\"" << y << "\" text-anchor=\"" << anchor << "\" fill=\""
                << colour << "\">";
  }

  void Line(double x1, double y1, double x2, double y2) {
    svg_ << "<line x1=\"" << x1 << "\" y1=\"" << y1 << "\" x2=\"" << x2 << "\" y2=\"" << y2
         << "\" stroke=\"#dddddd\"/>\n";
  }

  void DrawTimes(double bottom) {
    constexpr int kTimes = 4;
    constexpr double kHour = 3600;
    const double lasts = ranges_.time.high - ranges_.time.low;
    std::optional<double> before;
    for (int mark = 0; mark <= kTimes; ++mark) {
      const double time = std::round(ranges_.time.low + lasts * mark / kTimes);
      if (time == before) continue;
      before = time;
      const double x = kLeft + ranges_.time.Share(time) * kColumns;
      Line(x, bottom, x, bottom + 5);
      Text(x, bottom + kLabelGap, "middle", "#333333") << TimeText(time, lasts < kHour) << "</text>\n";
    }
  }

  void DrawCurve(const Curve& curve, const Range& range, double top) {
    std::vector<Column> columns(kColumns + 1);
    VisitEntries(log_, [&](const PowerLogEntry& entry, std::size_t run) {
      const double share = ranges_.time.Share(Seconds(entry.time));
      columns[static_cast<std::size_t>(share * kColumns)].Take(entry.Number(curve.value), run);
    });
    std::ostringstream lines;
    std::ostringstream dots;  // where runs begin; a run of one entry would not be seen otherwise
    std::optional<std::size_t> run;
    for (std::size_t x = 0; x < columns.size(); ++x) {
      const Column& column = columns[x];
      if (!column.used) continue;
      const bool goesOn = run == column.run;
      run = column.run;
      std::optional<float> before;
      for (const float value : {column.first, column.low, column.high, column.last}) {
        if (value == before) continue;
        const double y = top + kPanelHeight * (1 - range.Share(value));
        std::ostringstream place;
        place << kLeft + static_cast<double>(x) << "," << std::round(y * 10) / 10;
        const bool begins = !goesOn && !before;
        lines << (begins ? 'M' : 'L') << place.str();
        if (begins) dots << "M" << place.str() << "h0";
        before = value;
      }
    }
    Path(curve, 1.5, lines.str());
    Path(curve, 4, dots.str());
  }

  void Path(const Curve& curve, double width, const std::string& way) {
    svg_ << "<path fill=\"none\" stroke-linecap=\"round\" stroke-width=\"" << width << "\" stroke=\""
         << curve.colour << "\" d=\"" << way << "\"/>\n";
  }

  BytesView log_;
  const Ranges& ranges_;
  std::ostringstream svg_;
};

}  // namespace

std::string LogCurves(BytesView log) {
  Ranges ranges;
  VisitEntries(log, [&](const PowerLogEntry& entry, std::size_t) {
    ranges.time.Take(Seconds(entry.time));
    for (std::size_t value = 0; value < kLogValues; ++value) {
      ranges.values[value].Take(entry.Number(static_cast<LogValue>(value)));
    }
  });
  Picture picture(log, ranges);
  double top = kFirstPanel;
  for (const Panel& panel : kPanels) {
    picture.Draw(panel, top);
    top += kPanelStep;
  }
  return picture.Finish();
}

}  // namespace ox::tool
