// Layout of the packed tables, which the parsers write and linking, images and the value display read;
// docs/device-formats.md shows each with an example.
//
// Packed measuring-point table: version, NUL, NUL; per office: name, NUL, code, NUL, entries, NUL, NUL; NUL.
//   An entry: number (8), first difference (5), second difference (5), name (5), NUL, 255. In the linked
//   table the parameter numbers of the point (4 each) stand between the entry's NUL and its 255.
// Packed parameter list: entries, NUL, NUL.
//   An entry: number (4), blank, designation (9), blank, unit (1 to 3), NUL.
// Packed assignment table: assignments, NUL.
//   An assignment: measuring-point number (8), parameter numbers (4 each), NUL.
#pragma once

#include <cstddef>

#include "platform/bytes.h"

namespace ox {

constexpr char kNul = '\0';
constexpr char kEntryEnd = '\xFF';        // ends an entry of the measuring-point table
constexpr BytesView kNulPair{"\0\0", 2};  // ends version, office and parameter list
constexpr char kPadding = ' ';            // fills names on the right

// Lengths of fields, in characters.
constexpr std::size_t kVersionMaxLength = 16;
constexpr std::size_t kOfficeNameMaxLength = 14;
constexpr std::size_t kOfficeCodeLength = 3;
constexpr std::size_t kPointNumberLength = 8;
constexpr std::size_t kDifferenceLength = 5;  // a sign, "-" or blank, and four digits
constexpr std::size_t kPointNameLength = 5;
constexpr std::size_t kParameterNumberLength = 4;
constexpr std::size_t kDesignationLength = 9;
constexpr std::size_t kUnitLength = 3;

/// Number, differences and name of a measuring point; its NUL and its 255 follow.
constexpr std::size_t kEntryTextLength = kPointNumberLength + 2 * kDifferenceLength + kPointNameLength;
/// A whole entry of the measuring-point table that is not linked yet.
constexpr std::size_t kEntryLength = kEntryTextLength + 2;

/// A parameter entry without its NUL, where the unit has all its three characters.
constexpr std::size_t kParameterTextLength =
    kParameterNumberLength + 1 + kDesignationLength + 1 + kUnitLength;
/// From one parameter entry to the next. The lookup of a parameter goes in steps of this length. A parsed
/// list may hold shorter units; the entries behind such a unit are out of step and not found.
constexpr std::size_t kParameterStride = kParameterTextLength + 1;

/// The highest parameter number the device knows.
constexpr BytesView kHighestParameterNumber = "1023";

}  // namespace ox
