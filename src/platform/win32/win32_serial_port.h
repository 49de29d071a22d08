// The serial ports of this host.
#pragma once

#include <memory>
#include <string>

#include "platform/open_ports.h"
#include "platform/serial_port.h"

namespace ox {

/// A port that is missing.
class Win32SerialPort : public SerialPort {
 public:
  void SetSettings(std::string_view /*settings*/) override {}
  void SetCommPort(int /*number*/) override {}
  bool PortOpen() const override { return false; }
  void Open() override { throw PortError("nicht vorhanden"); }
  void Close() noexcept override {}
  void Output(BytesView /*bytes*/) override { throw PortError("nicht offen"); }
  Bytes Input() override { throw PortError("nicht offen"); }
  void SetModemLine(bool /*on*/) override { throw PortError("nicht offen"); }
};

class Win32SerialPorts : public SerialPorts {
 public:
  explicit Win32SerialPorts(OpenPorts& /*openPorts*/) {}
  std::unique_ptr<SerialPort> Create() override { return std::make_unique<Win32SerialPort>(); }
  void UseDevice(const std::string& /*path*/) {}
  void TellFailuresOnly() {}
};

}  // namespace ox
