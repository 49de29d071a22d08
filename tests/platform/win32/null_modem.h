// Two ports of this host that are joined; the script of the same name, which runs the test, holds the line.
#pragma once

#include <chrono>
#include <stdexcept>
#include <string>

#include "platform/win32/win32_serial_port.h"

namespace ox::test {

/// A new, empty line between both ports.
class NullModem {
 public:
  static constexpr int kNear = 61;
  static constexpr int kFar = 62;

  NullModem() {
    far_->SetCommPort(kFar);
    control_->SetCommPort(kControl);
    Do('n');
    far_->Open();
  }

  SerialPort& Far() { return *far_; }
  void Pull() { Do('p'); }
  /// Waits until what was written has arrived.
  void Settle() { Do('w'); }
  /// Speed, odd (1 or 0) and checked (1 or 0), as the near end was opened: "9600 1 1".
  std::string NearSettings() { return Do('s'); }

  /// Reads a port until so many bytes are there; fewer when that takes too long.
  static Bytes Arriving(SerialPort& port, std::size_t count) {
    constexpr std::chrono::seconds kLongest{10};
    const auto end = std::chrono::steady_clock::now() + kLongest;
    Bytes bytes;
    while (bytes.size() < count && std::chrono::steady_clock::now() < end) bytes += port.Input();
    return bytes;
  }

 private:
  static constexpr int kControl = 63;

  std::string Do(char command) {
    control_->Open();
    control_->Output({&command, 1});
    Bytes answer = Arriving(*control_, 1);
    while (!answer.ends_with('\n')) {
      const Bytes more = Arriving(*control_, 1);
      if (more.empty()) throw std::runtime_error("null_modem does not answer");
      answer += more;
    }
    control_->Close();
    answer.pop_back();
    return answer;
  }

  static std::unique_ptr<SerialPort> Make(OpenPorts& open) {
    Win32SerialPorts ports(open);
    ports.TellFailuresOnly();
    auto port = ports.Create();
    port->SetSettings("115200,n,8,1");
    return port;
  }

  OpenPorts open_;
  std::unique_ptr<SerialPort> far_ = Make(open_);
  std::unique_ptr<SerialPort> control_ = Make(open_);
};

}  // namespace ox::test
