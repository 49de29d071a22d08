// A measuring-point table of any bytes, or a valid one with damage: one report or a table that can be linked.
#include "table_samples.h"
#include "tables/linking.h"
#include "tables/mes_table.h"
#include "tables/table_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ox;
  if (size == 0) return 0;
  const BytesView rest = View(data + 1, size - 1);
  const Bytes file = data[0] % 2 == 0 ? Bytes(rest) : Damaged(kMesSample, rest);
  CountedMessages messages;
  const Bytes packed = ParseMesTable(BuildTableText(file), messages);
  Require(messages.shown == (packed.empty() ? 1U : 0U));
  if (packed.empty()) return 0;

  // Whatever the parser lets through, linking walks through; it refuses only tables without an office.
  Require(packed.back() == '\0');
  CountedMessages linking;
  const bool offices = packed.find('\0', packed.find('\0') + 2) + 1 != packed.size();
  const Bytes no_assignments(8, '\0');
  Require(AttachAssignments(packed, no_assignments, linking) == (offices ? packed : Bytes()));
  Require(linking.shown == (offices ? 0U : 1U));
  return 0;
}
