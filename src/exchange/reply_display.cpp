// Splitting a reply into records and laying them out.
#include "exchange/reply_display.h"

#include "platform/line_ends.h"
#include "tables/packed_tables.h"

namespace ox {
namespace {

constexpr char kNumberEnd = ':';
constexpr BytesView kBetweenRecords = "|";

/// Right-aligns the name where the number stands, so that the columns stay in line.
void PutNameForNumber(Bytes& record, const NameIndex& names) {
  constexpr std::size_t kNumberEndOffset = kPointNumberLength;
  if (record.size() <= kNumberEndOffset + 1 || record[kNumberEndOffset] != kNumberEnd) return;
  const BytesView name = names.Find(BytesView(record).substr(0, kPointNumberLength));
  if (name.empty()) return;
  const Bytes padding(kPointNumberLength - name.size(), ' ');
  record.replace(0, kPointNumberLength, padding + Bytes(name));
}

}  // namespace

std::vector<BytesView> ShownRecords(BytesView reply) {
  std::vector<BytesView> records;
  reply.remove_prefix(reply.empty() ? 0 : 1);
  for (;;) {
    const std::size_t end = reply.find(kCr);
    if (end == BytesView::npos || end < kMinRecordLength) return records;
    records.push_back(reply.substr(0, end));
    reply.remove_prefix(end + 1);
  }
}

bool IsRecord(BytesView line) {
  return line.find(kCr) != BytesView::npos && line.find(kCr) >= kMinRecordLength;
}

Bytes FormatRecord(BytesView record, const NameIndex& names) {
  Bytes shown(record.substr(0, kMaxRecordLength));
  PutNameForNumber(shown, names);
  return shown;
}

Bytes FormatValues(BytesView reply, const NameIndex& names) {
  Bytes display;
  std::size_t count = 0;
  for (const BytesView record : ShownRecords(reply)) {
    ++count;
    display.append(FormatRecord(record, names))
        .append(count % kRecordsPerLine == 0 ? kCrLf : kBetweenRecords);
  }
  return display;
}

}  // namespace ox
