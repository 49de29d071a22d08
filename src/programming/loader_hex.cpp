// Digits and records of a loader hex file.
#include "programming/loader_hex.h"

#include <cstddef>
#include <optional>

#include "platform/field_reader.h"
#include "platform/line_ends.h"
#include "programming/program_file.h"

namespace ox {
namespace {

constexpr char kFieldStart = ':';
constexpr BytesView kEndRecord = ":000000";
constexpr BytesView kDigits = "0123456789ABCDEF";
constexpr unsigned kDigitBits = 4;
constexpr unsigned kByteBits = 8;

// A decoded record: count, address, type, data, check byte.
constexpr std::size_t kAddressHighAt = 1;
constexpr std::size_t kAddressLowAt = 2;
constexpr std::size_t kDataAt = 4;
constexpr std::size_t kCheckSize = 1;

/// Only addresses below this one are packed.
constexpr std::size_t kPackedEnd = 0x8000;

/// The bytes of a field; nothing when it is not made of pairs of digits behind its first character, or sums
/// up wrongly.
std::optional<Bytes> Decode(BytesView field) {
  if (!field.starts_with(kFieldStart)) return std::nullopt;
  const BytesView digits = field.substr(1);
  if (digits.size() % 2 != 0) return std::nullopt;
  Bytes record;
  unsigned sum = 0;
  for (std::size_t at = 0; at < digits.size(); at += 2) {
    const std::size_t high = kDigits.find(digits[at]);
    const std::size_t low = kDigits.find(digits[at + 1]);
    if (high == BytesView::npos || low == BytesView::npos) return std::nullopt;
    record += ByteOf(static_cast<unsigned>(high << kDigitBits | low));
    sum += ByteValue(record.back());
  }
  if (ByteOf(sum) != '\0') return std::nullopt;
  return record;
}

/// Writes a record's data to their place; false when the record is too short or runs out of the image.
bool Store(BytesView record, Bytes& image) {
  if (record.size() < kDataAt + kCheckSize) return false;
  const std::size_t address =
      ByteValue(record[kAddressHighAt]) << kByteBits | ByteValue(record[kAddressLowAt]);
  if (address >= kPackedEnd) return true;
  const BytesView data = record.substr(kDataAt, record.size() - kDataAt - kCheckSize);
  if (address + data.size() > image.size()) return false;
  image.replace(address, data.size(), data);
  return true;
}

/// The first field that makes the file faulty, the empty rest of the text where the end record is missing;
/// nothing when the file is sound.
std::optional<BytesView> FaultyField(BytesView text, Bytes& image) {
  FieldReader fields(text);
  while (!fields.AtEnd()) {
    const BytesView field = fields.Next();
    if (field.starts_with(kEndRecord)) return std::nullopt;
    const std::optional<Bytes> record = Decode(field);
    if (!record || !Store(*record, image)) return field;
  }
  return text.substr(text.size());
}

}  // namespace

bool ReadLoaderHex(BytesView text, Bytes& image) {
  return !FaultyField(text, image);
}

int FaultyHexLine(BytesView text) {
  Bytes image(kProgramFormat3.ProgramSize(), '\0');
  const auto field = FaultyField(text, image);
  if (!field) return 0;
  int line = 1;
  for (const char* at = text.data(); at != field->data(); ++at) {
    if (*at == kLf || (*at == kCr && (at + 1 == field->data() || at[1] != kLf))) ++line;
  }
  return line;
}

}  // namespace ox
