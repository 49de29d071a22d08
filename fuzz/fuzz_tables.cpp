// Tables as files, packed and as images: any bytes, and valid ones with damage.
#include "harness.h"
#include "platform/utf8.h"
#include "small_tables.h"
#include "tables/content_text.h"
#include "tables/image_content.h"
#include "tables/image_fill.h"
#include "tables/linking.h"
#include "tables/mes_table.h"
#include "tables/par_table.h"
#include "tables/table_images.h"
#include "tables/table_summary.h"
#include "tables/table_text.h"
#include "tables/zuo_table.h"

namespace ox {
namespace {

struct CountedMessages : TableMessages {
  void Show(const std::string& text) override {
    if (++shown == 1) first = text;
  }
  bool Confirm(const std::string&) override { return answer; }
  bool WantsFurtherFaults() const override { return wantsAll; }

  std::string first;
  std::size_t shown = 0;
  bool wantsAll = false;
  bool answer = true;
};

/// A file is reported once or packed as a whole.
Bytes Parsed(Bytes (*parse)(const TableText&, TableMessages&), BytesView file, BytesView end) {
  CountedMessages messages;
  Bytes packed = parse(TableText(file), messages);
  Require(packed.empty() ? messages.shown == 1 : messages.shown == 0 && packed.ends_with(end));
  CountedMessages all;  // who wants every fault hears the same one first
  all.wantsAll = true;
  Require(parse(TableText(file), all) == packed && all.first == messages.first);
  return packed;
}

/// Linking can read what the parser accepts; it refuses only tables without an office.
void CheckPoints(const Bytes& points) {
  CountedMessages messages;
  const bool offices = points.find('\0', points.find('\0') + 2) + 1 != points.size();
  Require(AttachAssignments(points, Bytes(8, '\0'), messages) == (offices ? points : Bytes()));
  Require(messages.shown == (offices ? 0U : 1U));
}

/// The files that an image is read back as make the same image again.
void ReadBack(const TableImage& image, TableImage TableImages::*which) {
  const ImageContent content = ReadTableImage(image.bytes);
  Require(content.faults.empty() && content.bodySize == image.bodySize);
  const Bytes assignments = Parsed(ParseZuoTable, AssignmentTableText(content.tables), BytesView("\0", 1));
  if (assignments.size() == 1) return;  // no point has a parameter, and linking refuses an empty table
  const auto images = BuildImagesSilently(
      Parsed(ParseMesTable, PointTableText(content.tables), BytesView("\0", 1)),
      Parsed(ParseParTable, ParameterListText(content.tables), BytesView("\0\0", 2)), assignments);
  Require(images && ((*images).*which).bytes == image.bytes);
}

/// Any image is read without harm.
void ReadDamaged(const Bytes& image, BytesView edits) {
  Bytes damaged = Damaged(image, edits);
  damaged.resize(kImageSize);
  const ImageContent content = ReadTableImage(damaged);
  const std::string text = PointTableText(content.tables) + ParameterListText(content.tables) +
                           AssignmentTableText(content.tables);
  Require(IsUtf8(text) && content.bodySize <= kImageSize);
}

void Link(const Bytes& points, const Bytes& parameters, const Bytes& assignments, bool answer) {
  CountedMessages checking;
  const bool fits = CheckAssignmentParameters(assignments, parameters, checking);
  Require(checking.shown == (fits ? 0U : 1U));
  CountedMessages attaching;
  attaching.answer = answer;
  const Bytes linked = AttachAssignments(points, assignments, attaching);
  Require(DescribeParameterList(parameters).ends_with(" Parameter"));
  Require(!DescribeAssignmentTable(assignments).empty());
  Require(!linked.empty() || attaching.shown > 0 || !answer);
  for (const Bytes& table : {linked, points}) {  // also one that linking never saw
    const auto [newer, older] = BuildTableImages(table, parameters);
    Require(older.status != ImageStatus::kUnusable);
    for (const TableImage& image : {newer, older}) {
      Require(image.bytes.size() == (image.status == ImageStatus::kBuilt ? kImageSize : 0));
      Require(image.status != ImageStatus::kBuilt || image.bodySize <= kMaxImageBody);
    }
    Require(DescribePointTable(table).starts_with("Stand "));
  }
}

}  // namespace

void Fuzz(unsigned choice, BytesView input) {
  const bool files = (choice & 8U) != 0;  // the input stands for files, else for packed tables
  const auto packed = [&](unsigned table, auto* parse, BytesView file, BytesView end) {
    const auto tried = [&](BytesView valid) {
      if ((choice >> table & 1U) == 0) return Bytes(valid);
      return (choice & 16U) != 0 ? Bytes(input) : Damaged(Bytes(valid), input);
    };
    const Bytes sound = Parsed(parse, file, end);
    Require(!sound.empty());
    return files ? Parsed(parse, tried(file), end) : tried(sound);
  };
  const Bytes points = packed(0, ParseMesTable, kMesFile, BytesView("\0", 1));
  const Bytes parameters = packed(1, ParseParTable, kParFile, BytesView("\0\0", 2));
  const Bytes assignments = packed(2, ParseZuoTable, kZuoFile, BytesView("\0", 1));
  if (files && !points.empty()) CheckPoints(points);
  const auto images = BuildImagesSilently(points, parameters, assignments);
  for (const auto which : {&TableImages::generation3, &TableImages::older}) {
    if (!images || ((*images).*which).status != ImageStatus::kBuilt) continue;
    if (files) ReadBack((*images).*which, which);
    ReadDamaged(((*images).*which).bytes, input);
  }
  Link(points, parameters, assignments, (choice & 32U) != 0);
}

}  // namespace ox
