// What the program computes between two files: tables, program files, packing.
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>

#include "bench/figures.h"
#include "bench/sample_tables.h"
#include "platform/posix/posix_random.h"
#include "programming/firmware_packing.h"
#include "programming/program_file.h"
#include "tables/linking.h"
#include "tables/mes_table.h"
#include "tables/par_table.h"
#include "tables/table_images.h"
#include "tables/table_text.h"
#include "tables/zuo_table.h"

namespace ox::bench {
namespace {

constexpr std::size_t kParsedPoints = 1000;
constexpr std::size_t kLinkedPoints = 500;
constexpr std::size_t kParametersEach = 8;

constexpr double kParseLimit = 10;  // milliseconds, as all of these
constexpr double kLinkLimit = 20;
constexpr double kLoadLimit = 5;
constexpr double kPackLimit = 50;

/// A figure counts only when the work succeeded.
void Check(bool good, const char* what) {
  if (good) return;
  std::cerr << "bench_files: " << what << std::endl;
  std::exit(EXIT_FAILURE);
}

class NoMessages : public TableMessages {
 public:
  void Show(const std::string& text) override { Check(false, text.c_str()); }
  bool Confirm(const std::string& text) override {
    Check(false, text.c_str());
    return false;
  }
};

Bytes DemoFile(const char* name) {
  std::ifstream file(std::string(OX_DEMO_FOLDER "/") + name, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(file), {});
}

void MeasureTables(Figures& figures) {
  NoMessages messages;
  const Bytes file = MakeSampleTables(kParsedPoints, 1).points;
  figures.Print("parse a table of 1000 points", MedianMilliseconds([&] {
                  Check(!ParseMesTable(TableText(file), messages).empty(), "table not parsed");
                }),
                "ms", kParseLimit);

  const SampleTables tables = MakeSampleTables(kLinkedPoints, kParametersEach);
  const Bytes points = ParseMesTable(TableText(tables.points), messages);
  const Bytes parameters = ParseParTable(TableText(tables.parameters), messages);
  const Bytes assignments = ParseZuoTable(TableText(tables.assignments), messages);
  figures.Print("link and build 500 points of 8 parameters", MedianMilliseconds([&] {
                  Check(CheckAssignmentParameters(assignments, parameters, messages), "unknown parameter");
                  const Bytes linked = AttachAssignments(points, assignments, messages);
                  // Every section is built, only then their sum turns out too long for a device.
                  const TableImages images = BuildTableImages(linked, parameters);
                  Check(images.generation3.status == ImageStatus::kOverflow, "no overflow");
                }),
                "ms", kLinkLimit);
}

void MeasurePrograms(Figures& figures) {
  for (const auto& [name, path, format] : {std::tuple{"load a .pro file", "ox2.pro", kProgramFormat2},
                                           std::tuple{"load a .pr3 file", "ox3.pr3", kProgramFormat3}}) {
    figures.Print(name, MedianMilliseconds([&path = path, &format = format] {
                    const Bytes file = DemoFile(path);
                    Check(ReadProgramFile(file, format).status == ProgramFileStatus::kGood, path);
                  }),
                  "ms", kLoadLimit);
  }
  PosixRandom random;
  figures.Print("pack a loader file", MedianMilliseconds([&] {
                  Check(PackFirmware(DemoFile("OX3NEU.LDR"), random).has_value(), "loader file faulty");
                }),
                "ms", kPackLimit);
}

}  // namespace
}  // namespace ox::bench

int main() {
  ox::bench::Figures figures;
  ox::bench::MeasureTables(figures);
  ox::bench::MeasurePrograms(figures);
  return figures.ExitStatus();
}
