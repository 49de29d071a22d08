// Breaking replies off.
#include "simulator/device/reply_shape.h"

namespace ox::sim {
namespace {

constexpr size_t kShortestSeveral = 2;  // the framing line and the end line

}  // namespace

ReplyLines Shaped(ReplyLines lines, const ReplyShape& shape) {
  if (!shape.instead.empty()) return {shape.instead};
  const bool several = lines.size() >= kShortestSeveral;
  const bool breaksOff = several && shape.endsAfter && *shape.endsAfter + kShortestSeveral <= lines.size();
  if (several && (breaksOff || shape.cutRecord)) lines.pop_back();
  if (breaksOff) lines.resize(1 + *shape.endsAfter);
  if (shape.cutRecord) lines.back().resize((lines.back().size() + 1) / 2);
  if (breaksOff && !shape.lastWord.empty()) lines.push_back(shape.lastWord);
  if (shape.refusesFirst) lines.insert(lines.begin(), kRefused);
  return lines;
}

}  // namespace ox::sim
