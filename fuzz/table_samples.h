// What the table harnesses share: a user who is quiet, valid tables, and a way to damage them step by step.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "tables/table_messages.h"

namespace ox {

class CountedMessages : public TableMessages {
 public:
  explicit CountedMessages(bool answer = true) : answer_(answer) {}
  void Show(const Bytes&) override { ++shown; }
  bool Confirm(const Bytes&) override { return answer_; }

  std::size_t shown = 0;

 private:
  bool answer_;
};

/// Ends the run as a find.
inline void Require(bool holds) {
  if (!holds) std::abort();
}

inline BytesView View(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

/// The sample after a row of edits, four bytes each: where (two bytes), what (overwrite, insert, erase, cut
/// off) and a byte. So every input of the fuzzer stays close to a valid table.
inline Bytes Damaged(Bytes sample, BytesView edits) {
  constexpr std::size_t kEditSize = 4;
  for (; edits.size() >= kEditSize; edits.remove_prefix(kEditSize)) {
    const std::size_t at = (ByteValue(edits[0]) << 8U | ByteValue(edits[1])) % (sample.size() + 1);
    switch (ByteValue(edits[2]) % 8) {
      case 0:
        sample.resize(at);
        break;
      case 1:
        sample.erase(at, ByteValue(edits[3]) % 32);
        break;
      case 2:
      case 3:
        sample.insert(at, 1, edits[3]);
        break;
      default:
        if (at < sample.size()) sample[at] = edits[3];
    }
  }
  return sample;
}

constexpr const char* kMesSample =
    "Netz\r\n/S/\"1\"\r\n/A/\"Amt\"/Z/\"123\"\n"
    "/N/\"11111111\"/D/\" 0012\"/M/\"-9999\"/T/\"Pegel\"\n/N/\"22222222\" /D/\"-0000\" /M/\" 0000\" "
    "/T/\"X\"\n"
    "/B/ Ende\n/A/\"Leer\"/Z/\"456\"/B/ /E/";
constexpr const char* kParSample =
    "/P/\"0001\"/T/\"Hoehe\"/M/\"m/s\"\n/P/\"1023\"/T/\"123456789\"/M/\"cm \"/E/";
constexpr const char* kZuoSample = "/N/\"11111111\"/P/\"0001,1023\"\n/N/\"16777216\"/P/\"1023\"\n/E/";

}  // namespace ox
