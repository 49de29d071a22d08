// Counting what stands in the packed tables.
#include "tables/table_summary.h"

#include <cstddef>
#include <string_view>

#include "platform/text.h"
#include "tables/device_characters.h"
#include "tables/packed_cursor.h"
#include "tables/packed_tables.h"

namespace ox {
namespace {

std::string Counted(std::size_t count, std::string_view one, std::string_view many) {
  return std::to_string(count).append(" ").append(count == 1 ? one : many);
}

std::string Points(std::size_t count) {
  return Counted(count, "Messstelle", "Messstellen");
}

/// Steps over the points of an office and returns how many they are.
std::size_t CountPoints(PackedCursor& cursor) {
  std::size_t points = 0;
  while (!cursor.AtNul() && cursor.TakeField(kEntryEnd)) ++points;
  return points;
}

}  // namespace

std::string DescribePointTable(BytesView points) {
  PackedCursor cursor(points);
  const BytesView version = cursor.TakeField().value_or(BytesView());
  std::size_t offices = 0;
  std::size_t pointCount = 0;
  cursor.Skip({&kNul, 1});
  while (!cursor.AtNul() && cursor.TakeField() && cursor.TakeField()) {
    ++offices;
    pointCount += CountPoints(cursor);
    if (!cursor.Skip(kNulPair)) break;
  }
  return "Stand " + ToText(FileCharacters(version)) + ", " + Counted(offices, "Amt", "Ämter") + ", " +
         Points(pointCount);
}

std::string DescribeParameterList(BytesView parameters) {
  PackedCursor cursor(parameters);
  std::size_t count = 0;
  while (!cursor.AtNul() && cursor.TakeField()) ++count;
  return std::to_string(count) + " Parameter";
}

std::string DescribeAssignmentTable(BytesView assignments) {
  PackedCursor cursor(assignments);
  std::size_t points = 0;
  std::size_t parameters = 0;
  while (!cursor.AtNul()) {
    cursor.Take(kPointNumberLength);
    const auto digits = cursor.TakeField();
    if (!digits) break;
    ++points;
    parameters += digits->size() / kParameterNumberLength;
  }
  return Points(points) + ", " + Counted(parameters, "zugeordneter Parameter", "zugeordnete Parameter");
}

}  // namespace ox
