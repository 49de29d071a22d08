// What the data exchange asks the device for, and the checks of the fields before it does.
//
// A request for single values has 20 characters in fixed columns: letter (1), office code (3), blank, number
// of the measuring point (8), ":", blank, parameter (4), CR. For an empty field blanks are sent, also in
// place of its punctuation.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "platform/bytes.h"

namespace ox {

/// All values, and the time: bare letters.
inline constexpr BytesView kCollectiveRequest = "P";
inline constexpr BytesView kTimeRequest = "T";

/// The window's fields as they were typed.
struct PollFields {
  Bytes AKZ;  // office code
  Bytes MST;  // measuring-point number
  Bytes Par;  // parameter number
};

/// True for an empty text, and for one of exactly `count` digits.
bool CheckDigits(BytesView text, std::size_t count);

/// The message (UTF-8) that refuses the fields, and which of them it names.
struct PollRefusal {
  std::string_view message;
  bool AKZ = false;
  bool MST = false;
  bool Par = false;
};

/// The refusal of the fields for "Abruf J"; nothing when they are right.
std::optional<PollRefusal> RefusalOfSingleRequest(const PollFields& fields);
/// The same for "Abruf Z".
std::optional<PollRefusal> RefusalOfZRequest(const PollFields& fields);

/// The note (UTF-8) before a poll whose office code counts for nothing.
inline constexpr std::string_view kRedundantOffice =
    "Hinweis: Amtskennzeichen ist redundant und wird deshalb von der Orvanexe nicht ausgewertet!";
/// Whether it is due: the number of the point tells the office as well.
bool OfficeIsRedundant(const PollFields& fields);

/// "Abruf J": each field may be empty.
Bytes SingleRequest(const PollFields& fields);
/// "Abruf Z": number and parameter must not be empty.
Bytes ZRequest(const PollFields& fields);

/// The office code that the device goes by: beside a number it does not look at it.
BytesView OfficeAskedFor(const PollFields& fields);

/// Whether number and parameter name one value; with only one of them, a reply may have several records.
bool NamesOneValue(const PollFields& fields);

/// What is shown of the reply to "Abruf Z": one record.
Bytes ShownOfZReply(BytesView reply);

}  // namespace ox
