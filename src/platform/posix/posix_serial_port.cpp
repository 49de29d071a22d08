// The serial ports of this host.
#include "platform/posix/posix_serial_port.h"

#include <iostream>

#include "platform/posix/port_names.h"

namespace ox {
namespace {

/// The error, with the device that it is about.
PortError With(const std::string& device, const PortError& error) {
  PortFault fault = error.Fault();
  fault.device = device;
  return PortError(fault);
}

}  // namespace

void PosixSerialPort::SetCommPort(int number) {
  if (PortOpen()) throw PortError("ist geöffnet");
  number_ = number;
}

void PosixSerialPort::Open() {
  if (PortOpen()) return;
  device_.clear();
  try {
    const std::string path = PortPath(number_);
    device_ = DeviceBehind(path);
    line_ = std::make_unique<OpenLine>(path, ParseLineSettings(settings_));
  } catch (const PortError& error) {
    const PortError whole = With(device_, error);
    std::cerr << Sentences(number_, whole.Fault()) << std::endl;
    throw whole;
  }
  openPorts_.Add(line_->Number());
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
    throw With(device_, error);
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
