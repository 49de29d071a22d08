// Polled values in the forms of a command line.
#pragma once

#include <cstdint>
#include <string>

#include "exchange/name_index.h"
#include "exchange/values_csv.h"

namespace ox::tool {

enum class ValueForm : std::uint8_t {
  kText,
  kTimedText,  ///< with the time of the poll in front
  kCsv,        ///< see values_csv.h
  kJson,       ///< an object a line; what is not known is null, a value that is a number is one
};

/// A line for each record of a reply, UTF-8. The other parameters as those of CsvLines.
std::string ValueLines(ValueForm form, BytesView reply, const NameIndex& names, BytesView office,
                       const CivilTime& polled);

}  // namespace ox::tool
