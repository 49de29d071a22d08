// From table files to an image.
#include "simulator/demo/demo_tables.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>

#include "tables/linking.h"
#include "tables/mes_table.h"
#include "tables/par_table.h"
#include "tables/table_images.h"
#include "tables/table_messages.h"
#include "tables/table_text.h"
#include "tables/zuo_table.h"

namespace ox::sim {
namespace {

class MessagesOnStandardError : public TableMessages {
 public:
  void Show(const std::string& text) override {
    std::string shown = text;
    std::replace(shown.begin(), shown.end(), '\r', '\n');
    std::cerr << "oxsim: " << shown << std::endl;
  }
  bool Confirm(const std::string& text) override {
    Show(text);
    return true;
  }
};

// The table text of a file; nothing when it cannot be read or is empty.
std::optional<TableText> ReadTable(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  const Bytes content{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  return content.empty() ? std::nullopt : std::optional<TableText>(content);
}

}  // namespace

Bytes ReadDemoImage(const std::string& folder, bool older) {
  const std::filesystem::path path(folder);
  const auto points = ReadTable(path / "netz.mes");
  const auto parameters = ReadTable(path / "netz.par");
  const auto assignments = ReadTable(path / "netz.zuo");
  if (!points || !parameters || !assignments) return {};

  MessagesOnStandardError messages;
  const Bytes packedPoints = ParseMesTable(*points, messages);
  const Bytes packedParameters = ParseParTable(*parameters, messages);
  const Bytes packedAssignments = ParseZuoTable(*assignments, messages);
  if (packedPoints.empty() || packedParameters.empty() || packedAssignments.empty()) return {};
  if (!CheckAssignmentParameters(packedAssignments, packedParameters, messages)) return {};
  const Bytes linked = AttachAssignments(packedPoints, packedAssignments, messages);
  if (linked.empty()) return {};

  const TableImages images = BuildTableImages(linked, packedParameters);
  return older ? images.older.bytes : images.generation3.bytes;
}

}  // namespace ox::sim
