// A parameter list and an assignment table of any bytes, or valid ones with damage: one report or a whole
// table.
#include "table_samples.h"
#include "tables/linking.h"
#include "tables/par_table.h"
#include "tables/table_text.h"
#include "tables/zuo_table.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ox;
  if (size == 0) return 0;
  const BytesView rest = View(data + 1, size - 1);
  const bool raw = data[0] % 2 == 0;

  CountedMessages list_messages;
  const Bytes list =
      ParseParTable(BuildTableText(raw ? Bytes(rest) : Damaged(kParSample, rest)), list_messages);
  Require(list_messages.shown == (list.empty() ? 1U : 0U));
  Require(list.empty() || list.ends_with(Bytes(2, '\0')));

  CountedMessages messages;
  const Bytes assignments =
      ParseZuoTable(BuildTableText(raw ? Bytes(rest) : Damaged(kZuoSample, rest)), messages);
  Require(messages.shown == (assignments.empty() ? 1U : 0U));
  Require(assignments.empty() || assignments.ends_with('\0'));

  CountedMessages linking;
  const bool linked = CheckAssignmentParameters(assignments, list, linking);
  Require(linking.shown == (linked ? 0U : 1U));
  return 0;
}
