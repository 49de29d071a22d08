// What a day must show and leave in the device, worked out beside the program.
#pragma once

#include <map>
#include <string>

#include "platform/bytes.h"
#include "simulator/polls.h"
#include "simulator/station_data.h"
#include "tables/table_images.h"

namespace ox::test {

/// The images of netz.mes, netz.par and netz.zuo in a folder.
TableImages ImagesOf(const std::string& folder);

/// The program in a program file's content: its records without number, check byte and scrambling.
Bytes PlainProgram(BytesView file);

/// What the data exchange shows of one poll, UTF-8, lines ended by LF.
struct ShownPoll {
  std::string trace;
  std::string values;
};

/// The trace of a dialogue: wake-up, request, the lines of the reply, thanks.
std::string TraceOf(const Bytes& request, const sim::ReplyLines& reply);

/// A device with the same network and the same luck as the one on the line: asked the same, it says the same.
class Twin {
 public:
  explicit Twin(const std::string& folder, bool older = false) { TakeTables(folder, older); }

  /// It now has the network of a folder's tables.
  void TakeTables(const std::string& folder, bool older = false);
  /// Numbers are shown as names from now on; none is known before. The file is UTF-8.
  void LearnNames(const std::string& mesFile);
  void ForgetNames() { names_.clear(); }

  ShownPoll Poll(const Bytes& request);

 private:
  std::string Shown(const Bytes& record) const;

  static constexpr std::uint32_t kSeed = 1;  // oxsim's when it is not told another

  sim::Polls polls_{kSeed};
  sim::StationData stations_;
  std::map<Bytes, Bytes> names_;  // each of five characters
};

}  // namespace ox::test
