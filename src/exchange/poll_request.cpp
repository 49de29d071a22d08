// Field checks in their order, and requests in their columns.
#include "exchange/poll_request.h"

#include "platform/line_ends.h"
#include "tables/table_characters.h"

namespace ox {
namespace {

constexpr std::size_t kOfficeDigits = 3;
constexpr std::size_t kPointDigits = 8;
constexpr std::size_t kParameterDigits = 4;

/// Of a reply to "Abruf Z": its framing character and one record.
constexpr std::size_t kZReplyLength = 24;

constexpr BytesView kAfterOffice = " ";
constexpr BytesView kAfterPoint = ": ";

constexpr std::string_view kNoField =
    "Mindestens eines der drei Felder - Amtskennzeichen, Parameter oder Messstellennummer - muss einen "
    "Eintrag enthalten!";
constexpr std::string_view kNoValueNamed = "Parameter und Messstellennummer müssen einen eingegeben sein!";
constexpr std::string_view kBadOffice =
    "Das Feld  > Amtskennzeichen <  muss leer sein oder drei Ziffern enthalten!";
constexpr std::string_view kBadParameter =
    "Das Feld  > Parameter <  muss leer sein oder vier Ziffern enthalten!";
constexpr std::string_view kBadPoint =
    "Das Feld  > Messstellennummer <  muss leer sein oder acht Ziffern enthalten!";

std::optional<PollRefusal> RefusalOfDigits(const PollFields& fields) {
  if (!CheckDigits(fields.AKZ, kOfficeDigits)) return PollRefusal{.message = kBadOffice, .AKZ = true};
  if (!CheckDigits(fields.Par, kParameterDigits)) return PollRefusal{.message = kBadParameter, .Par = true};
  if (!CheckDigits(fields.MST, kPointDigits)) return PollRefusal{.message = kBadPoint, .MST = true};
  return std::nullopt;
}

/// A field and what follows it; blanks in place of both when the field is empty.
Bytes Column(BytesView field, std::size_t width, BytesView after) {
  return field.empty() ? Bytes(width + after.size(), ' ') : Bytes(field).append(after);
}

Bytes Request(char letter, const PollFields& fields) {
  return Bytes(1, letter) + Column(fields.AKZ, kOfficeDigits, kAfterOffice) +
         Column(fields.MST, kPointDigits, kAfterPoint) + Column(fields.Par, kParameterDigits, {}) + kCr;
}

}  // namespace

bool CheckDigits(BytesView text, std::size_t count) {
  return text.empty() || (text.size() == count && !DigitsOnly(text).empty());
}

std::optional<PollRefusal> RefusalOfSingleRequest(const PollFields& fields) {
  if (fields.AKZ.empty() && fields.MST.empty() && fields.Par.empty()) {
    return PollRefusal{.message = kNoField, .AKZ = true, .MST = true, .Par = true};
  }
  return RefusalOfDigits(fields);
}

std::optional<PollRefusal> RefusalOfZRequest(const PollFields& fields) {
  if (!NamesOneValue(fields)) {
    return PollRefusal{.message = kNoValueNamed, .MST = fields.MST.empty(), .Par = fields.Par.empty()};
  }
  return RefusalOfDigits(fields);
}

bool OfficeIsRedundant(const PollFields& fields) {
  return !fields.AKZ.empty() && !fields.MST.empty();
}

Bytes SingleRequest(const PollFields& fields) {
  return Request('J', fields);
}

Bytes ZRequest(const PollFields& fields) {
  return Request('Z', fields);
}

BytesView OfficeAskedFor(const PollFields& fields) {
  return fields.MST.empty() ? BytesView(fields.AKZ) : BytesView();
}

bool NamesOneValue(const PollFields& fields) {
  return !fields.MST.empty() && !fields.Par.empty();
}

Bytes ShownOfZReply(BytesView reply) {
  return Bytes(reply.substr(0, kZReplyLength)) + kCr;
}

}  // namespace ox
