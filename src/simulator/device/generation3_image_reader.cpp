// The image of generation III: four binary sections, found by distances in the image's head.
#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "simulator/device/byte_cursor.h"
#include "simulator/device/image_reader.h"
#include "simulator/device/table_checksum.h"

namespace ox::sim {
namespace {

using namespace std::string_view_literals;

// The head: for each section its distance from the head's own slot.
constexpr std::size_t kSections = 4;
constexpr std::size_t kSectionAlignment = 4;

constexpr char kNul = '\0';
constexpr char kFiller = '\xFF';
constexpr std::string_view kUpperHalf = "\0\0"sv;
constexpr std::string_view kListEnd = "\xFF\xFF"sv;
constexpr std::string_view kPointsEnd = "\xFF\xFF\xFF\xFF"sv;

constexpr std::size_t kVersionLongest = 12;
constexpr std::size_t kNumberBytes = 2;  // packed: parameter number, office code
constexpr std::size_t kPointNumberBytes = 4;
constexpr std::size_t kDesignationSize = 9;
constexpr std::size_t kUnitSize = 3;
constexpr std::size_t kOfficeNameSize = 14;
constexpr std::size_t kPointNameSize = 5;
constexpr int kNegativeFrom = 0x8000;
constexpr int kWordRange = 0x10000;
constexpr int kLargestDifference = 9999;

// Where the sections lie, from the start of the image.
using SectionOffsets = std::array<std::size_t, kSections>;

SectionOffsets TakeHead(ByteCursor& cursor) {
  SectionOffsets offsets{};
  for (std::size_t& offset : offsets) {
    const std::size_t slot = cursor.Position();
    offset = slot + cursor.TakeWord();
    cursor.Expect(kUpperHalf);
  }
  return offsets;
}

// Every section ends with filler to the next multiple of the alignment, at least one byte of it.
void TakePadding(ByteCursor& cursor) {
  const std::size_t count = kSectionAlignment - cursor.Position() % kSectionAlignment;
  cursor.Expect(Bytes(count, kFiller));
}

std::size_t TakeCount(ByteCursor& cursor) {
  const std::size_t count = cursor.TakeWord();
  cursor.Expect(kUpperHalf);
  return count;
}

Bytes TakeOfficeCode(ByteCursor& cursor) {
  const std::string digits = cursor.TakePackedDecimal(kNumberBytes);
  cursor.Require(digits.substr(0, 1) == "0");
  return cursor.Failed() ? Bytes() : digits.substr(1);
}

void TakeParameters(ByteCursor& cursor, StationData& data) {
  const std::size_t count = TakeCount(cursor);
  for (std::size_t i = 0; i < count && !cursor.Failed(); ++i) {
    StationParameter parameter;
    parameter.number = cursor.TakePackedDecimal(kNumberBytes);
    parameter.designation = cursor.Take(kDesignationSize);
    parameter.unit = cursor.Take(kUnitSize);
    data.parameters.push_back(std::move(parameter));
  }
  cursor.Expect(kListEnd);
}

void TakeOffices(ByteCursor& cursor, StationData& data) {
  const std::size_t count = TakeCount(cursor);
  for (std::size_t i = 0; i < count && !cursor.Failed(); ++i) {
    StationOffice office;
    office.code = TakeOfficeCode(cursor);
    office.name = WithoutPadding(cursor.Take(kOfficeNameSize));
    data.offices.push_back(std::move(office));
  }
  cursor.Expect(kListEnd);
}

int TakeDifference(ByteCursor& cursor) {
  int value = static_cast<int>(cursor.TakeWord());
  if (value >= kNegativeFrom) value -= kWordRange;
  cursor.Require(value >= -kLargestDifference && value <= kLargestDifference);
  return value;
}

// One entry; blockAt becomes the place of the measuring point's parameter block.
StationPoint TakePoint(ByteCursor& cursor, std::size_t& blockAt) {
  StationPoint point;
  point.number = cursor.TakePackedDecimal(kPointNumberBytes);
  point.office = TakeOfficeCode(cursor);
  point.firstDifference = TakeDifference(cursor);
  point.secondDifference = TakeDifference(cursor);
  point.name = cursor.Take(kPointNameSize);
  cursor.Expect({&kFiller, 1});
  blockAt = cursor.Position();
  blockAt += cursor.TakeWord();
  return point;
}

void TakeParameterBlock(ByteCursor& cursor, StationPoint& point) {
  while (!cursor.Failed() && !cursor.Skip(kListEnd)) {
    point.parameters.push_back(cursor.TakePackedDecimal(kNumberBytes));
  }
  cursor.Require(!point.parameters.empty());
}

void TakePoints(ByteCursor& cursor, StationData& data) {
  const std::size_t count = TakeCount(cursor);
  std::vector<std::size_t> blocks;
  for (std::size_t i = 0; i < count && !cursor.Failed(); ++i) {
    data.points.push_back(TakePoint(cursor, blocks.emplace_back()));
  }
  cursor.Expect(kPointsEnd);
  for (std::size_t i = 0; i < blocks.size() && !cursor.Failed(); ++i) {
    cursor.Require(cursor.Position() == blocks[i]);
    TakeParameterBlock(cursor, data.points[i]);
  }
  cursor.Expect(kPointsEnd);
}

bool KnowsOffice(const StationData& data, const StationPoint& point) {
  return std::any_of(data.offices.begin(), data.offices.end(),
                     [&](const StationOffice& office) { return office.code == point.office; });
}

bool KnowsParameter(const StationData& data, const std::string& number) {
  return std::any_of(data.parameters.begin(), data.parameters.end(),
                     [&](const StationParameter& parameter) { return parameter.number == number; });
}

// Every measuring point refers to an office and to parameters that the image tells.
bool Complete(const StationData& data) {
  return std::all_of(data.points.begin(), data.points.end(), [&](const StationPoint& point) {
    return KnowsOffice(data, point) &&
           std::all_of(point.parameters.begin(), point.parameters.end(),
                       [&](const std::string& number) { return KnowsParameter(data, number); });
  });
}

}  // namespace

std::optional<StationData> ReadGeneration3Image(BytesView image) {
  if (!TableChecksumRight(image)) return std::nullopt;
  ByteCursor cursor(image.substr(0, kTableChecksumAt));
  StationData data;
  const auto [versionAt, parametersAt, officesAt, pointsAt] = TakeHead(cursor);
  cursor.Require(cursor.Position() == versionAt);
  data.version = cursor.TakeUntil(kNul, 1, kVersionLongest);
  TakePadding(cursor);
  cursor.Require(cursor.Position() == parametersAt);
  TakeParameters(cursor, data);
  TakePadding(cursor);
  cursor.Require(cursor.Position() == officesAt);
  TakeOffices(cursor, data);
  TakePadding(cursor);
  cursor.Require(cursor.Position() == pointsAt);
  TakePoints(cursor, data);
  TakePadding(cursor);
  cursor.ExpectOnly(kFiller);
  if (cursor.Failed() || !Complete(data)) return std::nullopt;
  return data;
}

}  // namespace ox::sim
