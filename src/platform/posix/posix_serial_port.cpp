// The serial ports of this host.
#include "platform/posix/posix_serial_port.h"

#include <sys/stat.h>

#include <iostream>

#include "platform/port_errors.h"
#include "platform/port_list.h"
#include "platform/posix/opening_fault.h"
#include "platform/posix/port_names.h"
#include "platform/posix/posix_port_list.h"

namespace ox {
namespace {

/// The error, with the device that it is about.
PortError With(const std::string& device, const PortError& error) {
  PortFault fault = error.Fault();
  if (fault.device.empty()) fault.device = device;
  return PortError(fault);
}

bool Exists(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0;
}

/// Of a line that failed in use. A device that is not there any more was pulled out.
PortError BrokenOff(const std::string& device, const PortError& error) {
  if (Exists(device)) return With(device, error);
  return PulledOut(device);
}

/// Of a number that has passed to another device.
PortError OtherDevice(int number, const std::string& before, const std::string& now) {
  const std::string next = PortName(number) + " ist mit dem nächsten Befehl " + now;
  if (Exists(before)) return PortError({before, "hat jetzt eine andere Nummer", next});
  return PortError({before, "nicht mehr vorhanden", "Adapter wieder einstecken, sonst: " + next});
}

}  // namespace

void PosixSerialPort::SetCommPort(int number) {
  if (PortOpen()) throw PortError("ist geöffnet");
  if (number != number_) used_.clear();
  number_ = number;
}

void PosixSerialPort::Open() {
  if (PortOpen()) return;
  device_.clear();
  try {
    const std::string path = DevicePath();
    device_ = DeviceBehind(path);
    line_ = std::make_unique<OpenLine>(path, ParseLineSettings(settings_));
  } catch (const PortError& error) {
    const PortError whole = With(device_, error);
    std::cerr << Sentences(number_, whole.Fault()) << std::endl;
    throw whole;
  }
  openPorts_.Add(line_->Number());
  NoteDevice();
}

std::string PosixSerialPort::DevicePath() {
  if (!known_->given.empty()) return known_->given;
  const std::optional<std::string> found = FindPort(host_, number_);
  if (found && IsEntry(*found)) return *found;
  if (!used_.empty() && Exists(used_)) return used_;
  if (!found) throw NoSuchPort();
  std::string& known = known_->devices[number_];
  if (known.empty() || known == *found) return *found;
  const std::string before = std::exchange(known, *found);
  throw OtherDevice(number_, before, *found);
}

void PosixSerialPort::NoteDevice() {
  used_ = device_;
  if (std::exchange(known_->devices[number_], device_) == device_ || !known_->told) return;
  std::cerr << Identity(number_, PosixPortList(host_).Look(number_)) << std::endl;
}

void PosixSerialPort::Close() noexcept {
  if (!PortOpen()) return;
  line_->WaitUntilSent();
  Drop();
}

void PosixSerialPort::Drop() noexcept {
  openPorts_.Remove(line_->Number());
  line_.reset();
}

/// Carries out an operation on the open line; one that fails leaves the port closed.
template <typename Operation>
auto PosixSerialPort::OnLine(Operation operation) {
  if (!PortOpen()) throw PortError("ist nicht geöffnet");
  try {
    return operation(*line_);
  } catch (const PortError& error) {
    Drop();
    throw BrokenOff(device_, error);
  }
}

void PosixSerialPort::Output(BytesView bytes) {
  OnLine([bytes](OpenLine& line) { line.Write(bytes); });
}

Bytes PosixSerialPort::Input() {
  return OnLine([](OpenLine& line) { return line.Read(); });
}

void PosixSerialPort::SetModemLine(bool on) {
  OnLine([on](OpenLine& line) { line.SetDataTerminalReady(on); });
}

}  // namespace ox
