// Any reply under any table: the first half of the bytes is the packed table, the rest what the device sent.
#include <cstdint>

#include "exchange/reply_display.h"
#include "platform/text.h"
#include "tables/packed_tables.h"

namespace {

void Require(bool condition) {
  if (!condition) __builtin_trap();
}

/// Every record gets at most two characters more than it had, its CR counted.
constexpr std::size_t kGrowth = 2;

void CheckNames(ox::BytesView table, ox::BytesView reply, const ox::NameIndex& names) {
  for (std::size_t at = 0; at < reply.size(); ++at) {
    const ox::BytesView number = reply.substr(at, ox::kPointNumberLength);
    const ox::BytesView name = names.Find(number);
    Require(name.empty() || name.size() == ox::kPointNameLength);
    Require(name.empty() || table.find(number) != ox::BytesView::npos);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ox::BytesView bytes(reinterpret_cast<const char*>(data), size);
  const ox::BytesView table = bytes.substr(0, size / 2);
  const ox::BytesView reply = bytes.substr(size / 2);
  const ox::NameIndex names(table);
  CheckNames(table, reply, names);

  const ox::Bytes display = ox::FormatValues(reply, names);
  const ox::Bytes numbers = ox::FormatValues(reply, ox::NameIndex());
  // A name takes exactly the place of its number.
  Require(display.size() == numbers.size());
  Require(display.size() <= reply.size() + reply.size() / ox::kMinRecordLength * kGrowth);
  Require(ox::IsUtf8(ox::ToText(display)));
  return 0;
}
