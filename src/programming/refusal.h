// How an update tells that the device did not answer as it should.
#pragma once

#include <string>
#include <string_view>

namespace ox {

/// The message that a request leads to when it is not accepted. A numbered one begins with "Abbruch der
/// Programmierung(13): ".
struct Refusal {
  static constexpr int kNoNumber = 0;
  static constexpr std::string_view kWrongAnswer = "OX antwortet nicht oder falsch!";

  int number = kNoNumber;
  std::string_view text = kWrongAnswer;
  std::string_view warning = {};  // behind the text

  /// UTF-8, ready to be shown.
  std::string Message() const {
    const std::string all = std::string(text).append(warning);
    return Numbered() ? "Abbruch der Programmierung(" + std::to_string(number) + "): " + all : all;
  }

  /// A port that breaks counts as no reply to a request whose refusal has a number; otherwise the port's own
  /// message is shown.
  constexpr bool Numbered() const { return number != kNoNumber; }
};

}  // namespace ox
