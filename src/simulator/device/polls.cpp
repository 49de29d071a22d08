// Poll requests taken apart, values made up, records put together.
#include "simulator/device/polls.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <optional>

#include "platform/line_ends.h"

namespace ox::sim {
namespace {

constexpr char kSingleFraming = '0';

// Columns of a request, counted from 0.
constexpr size_t kRequestSize = 20;
constexpr size_t kOfficeColumn = 1;
constexpr size_t kOfficeSize = 3;
constexpr size_t kBlankColumn = 4;
constexpr size_t kNumberColumn = 5;
constexpr size_t kNumberSize = 8;
constexpr size_t kPointColumn = 13;
constexpr BytesView kPoint = ": ";  // behind a number; blank where there is none
constexpr BytesView kNoPoint = "  ";
constexpr size_t kParameterColumn = 15;
constexpr size_t kParameterSize = 4;

constexpr unsigned kDisturbedOneIn = 20;
constexpr unsigned kFaultyOneIn = 40;
constexpr double kLargestMove = 0.01;  // of the value's range, from one poll to the next

// What values of a unit look like. Units stand in device characters, so only their plain letters can be told.
struct Likely {
  BytesView unit;
  double low;
  double high;
  int decimals;
};
constexpr std::array<Likely, 14> kLikely{{
    {"cm", 35, 420, 0},
    {"m", 0.5, 9.5, 2},
    {"mm", 0, 24, 1},
    {"m/s", 0.1, 12, 1},
    {"hPa", 985, 1035, 1},
    {"%", 12, 98, 0},
    {"V", 11.8, 13.8, 2},
    {"mA", 4, 20, 1},
    {"l/s", 5, 180, 1},
    {"pH", 6.4, 8.6, 2},
    {"mS", 0.2, 1.4, 2},
    {"kW", 0, 95, 1},
    {"mg", 4, 13, 1},
    {"h", 0, 999, 0},
}};
constexpr Likely kTemperature{"C", -4, 27, 1};
constexpr Likely kAnythingElse{"", 0, 99, 1};

BytesView WithoutBlanks(BytesView text) {
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  return text;
}

const Likely& LikelyOf(BytesView parameter, const StationData& stations) {
  const auto found = std::find_if(stations.parameters.begin(), stations.parameters.end(),
                                  [&](const StationParameter& p) { return p.number == parameter; });
  if (found == stations.parameters.end()) return kAnythingElse;
  const BytesView unit = WithoutBlanks(found->unit);
  const auto* likely =
      std::find_if(kLikely.begin(), kLikely.end(), [&](const Likely& l) { return l.unit == unit; });
  if (likely != kLikely.end()) return *likely;
  return !unit.empty() && unit.back() == 'C' ? kTemperature : kAnythingElse;
}

Bytes UnitOf(BytesView parameter, const StationData& stations) {
  for (const StationParameter& known : stations.parameters) {
    if (known.number == parameter) return known.unit;
  }
  return "";
}

bool AllDigits(BytesView text) {
  return std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
}

// The fields of a "J" or "Z"; blank ones are empty.
struct Wanted {
  BytesView office;
  BytesView number;
  BytesView parameter;

