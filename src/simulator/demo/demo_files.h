// The files in which device programs are delivered, as far as the demo folder wants some.
#pragma once

#include "platform/bytes.h"

namespace ox::sim {

/// The program file (".pro" or ".pr3") of a program whose size is a multiple of 256 bytes.
Bytes ProgramFile(BytesView program);

/// Lines of a loader hex file that put the bytes at an address and up, none past 0xFFFF; without an end
/// record.
Bytes HexLines(std::size_t address, BytesView bytes);

/// The three demo files: programs of generations II and III, and a loader hex file for generation III whose
/// program tells a newer version. Always the same bytes.
Bytes DemoProgram2();
Bytes DemoProgram3();
Bytes DemoLoaderHex();

}  // namespace ox::sim
