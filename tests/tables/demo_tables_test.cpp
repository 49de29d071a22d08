// The tables that come with the program load, fit together and make both images.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "tables/linking.h"
#include "tables/mes_table.h"
#include "tables/par_table.h"
#include "tables/recorded_messages.h"
#include "tables/table_images.h"
#include "tables/table_text.h"
#include "tables/zuo_table.h"

namespace ox {
namespace {

Bytes DemoText(const std::string& name) {
  std::ifstream file(OX_DEMO_FOLDER "/" + name, std::ios::binary);
  EXPECT_TRUE(file) << name;
  return BuildTableText(FileTextToBytes(Bytes(std::istreambuf_iterator<char>(file), {})));
}

TEST(DemoTables, GoTheWholeWayWithoutAMessage) {
  RecordedMessages messages;
  const Bytes points = ParseMesTable(DemoText("netz.mes"), messages);
  const Bytes parameters = ParseParTable(DemoText("netz.par"), messages);
  const Bytes assignments = ParseZuoTable(DemoText("netz.zuo"), messages);
  ASSERT_TRUE(messages.shown.empty()) << messages.shown.front();
  EXPECT_TRUE(CheckAssignmentParameters(assignments, parameters, messages));
  const Bytes linked = AttachAssignments(points, assignments, messages);
  const TableImages images = BuildTableImages(linked, parameters);
  EXPECT_EQ(images.generation3.status, ImageStatus::kBuilt);
  EXPECT_EQ(images.older.status, ImageStatus::kBuilt);
  EXPECT_TRUE(messages.shown.empty() && messages.asked.empty());

  EXPECT_NE(linked.find("Br}ck"), Bytes::npos);
  const std::size_t gauge = linked.find("12345678");
  ASSERT_NE(gauge, Bytes::npos);
  EXPECT_EQ(linked.substr(gauge + 18, 5), "Pegel");
  const Bytes digits = linked.substr(gauge + 24, linked.find('\xFF', gauge) - gauge - 24);
  EXPECT_NE(digits.find("0012"), Bytes::npos);
}

}  // namespace
}  // namespace ox
