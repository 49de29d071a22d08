// Breaking replies off.
#include "simulator/device/reply_shape.h"

#include <algorithm>

namespace ox::sim {
namespace {

constexpr size_t kShortestSeveral = 2;  // the framing line and the end line

}  // namespace

ReplyLines Shaped(ReplyLines lines, const ReplyShape& shape) {
  if (!shape.instead.empty()) return {shape.instead};
  const bool several = lines.size() >= kShortestSeveral;
  if (several && shape.silenceAfter) lines.resize(std::min(lines.size(), 1 + *shape.silenceAfter));
  if (!shape.cutRecord) return lines;
  const bool ended = several && !shape.silenceAfter;
  if (ended) lines.pop_back();
  Bytes& last = lines.back();
  last.resize((last.size() + 1) / 2);
  return lines;
}

}  // namespace ox::sim
