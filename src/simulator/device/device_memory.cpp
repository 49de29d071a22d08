// Erasing, writing and verifying the memory of a simulated device.
#include "simulator/device/device_memory.h"

#include "simulator/device/sample_program.h"

namespace ox::sim {
namespace {

constexpr char kErased = '\xFF';
constexpr unsigned kFactorySeed = 1;

bool Write(Bytes& area, std::size_t address, BytesView data) {
  if (address > area.size() || data.size() > area.size() - address) return false;
  area.replace(address, data.size(), data);
  return true;
}

}  // namespace

DeviceMemory::DeviceMemory(const ProgramLayout& layout, BytesView factoryVersion, BytesView tables)
    : layout_(layout),
      program_(SampleProgram(layout, factoryVersion, kFactorySeed)),
      tables_(tables),
      factoryVersion_(ProgramVersion(program_)) {
  if (tables_.size() != kTableImageSize) EraseTables();
}

bool DeviceMemory::Restore(BytesView contents) {
  if (contents.size() != tables_.size() + program_.size()) return false;
  tables_ = contents.substr(0, tables_.size());
  program_ = contents.substr(tables_.size());
  return true;
}

void DeviceMemory::EraseTables() {
  tables_.assign(kTableImageSize, kErased);
}

void DeviceMemory::EraseProgram() {
  program_.assign(layout_.size, kErased);
}

bool DeviceMemory::WriteTables(std::size_t address, BytesView data) {
  return Write(tables_, address, data);
}

bool DeviceMemory::WriteProgram(std::size_t address, BytesView data) {
  return Write(program_, address, data);
}

bool DeviceMemory::TablesSound() const {
  return TableChecksumRight(tables_);
}

bool DeviceMemory::ProgramSound() const {
  return ProgramSealed(program_, layout_);
}

Bytes DeviceMemory::SoftwareVersion() const {
  const Bytes version = ProgramVersion(program_);
  return version.empty() ? factoryVersion_ : version;
}

}  // namespace ox::sim
