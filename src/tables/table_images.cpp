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
  Bytes body = Slot(kOlderPointsAddress) + Slot(kOlderPointsAddress + linked.size());
  return FinishImage(body.append(linked).append(parameters));
}

TableImage BuildGeneration3Image(BytesView linked, BytesView parameters) {
  const PointSection points = BuildMeasuringPointImage(linked);
  if (points.status == PointSectionStatus::kTooManyPoints) return {ImageStatus::kOverflow, {}};
  const std::array<Bytes, 4> sections = {BuildVersionField(linked), BuildParameterImage(parameters),
                                         BuildOfficeImage(linked), points.bytes};
  static_assert(sections.size() * kSlotSize == kGeneration3HeadSize);
  bool usable = points.status == PointSectionStatus::kBuilt;
  Bytes head;
  Bytes body;
  for (const Bytes& section : sections) {
    usable = usable && !section.empty();
    head += Slot(kGeneration3HeadSize + body.size() - head.size());
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