  bool One() const { return !number.empty() && !parameter.empty(); }
  bool Fits(const StationPoint& point) const {
    return number.empty() ? office.empty() || point.office == office : point.number == number;
  }
};

// A field is blank or has its full size in digits; an office code may also hold letters. One field at least
// is not blank.
std::optional<Wanted> TakeApart(BytesView request) {
  if (request.size() != kRequestSize || request.back() != kCr) return std::nullopt;
  const BytesView office = request.substr(kOfficeColumn, kOfficeSize);
  const Wanted wanted{WithoutBlanks(office), WithoutBlanks(request.substr(kNumberColumn, kNumberSize)),
                      WithoutBlanks(request.substr(kParameterColumn, kParameterSize))};
  const bool sound = (wanted.office.empty() || office.find(' ') == BytesView::npos) &&
                     (wanted.number.empty() || wanted.number.size() == kNumberSize) &&
                     (wanted.parameter.empty() || wanted.parameter.size() == kParameterSize) &&
                     AllDigits(wanted.number) && AllDigits(wanted.parameter);
  const bool punctuated = request[kBlankColumn] == ' ' && request.substr(kPointColumn, kPoint.size()) ==
                                                              (wanted.number.empty() ? kNoPoint : kPoint);
  const bool blank = wanted.office.empty() && wanted.number.empty() && wanted.parameter.empty();
  if (!sound || !punctuated || blank) return std::nullopt;
  return wanted;
}

const StationPoint* FindValue(const Wanted& wanted, const StationData& stations) {
  for (const StationPoint& point : stations.points) {
    if (point.number != wanted.number) continue;
    const auto& parameters = point.parameters;
    if (std::find(parameters.begin(), parameters.end(), wanted.parameter) != parameters.end()) return &point;
  }
  return nullptr;
}

ReplyLines Several(ReplyLines records) {
  records.insert(records.begin(), Bytes(1, kCr));
  records.push_back(Bytes("E") + kCr);
  return records;
}

}  // namespace

ReplyLines Polls::AnswerJ(BytesView request, const StationData& stations) {
  const auto wanted = TakeApart(request);
  if (!wanted) return {kRefused};
  if (wanted->One()) {
    const StationPoint* point = FindValue(*wanted, stations);
    if (point == nullptr) return {kNothingKnown};
    return {kSingleFraming + Record(*point, Bytes(wanted->parameter), stations) + kCr};
  }
  ReplyLines records;
  for (const StationPoint& point : stations.points) {
    if (!wanted->Fits(point)) continue;
    for (const std::string& parameter : point.parameters) {
      if (!wanted->parameter.empty() && parameter != wanted->parameter) continue;
      records.push_back(Record(point, parameter, stations) + kCr);
    }
  }
  return Several(std::move(records));
}

ReplyLines Polls::AnswerZ(BytesView request, const StationData& stations) {
  const auto wanted = TakeApart(request);
  if (!wanted || !wanted->One()) return {kRefused};
  const StationPoint* point = FindValue(*wanted, stations);
  if (point == nullptr) return {kNothingKnown};
  const Bytes parameter(wanted->parameter);
  return {kSingleFraming + Record(*point, parameter, stations) + " " + UnitOf(parameter, stations) + kCr};
}

ReplyLines Polls::AnswerP(const StationData& stations, std::size_t leastRecords) {
  ReplyLines records;
  do {
    const size_t before = records.size();
    for (const StationPoint& point : stations.points) {
      for (const std::string& parameter : point.parameters) {
        records.push_back(Record(point, parameter, stations) + kCr);
      }
    }
    if (records.size() == before) break;
  } while (records.size() < leastRecords);
  return Several(std::move(records));
}

Bytes Polls::Record(const StationPoint& point, const std::string& parameter, const StationData& stations) {
  const Likely& likely = LikelyOf(parameter, stations);
  const double value = Move(point.number, parameter, likely.low, likely.high);
  char figures[16];
  std::snprintf(figures, sizeof figures, "%6.*f", likely.decimals, value);
  return point.number + ": " + parameter + " " + Flag() + " " + figures;
}

double Polls::Move(const std::string& point, const std::string& parameter, double low, double high) {
  const double share = static_cast<double>(random_()) / static_cast<double>(std::mt19937::max());
  const double range = high - low;
  const auto [entry, first] = values_.try_emplace(point + parameter, low + share * range);
  if (!first) entry->second = std::clamp(entry->second + (2 * share - 1) * kLargestMove * range, low, high);
  return entry->second;
}

char Polls::Flag() {
  const auto drawn = random_();
  if (flag_) return *flag_;
  if (drawn % kDisturbedOneIn == 0) return 's';
  return drawn % kFaultyOneIn == 1 ? 'f' : ' ';
}

}  // namespace ox::sim
