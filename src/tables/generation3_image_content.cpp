// The image for devices of generation III: four sections of records.
#include <algorithm>

#include "tables/image_parts.h"
#include "tables/image_sections.h"
#include "tables/packed_tables.h"
#include "tables/point_section.h"
#include "tables/table_images.h"

namespace ox {
namespace {

constexpr std::size_t kWordSize = 2;
constexpr std::size_t kOfficeCodeBytes = 2;

/// Takes a section apart, field by field; once something is missing or no number, nothing counts any more.
class Section {
 public:
  Section(BytesView body, std::size_t start) : body_(body), at_(start) {}

  bool Sound() const { return sound_; }
  std::size_t Position() const { return at_; }
  void GoTo(std::size_t position) { at_ = position; }

  BytesView Take(std::size_t length) {
    sound_ = sound_ && at_ <= body_.size() && length <= body_.size() - at_;
    if (!sound_) return {};
    at_ += length;
    return body_.substr(at_ - length, length);
  }

  std::size_t TakeWord() { return WordAt(Take(kWordSize), 0).value_or(0); }

  void Expect(BytesView bytes) { sound_ = Take(bytes.size()) == bytes && sound_; }

  /// Packed decimal of so many bytes, as the last `digits` of its digits; those before are 0.
  Bytes TakeDecimal(std::size_t bytes, std::size_t digits) {
    constexpr unsigned kDigitBits = 4;
    constexpr unsigned kHighestDigit = 9;
    Bytes text;
    const BytesView packed = Take(bytes);
    for (auto byte = packed.rbegin(); byte != packed.rend(); ++byte) {
      for (const unsigned digit : {ByteValue(*byte) >> kDigitBits, ByteValue(*byte) & 0xFU}) {
        sound_ = sound_ && digit <= kHighestDigit;
        text += static_cast<char>('0' + digit);
      }
    }
    if (!sound_) return {};
    const std::size_t more = text.size() - digits;
    sound_ = text.find_first_not_of('0') >= more;
    return text.substr(more);
  }

  Bytes TakeDifference() {
    constexpr std::size_t kWords = 0x10000;
    constexpr std::size_t kHighest = 9999;
    const std::size_t word = TakeWord();
    const bool negative = word > kWords / 2;
    const std::size_t number = negative ? kWords - word : word;
    sound_ = sound_ && number <= kHighest;
    Bytes digits = std::to_string(number);
    digits.insert(0, kDifferenceLength - 1 - std::min(digits.size(), kDifferenceLength - 1), '0');
    return (negative ? "-" : " ") + digits;
  }

  /// The number of records in its head.
  std::size_t TakeCount() {
    const std::size_t count = TakeWord();
    Expect(kNulPair);
    return count;
  }

 private:
  BytesView body_;
  std::size_t at_;
  bool sound_ = true;
};

/// Where section `number`, from 0, begins.
std::size_t StartOf(BytesView body, std::size_t number) {
  const std::size_t slot = number * kSlotSize;
  return slot + WordAt(body, slot).value_or(0);
}

bool ReadVersion(BytesView body, Bytes& version) {
  const BytesView text = body.substr(std::min(StartOf(body, 0), body.size()), kVersionShown + 1);
  version = text.substr(0, text.find(kNul));
  return version.size() < text.size();
}

bool ReadParameters(Section section, std::vector<ParameterContent>& parameters) {
  for (std::size_t left = section.TakeCount(); left > 0 && section.Sound(); --left) {
    ParameterContent parameter;
    parameter.number = section.TakeDecimal(kParameterNumberLength / 2, kParameterNumberLength);
    parameter.designation = WithoutPadding(section.Take(kDesignationLength));
    parameter.unit = section.Take(kUnitLength);
    if (section.Sound()) parameters.push_back(std::move(parameter));
  }
  section.Expect(kRecordsEnd);
  return section.Sound();
}

bool ReadOffices(Section section, std::vector<OfficeContent>& offices) {
  for (std::size_t left = section.TakeCount(); left > 0 && section.Sound(); --left) {
    OfficeContent office;
    office.code = section.TakeDecimal(kOfficeCodeBytes, kOfficeCodeLength);
    office.name = WithoutPadding(section.Take(kOfficeNameMaxLength));
    if (section.Sound()) offices.push_back(std::move(office));
  }
  section.Expect(kRecordsEnd);
  return section.Sound();
}

/// The parameter numbers of a point up to their end, which is stepped over.
std::vector<Bytes> TakeBlock(Section& blocks) {
  std::vector<Bytes> numbers;
  while (blocks.Sound()) {
    Section ahead = blocks;
    ahead.Expect(kRecordsEnd);
    if (ahead.Sound()) {
      blocks = ahead;
      return numbers;
    }
    numbers.push_back(blocks.TakeDecimal(kParameterNumberLength / 2, kParameterNumberLength));
  }
  return {};
}

/// Points stand in the order of their offices, each with its office's code. `end` becomes the offset behind
/// the last parameter block.
bool ReadPoints(Section section, std::vector<OfficeContent>& offices, std::size_t& end) {
  std::size_t left = section.TakeCount();
  if (left > kMaxPoints) return false;
  auto office = offices.begin();
  Section blocks = section;
  blocks.GoTo(section.Position() + left * kPackedEntrySize + kAreaEnd.size());
  for (; left > 0; --left) {
    PointContent point;
    point.number = section.TakeDecimal(kPointNumberLength / 2, kPointNumberLength);
    const Bytes code = section.TakeDecimal(kOfficeCodeBytes, kOfficeCodeLength);
    point.first = section.TakeDifference();
    point.second = section.TakeDifference();
    point.name = WithoutPadding(section.Take(kPointNameLength));
    section.Expect({&kEntryEnd, 1});
    const std::size_t from = section.Position();
    // The blocks stand in the order of the points. A section that is not sound tells no distance.
    const bool next = from + section.TakeWord() == blocks.Position();
    point.parameters = TakeBlock(blocks);
    if (!next || !blocks.Sound()) return false;
    while (office != offices.end() && office->code != code) ++office;
    if (office == offices.end()) return false;
    office->points.push_back(std::move(point));
  }
  section.Expect(kAreaEnd);
  blocks.Expect(kAreaEnd);
  end = blocks.Position();
  return section.Sound() && blocks.Sound();
}

}  // namespace

std::string ReadGeneration3Body(BytesView body, ImageContent& content) {
  TableContent& tables = content.tables;
  if (!ReadVersion(body, tables.version)) return "Abschnitt 1 (Tabellenstand) ist beschädigt";
  if (!ReadParameters({body, StartOf(body, 1)}, tables.parameters)) {
    return "Abschnitt 2 (Parameter) ist beschädigt";
  }
  if (!ReadOffices({body, StartOf(body, 2)}, tables.offices)) return "Abschnitt 3 (Ämter) ist beschädigt";
  std::size_t end = 0;
  if (!ReadPoints({body, StartOf(body, 3)}, tables.offices, end)) {
    return "Abschnitt 4 (Messstellen) ist beschädigt";
  }
  content.bodySize = end + kAlignment - end % kAlignment;
  return {};
}

}  // namespace ox
