// Linking without a word, and the share of an image that is used.
#include "tables/image_fill.h"

#include <cstddef>

#include "tables/linking.h"
#include "tables/point_section.h"

namespace ox {
namespace {

/// A user who hears nothing and goes on at every warning.
class NoMessages : public TableMessages {
 public:
  void Show(const std::string& /*text*/) override {}
  bool Confirm(const std::string& /*text*/) override { return true; }
};

}  // namespace

std::string DescribeShare(std::size_t used) {
  constexpr std::size_t kWhole = 100;
  const std::size_t percent = (used * kWhole + kMaxImageBody - 1) / kMaxImageBody;
  return std::to_string(used) + " von " + std::to_string(kMaxImageBody) + " Bytes (" +
         std::to_string(percent) + " %)";
}

std::optional<TableImages> BuildImagesSilently(BytesView points, BytesView parameters,
                                               BytesView assignments) {
  NoMessages messages;
  if (!CheckAssignmentParameters(assignments, parameters, messages)) return std::nullopt;
  const Bytes linked = AttachAssignments(points, assignments, messages);
  if (linked.empty()) return std::nullopt;
  return BuildTableImages(linked, parameters);
}

std::string DescribeFill(const TableImage& image) {
  if (image.status == ImageStatus::kUnusable) return "Tabellen nicht verwendbar";
  if (image.status == ImageStatus::kBuilt) return DescribeShare(image.bodySize);
  return image.bodySize == 0 ? "mehr als " + std::to_string(kMaxPoints) + " Messstellen"
                             : "zu groß: " + DescribeShare(image.bodySize);
}

}  // namespace ox
