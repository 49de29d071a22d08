// A user who reads every message and always gives the same answer.
#pragma once

#include <vector>

#include "platform/text.h"
#include "tables/table_messages.h"

namespace ox {

class RecordedMessages : public TableMessages {
 public:
  void Show(const Bytes& text) override { shown.push_back(ToText(text)); }
  bool Confirm(const Bytes& text) override {
    asked.push_back(ToText(text));
    return answer;
  }

  std::vector<std::string> shown;
  std::vector<std::string> asked;
  bool answer = true;
};

/// A byte string that may hold NULs, from a literal.
template <std::size_t n>
Bytes Packed(const char (&literal)[n]) {
  return Bytes(literal, n - 1);
}

}  // namespace ox
