// Writing table files with made-up networks.
#include "bench/sample_tables.h"

#include <string>

namespace ox::bench {
namespace {

constexpr std::size_t kPointsPerOffice = 100;
constexpr std::size_t kFirstPoint = 10000000;
constexpr std::size_t kFirstOffice = 100;
constexpr std::size_t kNameDigits = 4;
constexpr std::size_t kParameterDigits = 4;

/// The last digits of a number, with zeros in front.
std::string Digits(std::size_t number, std::size_t count) {
  const std::string padded = std::string(count, '0') + std::to_string(number);
  return padded.substr(padded.size() - count);
}

Bytes Marked(char mark, const Bytes& value) {
  return Bytes("/") + mark + "/\"" + value + "\" ";
}

}  // namespace

Bytes SamplePointNumber(std::size_t index) {
  return std::to_string(kFirstPoint + index);
}

SampleTables MakeSampleTables(std::size_t points, std::size_t parametersEach) {
  SampleTables tables{Marked('S', "Probe"), "", ""};
  Bytes assigned;
  for (std::size_t number = 1; number <= parametersEach; ++number) {
    const Bytes digits = Digits(number, kParameterDigits);
    tables.parameters += Marked('P', digits) +
                         Marked('T',
                                "Gr\xF6\xDF"
                                "e " +
                                    digits.substr(1)) +
                         Marked('M', "m/s") + "\r\n";
    assigned += (assigned.empty() ? "" : ",") + digits;
  }
  for (std::size_t index = 0; index < points; ++index) {
    if (index % kPointsPerOffice == 0) {
      if (index > 0) tables.points += "/B/ Amt zu Ende\r\n";
      const Bytes code = std::to_string(kFirstOffice + index / kPointsPerOffice);
      tables.points += Marked('A', "Amt " + code) + Marked('Z', code) + "\r\n";
    }
    const Bytes number = SamplePointNumber(index);
    tables.points += Marked('N', number) + Marked('D', " 0012") + Marked('M', "-0003") +
                     Marked('T', "P" + Digits(index, kNameDigits)) + "eine Messstelle\r\n";
    tables.assignments += Marked('N', number) + Marked('P', assigned) + "\r\n";
  }
  tables.points += "/B/ Amt zu Ende\r\n/E/ \r\n";
  tables.parameters += "/E/ \r\n";
  tables.assignments += "/E/ \r\n";
  return tables;
}

}  // namespace ox::bench
