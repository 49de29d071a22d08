// The image for devices before generation III: the packed tables as they are.
#include "tables/image_parts.h"
#include "tables/packed_cursor.h"
#include "tables/packed_tables.h"
#include "tables/table_images.h"

namespace ox {
namespace {

constexpr std::size_t kFirstDifference = kPointNumberLength;
constexpr std::size_t kSecondDifference = kFirstDifference + kDifferenceLength;
constexpr std::size_t kName = kSecondDifference + kDifferenceLength;

/// Stops where the table is damaged; false then.
bool ReadPoints(PackedCursor& cursor, std::vector<PointContent>& points) {
  while (!cursor.AtNul()) {
    const auto text = cursor.TakeField();
    const auto digits = cursor.TakeField(kEntryEnd);
    if (!text || !digits || text->size() != kEntryTextLength) return false;
    PointContent point{Bytes(text->substr(0, kPointNumberLength)),
                       Bytes(text->substr(kFirstDifference, kDifferenceLength)),
                       Bytes(text->substr(kSecondDifference, kDifferenceLength)),
                       WithoutPadding(text->substr(kName)),
                       {}};
    for (std::size_t at = 0; at < digits->size(); at += kParameterNumberLength) {
      point.parameters.emplace_back(digits->substr(at, kParameterNumberLength));
    }
    points.push_back(std::move(point));
  }
  return cursor.Skip(kNulPair);
}

bool ReadOffices(BytesView linked, TableContent& tables) {
  PackedCursor cursor(linked);
  const auto version = cursor.TakeField();
  if (!version || !cursor.Skip({&kNul, 1})) return false;
  tables.version = *version;
  while (!cursor.AtNul()) {
    const auto name = cursor.TakeField();
    const auto code = cursor.TakeField();
    if (!name || !code) return false;
    tables.offices.push_back({Bytes(*name), Bytes(*code), {}});
    if (!ReadPoints(cursor, tables.offices.back().points)) return false;
  }
  return cursor.Position() + 1 == linked.size();
}

/// The length of the list; nothing when it is damaged.
std::optional<std::size_t> ReadParameters(BytesView list, TableContent& tables) {
  constexpr std::size_t kDesignation = kParameterNumberLength + 1;
  constexpr std::size_t kUnit = kDesignation + kDesignationLength + 1;
  PackedCursor cursor(list);
  for (;;) {
    const auto entry = cursor.TakeField();
    if (!entry) return std::nullopt;
    if (entry->empty()) break;
    if (entry->size() <= kUnit || entry->size() > kParameterTextLength) return std::nullopt;
    tables.parameters.push_back({Bytes(entry->substr(0, kParameterNumberLength)),
                                 WithoutPadding(entry->substr(kDesignation, kDesignationLength)),
                                 Bytes(entry->substr(kUnit))});
  }
  if (!cursor.Skip({&kNul, 1})) return std::nullopt;
  return cursor.Position();
}

}  // namespace

std::string ReadOlderBody(BytesView body, ImageContent& content) {
  const std::size_t listAddress = WordAt(body, kSlotSize).value_or(0);
  if (listAddress <= kOlderPointsAddress || listAddress - kDeviceMemory >= body.size()) {
    return "die Adresse der Parameterliste liegt nicht im Abbild";
  }
  const std::size_t list = listAddress - kDeviceMemory;
  const std::size_t points = kOlderPointsAddress - kDeviceMemory;
  if (!ReadOffices(body.substr(points, list - points), content.tables)) {
    return "die Messstellentabelle ist beschädigt";
  }
  const auto length = ReadParameters(body.substr(list), content.tables);
  if (!length) return "die Parameterliste ist beschädigt";
  content.bodySize = list + *length;
  return {};
}

}  // namespace ox
