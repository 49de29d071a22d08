// The image of devices up to generation II: packed texts, told apart by NUL and FF bytes.
#include <string_view>
#include <utility>

#include "simulator/device/byte_cursor.h"
#include "simulator/device/image_reader.h"
#include "simulator/device/table_checksum.h"

namespace ox::sim {
namespace {

using namespace std::string_view_literals;

// The image lies at this address in the device; both parts are found by their addresses, 4 bytes each.
constexpr std::size_t kImageAddress = 0x8000;
constexpr std::string_view kPointsAddress = "\x08\x80\0\0"sv;
constexpr std::string_view kUpperHalf = "\0\0"sv;

constexpr char kNul = '\0';
constexpr std::string_view kEnd = "\0"sv;
constexpr char kEntryEnd = '\xFF';
constexpr char kFiller = '\xFF';

constexpr std::size_t kVersionLongest = 16;
constexpr std::size_t kOfficeNameLongest = 14;
constexpr std::size_t kOfficeCodeSize = 3;
constexpr std::size_t kPointNumberSize = 8;
constexpr std::size_t kDifferenceDigits = 4;
constexpr std::size_t kPointNameSize = 5;
constexpr std::size_t kParameterNumberSize = 4;
constexpr std::size_t kDesignationSize = 9;
constexpr std::size_t kUnitLongest = 3;

int TakeDifference(ByteCursor& cursor) {
  const bool negative = cursor.Skip("-");
  if (!negative) cursor.Expect(" ");
  const std::string digits = cursor.TakeDigits(kDifferenceDigits);
  if (cursor.Failed()) return 0;
  return negative ? -std::stoi(digits) : std::stoi(digits);
}

StationPoint TakePoint(ByteCursor& cursor, const Bytes& office) {
  StationPoint point;
  point.office = office;
  point.number = cursor.TakeDigits(kPointNumberSize);
  point.firstDifference = TakeDifference(cursor);
  point.secondDifference = TakeDifference(cursor);
  point.name = cursor.Take(kPointNameSize);
  cursor.Expect(kEnd);
  while (!cursor.Failed() && !cursor.Skip({&kEntryEnd, 1})) {
    point.parameters.push_back(cursor.TakeDigits(kParameterNumberSize));
  }
  return point;
}

void TakeOffice(ByteCursor& cursor, StationData& data) {
  StationOffice office;
  office.name = WithoutPadding(cursor.TakeUntil(kNul, 1, kOfficeNameLongest));
  office.code = cursor.TakeUntil(kNul, kOfficeCodeSize, kOfficeCodeSize);
  while (!cursor.Failed() && !cursor.Skip(kEnd)) data.points.push_back(TakePoint(cursor, office.code));
  cursor.Expect(kEnd);
  data.offices.push_back(std::move(office));
}

void TakeParameters(ByteCursor& cursor, StationData& data) {
  while (!cursor.Failed() && !cursor.Skip(kEnd)) {
    StationParameter parameter;
    parameter.number = cursor.TakeDigits(kParameterNumberSize);
    cursor.Expect(" ");
    parameter.designation = cursor.Take(kDesignationSize);
    cursor.Expect(" ");
    parameter.unit = cursor.TakeUntil(kNul, 1, kUnitLongest);
    data.parameters.push_back(std::move(parameter));
  }
  cursor.Expect(kEnd);
}

}  // namespace

std::optional<StationData> ReadOlderImage(BytesView image) {
  if (!TableChecksumRight(image)) return std::nullopt;
  ByteCursor cursor(image.substr(0, kTableChecksumAt));
  StationData data;
  cursor.Expect(kPointsAddress);
  const std::size_t parametersAddress = cursor.TakeWord();
  cursor.Expect(kUpperHalf);
  data.version = cursor.TakeUntil(kNul, 1, kVersionLongest);
  cursor.Expect(kEnd);
  while (!cursor.Failed() && !cursor.Skip(kEnd)) TakeOffice(cursor, data);
  cursor.Require(kImageAddress + cursor.Position() == parametersAddress);
  TakeParameters(cursor, data);
  cursor.ExpectOnly(kFiller);
  if (cursor.Failed()) return std::nullopt;
  return data;
}

}  // namespace ox::sim
