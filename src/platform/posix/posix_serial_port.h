// The serial ports of this host.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "platform/open_ports.h"
#include "platform/posix/host_folders.h"
#include "platform/posix/open_line.h"
#include "platform/serial_port.h"

namespace ox {

/// What every port was when it was last open; shared by all ports of the host.
struct KnownDevices {
  std::map<int, std::string> devices;  // by port number
  std::string given;                   // path of the device that every port is, whatever its number; or empty
  bool told = true;                    // on the standard error stream: which device a port is
};

/// A port is closed again by every PortError, so a line that has hung up is reported once and can be opened
/// anew. It stays with its device as long as that is there. A number that has passed to another device since
/// it was last open is refused once, and told, so that nobody works on another device than he thinks; an
/// entry of the working folder says itself what it is.
class PosixSerialPort : public SerialPort {
 public:
  /// The registry must outlive the port.
  explicit PosixSerialPort(OpenPorts& openPorts, HostFolders host = {},
                           std::shared_ptr<KnownDevices> known = std::make_shared<KnownDevices>())
      : openPorts_(openPorts), host_(std::move(host)), known_(std::move(known)) {}
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
  /// Path of the device to open. Throws PortError.
  std::string DevicePath();
  void NoteDevice();

  OpenPorts& openPorts_;
  HostFolders host_;
  std::shared_ptr<KnownDevices> known_;
  std::string settings_ = "9600,N,8,1";
  int number_ = 1;
  std::string device_;              // of the last opening, for people
  std::string used_;                // the device that was open last under the number
  std::unique_ptr<OpenLine> line_;  // null while the port is closed
};

class PosixSerialPorts : public SerialPorts {
 public:
  explicit PosixSerialPorts(OpenPorts& openPorts, HostFolders host = {})
      : openPorts_(openPorts), host_(std::move(host)) {}

  std::unique_ptr<SerialPort> Create() override {
    return std::make_unique<PosixSerialPort>(openPorts_, host_, known_);
  }

  /// Every port is this device file from its next opening on.
  void UseDevice(const std::string& path) { known_->given = path; }
  /// Why a port cannot be opened is still said, but no longer which device it is.
  void TellFailuresOnly() { known_->told = false; }

 private:
  OpenPorts& openPorts_;
  HostFolders host_;
  std::shared_ptr<KnownDevices> known_ = std::make_shared<KnownDevices>();
};

}  // namespace ox
