// Every record looked at, also behind a faulty one.
#include "programming/program_inspection.h"

namespace ox {

ProgramInspection InspectProgramFile(BytesView file, const ProgramFormat& format) {
  constexpr unsigned kByteMask = 0xFF;
  ProgramInspection inspection;
  Bytes program;
  for (std::size_t place = 0; place < format.records; ++place) {
    const Bytes record = PlainProgramRecord(file, place);
    const OddRecord odd{place, ByteValue(record.front()), ByteSum(record) & kByteMask};
    if (odd.sum != 0) inspection.wrongSums.push_back(odd);
    if (odd.number != (place & kByteMask)) inspection.wrongNumbers.push_back(odd);
    program.append(record, 1, kProgramPageSize);
  }
  inspection.storedWord = CheckWordIn(program);
  InsertCheckWord(program, format);
  inspection.rightWord = CheckWordIn(program);
  return inspection;
}

}  // namespace ox
