// Measured values of the simulated network, and the reply lines to the requests that poll them.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "platform/bytes.h"
#include "simulator/device/station_data.h"

namespace ox::sim {

/// The lines that the device answers a request with, each as it goes on the line.
using ReplyLines = std::vector<Bytes>;

/// Bare letters in place of a reply line.
inline constexpr char kNothingKnown[] = "R";  ///< the value that was asked for does not exist
inline constexpr char kRefused[] = "N";       ///< the request cannot be understood

/// Values that move a little from poll to poll, each within what its unit makes likely. The same seed and the
/// same polls give the same values. A flag that is given stands in every record, else mostly none.
class Polls {
 public:
  explicit Polls(std::uint32_t seed, std::optional<char> flag = std::nullopt) : flag_(flag), random_(seed) {}

  /// "J", 20 characters, each field may be blank, but not all of them. One record when number and parameter
  /// are given, "R" when there is no such value; several records otherwise, "N" when any column holds what
  /// does not belong there. With a number given the office code does not count.
  ReplyLines AnswerJ(BytesView request, const StationData& stations);
  /// "Z": number and parameter given; the record followed by the unit.
  ReplyLines AnswerZ(BytesView request, const StationData& stations);
  /// "P": all values of all points. At least leastRecords of them: the points repeat themselves where there
  /// are fewer.
  ReplyLines AnswerP(const StationData& stations, std::size_t leastRecords);

 private:
  Bytes Record(const StationPoint& point, const std::string& parameter, const StationData& stations);
  double Move(const std::string& point, const std::string& parameter, double low, double high);
  char Flag();

  std::optional<char> flag_;
  std::mt19937 random_;
  std::map<std::string, double> values_;
};

}  // namespace ox::sim
