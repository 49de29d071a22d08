// The serial ports of this host.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/open_ports.h"
#include "platform/posix/host_folders.h"
#include "platform/posix/open_line.h"
#include "platform/serial_port.h"

namespace ox {

/// A port is closed again by every PortError, so a line that has hung up is reported once and can be opened
/// anew.
class PosixSerialPort : public SerialPort {
 public:
  /// The registry must outlive the port.
  explicit PosixSerialPort(OpenPorts& openPorts, HostFolders host = {})
      : openPorts_(openPorts), host_(std::move(host)) {}
  ~PosixSerialPort() override { Close(); }

  void SetSettings(std::string_view settings) override { settings_ = settings; }
  void SetCommPort(int number) override;
  bool PortOpen() const override { return line_ != nullptr; }
  /// Refuses unknown settings and port numbers. Says on the standard error stream why a port cannot be
  /// opened, and which device it is when it is another than before.
  void Open() override;
  void Close() noexcept override;
  void Output(BytesView bytes) override;
  Bytes Input() override;
  void SetModemLine(bool on) override;

 private:
  template <typename Operation>
  auto OnLine(Operation operation);
  void Drop() noexcept;
  void NoteDevice();

  OpenPorts& openPorts_;
  HostFolders host_;
  std::string settings_ = "9600,N,8,1";
  int number_ = 1;
  std::string device_;              // of the last opening, for people
  std::string noted_;               // the device that was told last
  std::unique_ptr<OpenLine> line_;  // null while the port is closed
};

class PosixSerialPorts : public SerialPorts {
 public:
  explicit PosixSerialPorts(OpenPorts& openPorts, HostFolders host = {})
      : openPorts_(openPorts), host_(std::move(host)) {}

  std::unique_ptr<SerialPort> Create() override {
    return std::make_unique<PosixSerialPort>(openPorts_, host_);
  }

 private:
  OpenPorts& openPorts_;
  HostFolders host_;
};

}  // namespace ox
