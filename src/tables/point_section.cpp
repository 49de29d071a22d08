// Collects the measuring points of a linked table, then lays entries and parameter blocks out.
#include "tables/point_section.h"

#include <vector>

#include "tables/encodings.h"
#include "tables/image_sections.h"
#include "tables/packed_cursor.h"
#include "tables/packed_tables.h"

namespace ox {
namespace {

constexpr std::size_t kWordSize = 2;

struct Point {
  BytesView officeCode;
  BytesView text;        // number, differences, name
  BytesView parameters;  // four digits each
};

/// Appends the points of a table; false when it is damaged. Stops at the first point too many.
bool CollectPoints(BytesView linked, std::vector<Point>& points) {
  PackedCursor cursor(linked);
  if (!cursor.SkipToNulPair()) return false;
  while (!cursor.AtNul()) {
    const auto name = cursor.TakeField();
    const auto code = cursor.TakeField();
    if (!name || !code) return false;
    while (!cursor.AtNul()) {
      const auto text = cursor.TakeField();
      const auto parameters = cursor.TakeField(kEntryEnd);
      if (!text || !parameters) return false;
      points.push_back({*code, *text, *parameters});
      if (points.size() > kMaxPoints) return true;
    }
    if (!cursor.Skip(kNulPair)) return false;
  }
  return true;
}

/// Empty when the digits are not made of whole parameter numbers, or there are none.
Bytes ParameterBlock(BytesView digits) {
  if (digits.empty() || digits.size() % kParameterNumberLength != 0) return {};
  Bytes block;
  for (; !digits.empty(); digits.remove_prefix(kParameterNumberLength)) {
    const Bytes number = PackBcd(digits.substr(0, kParameterNumberLength));
    if (number.empty()) return {};
    block += number;
  }
  return block.append(kRecordsEnd);
}

/// The entry of a point without its distance word; empty when a field is not made as it must be.
Bytes EntryBody(const Point& point) {
  if (point.officeCode.size() != kOfficeCodeLength || point.text.size() != kEntryTextLength) return {};
  constexpr std::size_t kSecondDifference = kPointNumberLength + kDifferenceLength;
  const Bytes number = PackBcd(point.text.substr(0, kPointNumberLength));
  const Bytes code = PackBcd(point.officeCode);
  const Bytes first = PackSignedDifference(point.text.substr(kPointNumberLength, kDifferenceLength));
  const Bytes second = PackSignedDifference(point.text.substr(kSecondDifference, kDifferenceLength));
  if (number.empty() || code.empty() || first.empty() || second.empty()) return {};
  Bytes body = number + code + first + second;
  return body.append(point.text.substr(kSecondDifference + kDifferenceLength)).append(1, kEntryEnd);
}

/// Appends entries and parameter blocks of all points; false when one of them cannot be written.
bool LayOut(const std::vector<Point>& points, Bytes& entries, Bytes& blocks) {
  std::size_t later = points.size();
  for (const Point& point : points) {
    --later;
    const Bytes body = EntryBody(point);
    const Bytes block = ParameterBlock(point.parameters);
    if (body.empty() || block.empty()) return false;
    const std::size_t distance = kWordSize + later * kPackedEntrySize + kAreaEnd.size() + blocks.size();
    entries.append(body).append(PackWord(distance));
    blocks += block;
  }
  return true;
}

}  // namespace

PointSection BuildMeasuringPointImage(BytesView linked) {
  std::vector<Point> points;
  const bool whole = CollectPoints(linked, points);
  if (points.size() > kMaxPoints) return {PointSectionStatus::kTooManyPoints, {}};

  Bytes entries;
  Bytes blocks;
  const bool built = whole && !points.empty() && LayOut(points, entries, blocks);
  if (!built) {
    entries.clear();
    blocks.clear();
  }
  Bytes section = SectionHead(points.size());
  section.append(entries).append(kAreaEnd).append(blocks).append(kAreaEnd);
  return {built ? PointSectionStatus::kBuilt : PointSectionStatus::kWithoutEntries, section};
}

}  // namespace ox
