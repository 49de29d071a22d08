// Joins heads, tables and sections into the two images.
#include "tables/table_images.h"

#include <array>
#include <numeric>

#include "tables/encodings.h"
#include "tables/image_sections.h"
#include "tables/point_section.h"

namespace ox {
namespace {

constexpr char kFiller = '\xFF';
constexpr std::size_t kAlignment = 4;

constexpr std::size_t kDeviceMemory = 0x8000;  // device address of an image's first byte
constexpr std::size_t kSlotSize = 4;           // a word, 00 and 00
constexpr std::size_t kOlderHeadSize = 2 * kSlotSize;

Bytes Slot(std::size_t number) {
  return PackWord(number).append(kSlotSize - 2, '\0');
}

TableImage FinishImage(Bytes body) {
  const std::size_t size = body.size();
  if (size > kMaxImageBody) return {ImageStatus::kOverflow, {}, size};
  body.resize(kChecksumOffset, kFiller);
  return {ImageStatus::kBuilt, body + PackWord(ImageChecksum(body)), size};
}

TableImage BuildOlderImage(BytesView linked, BytesView parameters) {
  constexpr std::size_t kPoints = kDeviceMemory + kOlderHeadSize;
  Bytes body = Slot(kPoints) + Slot(kPoints + linked.size());
  return FinishImage(body.append(linked).append(parameters));
}

TableImage BuildGeneration3Image(BytesView linked, BytesView parameters) {
  const PointSection points = BuildMeasuringPointImage(linked);
  if (points.status == PointSectionStatus::kTooManyPoints) return {ImageStatus::kOverflow, {}};
  const std::array<Bytes, 4> sections = {BuildVersionField(linked), BuildParameterImage(parameters),
                                         BuildOfficeImage(linked), points.bytes};
  const std::size_t bodyOffset = sections.size() * kSlotSize;
  bool usable = points.status == PointSectionStatus::kBuilt;
  Bytes head;
  Bytes body;
  for (const Bytes& section : sections) {
    usable = usable && !section.empty();
    head += Slot(bodyOffset + body.size() - head.size());
    body.append(section).append(kAlignment - section.size() % kAlignment, kFiller);
  }
  TableImage image = FinishImage(head + body);
  if (image.status == ImageStatus::kBuilt && !usable) return {ImageStatus::kUnusable, {}};
  return image;
}

}  // namespace

TableImages BuildTableImages(BytesView linked, BytesView parameters) {
  return {BuildGeneration3Image(linked, parameters), BuildOlderImage(linked, parameters)};
}

unsigned ImageChecksum(BytesView image) {
  constexpr unsigned kStart = 2;
  constexpr unsigned kWordMask = 0xFFFF;
  return kWordMask & std::accumulate(image.begin(), image.end(), kStart,
                                     [](unsigned sum, char byte) { return sum + ByteValue(byte); });
}

}  // namespace ox
