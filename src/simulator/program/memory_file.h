// A simulated device's memory in files of this host.
#pragma once

#include <filesystem>

#include "simulator/device/device.h"

namespace ox::sim {

/// What a device of these options holds according to the file; empty, as from the factory, when there is no
/// such file. Throws std::runtime_error, in German, when it cannot be read or belongs to another kind of
/// device.
Bytes ReadMemoryFile(const std::filesystem::path& file, const DeviceOptions& options);

/// Writes tables and program into one file for the next start. A failure is told on the standard error
/// stream.
void WriteMemoryFile(const std::filesystem::path& file, const DeviceMemory& memory);

/// Writes them as "tables.bin" and "program.bin" into the folder. A failure is told on the standard error
/// stream.
void DumpMemory(const std::filesystem::path& folder, const DeviceMemory& memory);

}  // namespace ox::sim
