// Where a field begins and ends.
#include "platform/field_reader.h"

#include <algorithm>

#include "platform/line_ends.h"

namespace ox {
namespace {

constexpr char kBlank = ' ';
constexpr BytesView kFieldEnds = ",\r\n";

}  // namespace

BytesView FieldReader::Next() {
  rest_.remove_prefix(std::min(rest_.find_first_not_of(kBlank), rest_.size()));
  BytesView field;
  if (rest_.starts_with(kQuote)) {
    rest_.remove_prefix(1);
    field = TakeUpTo(BytesView(&kQuote, 1));
    TakeUpTo(kFieldEnds);
  } else {
    field = TakeUpTo(kFieldEnds);
  }
  SkipDelimiter();
  return field;
}

BytesView FieldReader::TakeUpTo(BytesView ends) {
  const BytesView taken = rest_.substr(0, rest_.find_first_of(ends));
  rest_.remove_prefix(taken.size());
  return taken;
}

void FieldReader::SkipDelimiter() {
  if (!rest_.empty()) rest_.remove_prefix(rest_.starts_with(kCrLf) ? kCrLf.size() : 1);
}

}  // namespace ox
