// The memory of a simulated device that its loader writes: station tables and program.
#pragma once

#include <cstddef>
#include <string>

#include "platform/bytes.h"

namespace ox::sim {

/// The table area: an image of the station tables, its last two bytes the checksum.
inline constexpr std::size_t kTableMemorySize = 16384;

/// The program areas of the generations; the last two bytes are the check word.
inline constexpr std::size_t kSmallProgramSize = 0x8000;   // generations I and II
inline constexpr std::size_t kLargeProgramSize = 0x10000;  // generation III

/// Where a program carries its software version: a text of printable characters.
inline constexpr std::size_t kVersionAddress = 0x0100;
inline constexpr std::size_t kVersionSize = 16;

/// How the program area of a device is made.
struct ProgramLayout {
  std::size_t size;   ///< in bytes
  unsigned sumStart;  ///< what the check word's sum starts at
};
inline constexpr ProgramLayout kSmallProgram{kSmallProgramSize, 1};
inline constexpr ProgramLayout kLargeProgram{kLargeProgramSize, 2};

/// The check word of a program: a 16-bit sum over all its bytes, its own two taken as 0. The program must
/// have the layout's size.
unsigned ProgramCheckWord(BytesView program, const ProgramLayout& layout);

/// The same program with its check word put in, low byte first.
Bytes WithCheckWord(Bytes program, const ProgramLayout& layout);

/// Table and program memory. A new device has empty tables and a sound program from its factory.
class DeviceMemory {
 public:
  /// The factory version is cut or padded with blanks to kVersionSize characters.
  DeviceMemory(const ProgramLayout& layout, BytesView factoryVersion);

  const Bytes& Tables() const { return tables_; }
  const Bytes& Program() const { return program_; }
  const ProgramLayout& Layout() const { return layout_; }

  /// Sets every byte of the area to 0xFF.
  void EraseTables();
  void EraseProgram();

  /// Writes data at an address of the area. False, and nothing written, when it does not fit into the area.
  bool WriteTables(std::size_t address, BytesView data);
  bool WriteProgram(std::size_t address, BytesView data);

  /// The device's own checks: image checksum of the tables, check word of the program.
  bool TablesSound() const;
  bool ProgramSound() const;

  /// The version that the program carries, kVersionSize characters; the factory's when there is no printable
  /// text.
  Bytes SoftwareVersion() const;

 private:
  ProgramLayout layout_;
  Bytes factoryVersion_;
  Bytes tables_;
  Bytes program_;
};

}  // namespace ox::sim
