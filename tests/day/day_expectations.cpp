// Images, programs and displays, by other ways than the program's windows.
#include "day/day_expectations.h"

#include <algorithm>
#include <stdexcept>

#include "platform/scratch_folder.h"
#include "platform/text.h"
#include "simulator/demo_stations.h"
#include "tables/linking.h"
#include "tables/mes_table.h"
#include "tables/par_table.h"
#include "tables/table_text.h"
#include "tables/zuo_table.h"

namespace ox::test {
namespace {

/// Sound tables give no messages.
class NoMessages : public TableMessages {
 public:
  void Show(const Bytes& text) override { throw std::runtime_error(ToText(text)); }
  bool Confirm(const Bytes& text) override { throw std::runtime_error(ToText(text)); }
};

Bytes TableIn(const std::string& path) {
  return BuildTableText(FileTextToBytes(ReadFile(path)));
}

/// "<CR>" for the one at the end.
std::string TraceLine(const char* direction, Bytes text) {
  const bool cr = text.ends_with('\r');
  if (cr) text.pop_back();
  return direction + ToText(text) + (cr ? "<CR>" : "") + "\n";
}

}  // namespace

TableImages ImagesOf(const std::string& folder) {
  NoMessages messages;
  const Bytes points = ParseMesTable(TableIn(folder + "/netz.mes"), messages);
  const Bytes parameters = ParseParTable(TableIn(folder + "/netz.par"), messages);
  const Bytes assignments = ParseZuoTable(TableIn(folder + "/netz.zuo"), messages);
  return BuildTableImages(AttachAssignments(points, assignments, messages), parameters);
}

Bytes PlainProgram(BytesView file) {
  constexpr std::size_t kRecord = 258;
  constexpr std::size_t kPage = 256;
  constexpr unsigned kScrambled = 0xC3;  // all but the first record
  Bytes program;
  for (std::size_t at = 0; at < file.size(); at += kRecord) {
    for (const char byte : file.substr(at + 1, kPage)) {
      program += ByteOf(at == 0 ? ByteValue(byte) : ByteValue(byte) ^ kScrambled);
    }
  }
  return program;
}

std::string TraceOf(const Bytes& request, const sim::ReplyLines& reply) {
  constexpr const char* kSent = "PC -> OX  ";
  constexpr const char* kReceived = "PC <- OX  ";
  std::string trace = TraceLine(kSent, "S") + TraceLine(kReceived, "A") + TraceLine(kSent, request);
  for (const Bytes& line : reply) trace += TraceLine(kReceived, line);
  return trace + "PC -> OX  A";
}

void Twin::TakeTables(const std::string& folder, bool older) {
  stations_ = sim::ReadDemoStations(folder, older).value();
}

void Twin::LearnNames(const std::string& mesFile) {
  constexpr std::string_view kNumberMark = "/N/\"";
  constexpr std::string_view kNameMark = "/T/\"";
  constexpr std::size_t kNumberLength = 8;
  constexpr std::size_t kNameLength = 5;
  const std::string table = ReadFile(mesFile);
  for (std::size_t at = 0; (at = table.find(kNumberMark, at)) != std::string::npos;) {
    at += kNumberMark.size();
    const std::size_t name = table.find(kNameMark, at) + kNameMark.size();
    Bytes& learnt = names_[table.substr(at, kNumberLength)];
    learnt = ToBytes(table.substr(name, table.find('"', name) - name));
    learnt.resize(kNameLength, ' ');
  }
}

ShownPoll Twin::Poll(const Bytes& request) {
  constexpr std::size_t kShownOfZ = 23;
  const bool z = request.front() == 'Z';
  const sim::ReplyLines reply = request == "P" ? polls_.AnswerP(stations_, 0)
                                : z            ? polls_.AnswerZ(request, stations_)
                                               : polls_.AnswerJ(request, stations_);
  ShownPoll shown{TraceOf(request, reply), {}};
  int records = 0;
  for (Bytes line : reply) {
    if (line == "\r" || line == "E\r") continue;
    line.pop_back();
    // A single record has its framing character on its own line.
    if (reply.size() == 1) line.erase(0, 1);
    shown.values += Shown(z ? line.substr(0, kShownOfZ) : line) + (++records % 3 == 0 ? "\n" : "|");
  }
  return shown;
}

std::string Twin::Shown(const Bytes& record) const {
  const auto name = names_.find(record.substr(0, record.find(':')));
  return ToText(name == names_.end() ? record : "   " + name->second + record.substr(name->first.size()));
}

}  // namespace ox::test
