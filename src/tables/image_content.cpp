// Which image it is, and whether it is whole.
#include "tables/image_content.h"

#include "platform/hex_text.h"
#include "tables/image_parts.h"
#include "tables/table_images.h"

namespace ox {

std::optional<std::size_t> WordAt(BytesView bytes, std::size_t offset) {
  if (offset + 1 >= bytes.size()) return std::nullopt;
  return ByteValue(bytes[offset]) | ByteValue(bytes[offset + 1]) << 8U;
}

Bytes WithoutPadding(BytesView text) {
  const std::size_t last = text.find_last_not_of(' ');
  return Bytes(text.substr(0, last == BytesView::npos ? 1 : last + 1));
}

ImageContent ReadTableImage(BytesView image) {
  ImageContent content;
  if (image.size() != kImageSize) {
    content.faults.push_back(std::to_string(image.size()) + " Bytes, ein Abbild hat " +
                             std::to_string(kImageSize));
    return content;
  }
  const BytesView body = image.substr(0, kChecksumOffset);
  const std::size_t first = WordAt(body, 0).value();
  content.generation3 = first == kGeneration3HeadSize;
  if (!content.generation3 && first != kOlderPointsAddress) {
    content.faults.push_back("beginnt mit " + HexWord(first) + " hex, ein Abbild mit " +
                             HexWord(kGeneration3HeadSize) + " oder " + HexWord(kOlderPointsAddress));
    return content;
  }
  const std::size_t sum = ImageChecksum(body);
  const std::size_t stored = WordAt(image, kChecksumOffset).value();
  if (sum != stored) {
    content.faults.push_back("Prüfsumme " + HexWord(stored) + " hex, " + HexWord(sum) + " hex erwartet");
  }
  std::string fault = content.generation3 ? ReadGeneration3Body(body, content) : ReadOlderBody(body, content);
  if (!fault.empty()) content.faults.push_back(std::move(fault));
  return content;
}

}  // namespace ox
