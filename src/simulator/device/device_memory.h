// The memory of a simulated device that its loader writes: station tables and program.
#pragma once

#include <cstddef>

#include "platform/bytes.h"
#include "simulator/device/program_layout.h"
#include "simulator/device/table_checksum.h"

namespace ox::sim {

/// Table and program memory. A new device has a sound program from its factory.
class DeviceMemory {
 public:
  /// The factory version is cut or padded with blanks to kVersionSize characters. The table memory begins
  /// with this image of kTableImageSize bytes, or erased when there is none.
  DeviceMemory(const ProgramLayout& layout, BytesView factoryVersion, BytesView tables);

  /// All that is kept while the device is off: tables, then program.
  Bytes Contents() const { return tables_ + program_; }
  /// Puts back what Contents gave. False, and nothing changed, when it is of another size.
  bool Restore(BytesView contents);

  const Bytes& Tables() const { return tables_; }
  const Bytes& Program() const { return program_; }

  /// Sets every byte of the area to 0xFF.
  void EraseTables();
  void EraseProgram();

  /// Writes data at an address of the area. False, and nothing written, when it does not fit into the area.
  bool WriteTables(std::size_t address, BytesView data);
  bool WriteProgram(std::size_t address, BytesView data);

  /// The device's own checks: image checksum of the tables, check word of the program.
  bool TablesSound() const;
  bool ProgramSound() const;

  /// The version that the program tells, kVersionSize characters; the factory's where it tells none.
  Bytes SoftwareVersion() const;

 private:
  ProgramLayout layout_;
  Bytes program_;
  Bytes tables_;
  Bytes factoryVersion_;
};

}  // namespace ox::sim
