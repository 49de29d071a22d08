// The serial ports of this host.
#include "platform/win32/win32_serial_port.h"

#include <iostream>

#include "platform/port_errors.h"
#include "platform/port_list.h"
#include "platform/win32/device_name.h"
#include "platform/win32/win32_port_list.h"

namespace ox {
namespace {

/// The error, with the device that it is about where that is not the port's number.
PortError With(const std::string& device, const PortError& error) {
  PortFault fault = error.Fault();
  fault.device = device;
  return PortError(fault);
}

}  // namespace

void Win32SerialPort::SetCommPort(int number) {
  if (PortOpen()) throw PortError("ist geöffnet");
  number_ = number;
}

void Win32SerialPort::Open() {
  if (PortOpen()) return;
  const std::string& given = shared_->given;
  try {
    path_ = given.empty() ? DevicePath(number_) : DevicePath(given);
    if (path_.empty()) throw NoSuchPort();
    line_ = std::make_unique<OverlappedLine>(path_, ParseLineSettings(settings_));
  } catch (const PortError& error) {
    const PortError whole = With(given, error);
    std::cerr << Sentences(number_, whole.Fault()) << std::endl;
    throw whole;
  }
  openPorts_.Add(line_->Readiness());
  TellAdapter();
}

void Win32SerialPort::TellAdapter() {
  if (!shared_->told || !shared_->given.empty() || !shared_->known.insert(number_).second) return;
  std::cerr << Identity(number_, Win32PortList().Look(number_)) << std::endl;
}

void Win32SerialPort::Close() noexcept {
  if (!PortOpen()) return;
  line_->WaitUntilSent();
  Drop();
}

void Win32SerialPort::Drop() noexcept {
  openPorts_.Remove(line_->Readiness());
  line_.reset();
}

/// Carries out an operation on the open line; one that fails leaves the port closed.
template <typename Operation>
auto Win32SerialPort::OnLine(Operation operation) {
  if (!PortOpen()) throw PortError("ist nicht geöffnet");
  try {
    return operation(*line_);
  } catch (const PortError& error) {
    Drop();
    throw With(shared_->given, IsPluggedIn(path_) ? error : PulledOut({}));
  }
}

void Win32SerialPort::Output(BytesView bytes) {
  OnLine([bytes](OverlappedLine& line) { line.Write(bytes); });
}

Bytes Win32SerialPort::Input() {
  return OnLine([](OverlappedLine& line) { return line.Read(); });
}

void Win32SerialPort::SetModemLine(bool on) {
  OnLine([on](OverlappedLine& line) { line.SetDataTerminalReady(on); });
}

}  // namespace ox
