// Packed tables with damage, through linking, every builder and both images.
#include <algorithm>

#include "table_samples.h"
#include "tables/image_sections.h"
#include "tables/linking.h"
#include "tables/mes_table.h"
#include "tables/par_table.h"
#include "tables/point_section.h"
#include "tables/table_images.h"
#include "tables/table_text.h"
#include "tables/zuo_table.h"

namespace ox {
namespace {

struct PackedTables {
  Bytes points;
  Bytes parameters;
  Bytes assignments;
};

PackedTables ValidTables() {
  CountedMessages none;
  return {ParseMesTable(BuildTableText(kMesSample), none), ParseParTable(BuildTableText(kParSample), none),
          ParseZuoTable(BuildTableText(kZuoSample), none)};
}

void CheckImage(const TableImage& image) {
  Require((image.status == ImageStatus::kBuilt) == (image.bytes.size() == kImageSize));
  Require(image.status == ImageStatus::kBuilt || image.bytes.empty());
}

void Build(BytesView linked, BytesView parameters) {
  BuildVersionField(linked);
  BuildParameterImage(parameters);
  BuildOfficeImage(linked);
  const PointSection points = BuildMeasuringPointImage(linked);
  Require(points.bytes.empty() == (points.status == PointSectionStatus::kTooManyPoints));
  const TableImages images = BuildTableImages(linked, parameters);
  CheckImage(images.generation3);
  CheckImage(images.older);
  Require(images.older.status != ImageStatus::kUnusable);
}

}  // namespace
}  // namespace ox

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ox;
  constexpr std::size_t kHead = 3;  // the user's answer, and the shares of the first two tables in the edits
  if (size < kHead) return 0;
  static const PackedTables valid = ValidTables();
  const BytesView edits = View(data + kHead, size - kHead);
  const std::size_t first = std::min<std::size_t>(data[1], edits.size());
  const std::size_t second = std::min<std::size_t>(data[2], edits.size() - first);
  const Bytes points = Damaged(valid.points, edits.substr(0, first));
  const Bytes parameters = Damaged(valid.parameters, edits.substr(first, second));
  const Bytes assignments = Damaged(valid.assignments, edits.substr(first + second));

  CountedMessages checking;
  const bool fits = CheckAssignmentParameters(assignments, parameters, checking);
  Require(checking.shown == (fits ? 0U : 1U));

  const bool go_on = data[0] % 4 != 0;
  CountedMessages attaching(go_on);
  const Bytes linked = AttachAssignments(points, assignments, attaching);
  Require(!linked.empty() || attaching.shown > 0 || !go_on);
  Build(linked, parameters);
  Build(points, parameters);  // a table that linking never saw
  return 0;
}
