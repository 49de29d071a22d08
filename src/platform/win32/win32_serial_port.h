// The serial ports of this host.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <utility>

#include "platform/open_ports.h"
#include "platform/serial_port.h"
#include "platform/win32/overlapped_line.h"

namespace ox {

/// What the ports of the host share.
struct SharedByPorts {
  std::string given;  // name of the device that every port is, whatever its number; or empty
  bool told = true;   // on the standard error stream: which adapter a port is, once for each number
  std::set<int> known;
};

/// The system itself keeps the number of an adapter, so a port is always the device that it was. It is closed
/// again by every PortError: a line that has hung up is reported once and can be opened anew.
class Win32SerialPort : public SerialPort {
 public:
  /// The registry must outlive the port.
  explicit Win32SerialPort(OpenPorts& openPorts,
                           std::shared_ptr<SharedByPorts> shared = std::make_shared<SharedByPorts>())
      : openPorts_(openPorts), shared_(std::move(shared)) {}
  ~Win32SerialPort() override { Close(); }

  void SetSettings(std::string_view settings) override { settings_ = settings; }
  void SetCommPort(int number) override;
  bool PortOpen() const override { return line_ != nullptr; }
  /// Refuses unknown settings and port numbers. Says on the standard error stream why a port cannot be
  /// opened.
  void Open() override;
  void Close() noexcept override;
  void Output(BytesView bytes) override;
  Bytes Input() override;
  void SetModemLine(bool on) override;

 private:
  template <typename Operation>
  auto OnLine(Operation operation);
  void Drop() noexcept;
  void TellAdapter();

  OpenPorts& openPorts_;
  std::shared_ptr<SharedByPorts> shared_;
  std::string settings_ = "9600,N,8,1";
  int number_ = 1;
  std::wstring path_;                     // of the last opening
  std::unique_ptr<OverlappedLine> line_;  // null while the port is closed
};

class Win32SerialPorts : public SerialPorts {
 public:
  explicit Win32SerialPorts(OpenPorts& openPorts) : openPorts_(openPorts) {}

  std::unique_ptr<SerialPort> Create() override {
    return std::make_unique<Win32SerialPort>(openPorts_, shared_);
  }

  /// Every port is this device from its next opening on: "COM12", "\\.\COM12"; UTF-8.
  void UseDevice(const std::string& name) { shared_->given = name; }
  /// Why a port cannot be opened is still said, but no longer which adapter it is.
  void TellFailuresOnly() { shared_->told = false; }

 private:
  OpenPorts& openPorts_;
  std::shared_ptr<SharedByPorts> shared_ = std::make_shared<SharedByPorts>();
};

}  // namespace ox
