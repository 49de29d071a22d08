// What stands in a program file and what is wrong in it, record by record.
#pragma once

#include <cstddef>
#include <vector>

#include "platform/bytes.h"
#include "programming/program_file.h"

namespace ox {

/// A record whose bytes do not sum up to 0, or whose number is another than its place.
struct OddRecord {
  std::size_t record;  ///< its place, from 0
  unsigned number;     ///< the number that it has, 0 to 255
  unsigned sum;        ///< of all its bytes, modulo 256
};

struct ProgramInspection {
  std::vector<OddRecord> wrongSums;     ///< the update refuses the file for any of them
  std::vector<OddRecord> wrongNumbers;  ///< the update does not look at them
  unsigned storedWord = 0;              ///< the check word that the file has
  unsigned rightWord = 0;               ///< the one that belongs to its program bytes
};

/// Looks at all records of a file of the format's size.
ProgramInspection InspectProgramFile(BytesView file, const ProgramFormat& format);

}  // namespace ox
