// Builds version, parameter and office section out of the packed tables.
#include "tables/image_sections.h"

#include <algorithm>

#include "tables/encodings.h"
#include "tables/packed_cursor.h"
#include "tables/packed_tables.h"

namespace ox {
namespace {

/// Where a parameter entry holds its blanks and its texts.
constexpr std::size_t kFirstBlank = kParameterNumberLength;
constexpr std::size_t kDesignation = kFirstBlank + 1;
constexpr std::size_t kSecondBlank = kDesignation + kDesignationLength;
constexpr std::size_t kUnit = kSecondBlank + 1;

/// Empty when the entry is not made as it must be.
Bytes ParameterRecord(BytesView entry) {
  if (entry.size() != kParameterTextLength || entry[kFirstBlank] != ' ' || entry[kSecondBlank] != ' ')
    return {};
  Bytes record = PackBcd(entry.substr(0, kParameterNumberLength));
  if (record.empty()) return {};
  return record.append(entry.substr(kDesignation, kDesignationLength)).append(entry.substr(kUnit));
}

/// Empty when code or name have another length than they must, or the code another character than a digit.
Bytes OfficeRecord(BytesView name, BytesView code) {
  if (name.size() > kOfficeNameMaxLength || code.size() != kOfficeCodeLength) return {};
  Bytes record = PackBcd(code);
  if (record.empty()) return {};
  return record.append(name).append(kOfficeNameMaxLength - name.size(), kPadding);
}

Bytes Section(std::size_t records, BytesView body) {
  return SectionHead(records).append(body).append(kRecordsEnd);
}

}  // namespace

Bytes SectionHead(std::size_t records) {
  return PackWord(records).append(kNulPair);
}

Bytes BuildVersionField(BytesView points) {
  const auto version = PackedCursor(points).TakeField();
  if (!version || version->empty()) return {};
  return Bytes(version->substr(0, kVersionShown)).append(1, kNul);
}

Bytes BuildParameterImage(BytesView parameters) {
  constexpr std::size_t kShortestEntry = 2;  // what is shorter is the end of the list
  PackedCursor cursor(parameters);
  Bytes records;
  std::size_t count = 0;
  for (;;) {
    const auto entry = cursor.TakeField();
    if (!entry) return {};
    if (entry->size() < kShortestEntry) return Section(count, records);
    const Bytes record = ParameterRecord(*entry);
    if (record.empty()) return {};
    records += record;
    ++count;
  }
}

Bytes BuildOfficeImage(BytesView linked) {
  PackedCursor cursor(linked);
  Bytes records;
  std::size_t count = 0;
  // Every office stands behind a pair of NULs: that of the version or of the office before it. The search
  // goes on behind the NUL of its code, so that an office without points does not look like the end of the
  // table.
  while (cursor.SkipToNulPair()) {
    const auto name = cursor.TakeField();
    if (!name) return {};
    if (name->empty()) return Section(count, records);
    const auto code = cursor.TakeField();
    if (!code) return {};
    const Bytes record = OfficeRecord(*name, *code);
    if (record.empty()) return {};
    records += record;
    ++count;
  }
  return {};
}

}  // namespace ox
