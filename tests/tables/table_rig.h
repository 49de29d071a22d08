// What the tests of the tables share: a user who reads every message, and packed tables that can be read.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "platform/bytes.h"
#include "tables/table_messages.h"

namespace ox {

using Texts = std::vector<std::string>;

/// Keeps the messages in their order, the questions with "? " in front, and gives always the same answer.
class RecordedMessages : public TableMessages {
 public:
  void Show(const std::string& text) override { texts.push_back(text); }
  bool Confirm(const std::string& text) override {
    texts.push_back("? " + text);
    return answer;
  }

  bool WantsFurtherFaults() const override { return wantsAll; }

  Texts texts;
  bool answer = true;
  bool wantsAll = false;
};

/// Packed bytes out of a text in which "_" stands for NUL and "^" for 255.
inline Bytes Packed(Bytes text) {
  std::ranges::replace(text, '_', '\0');
  std::ranges::replace(text, '^', '\xFF');
  return text;
}

/// An entry of the measuring-point table, as such a text; without parameters as long as it is not linked.
inline Bytes Point(const Bytes& number, const Bytes& parameters = "") {
  return number + " 0012-0012Pegel_" + parameters + "^";
}

inline Bytes Office(const Bytes& entries) {
  return "Stand__Amt_123_" + entries + "___";
}

}  // namespace ox
