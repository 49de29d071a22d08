// The session settings: what every window reads, and some write, for the whole run.
#pragma once

#include <string>

#include "platform/bytes.h"
#include "platform/line_ends.h"

namespace ox {

/// What every window reads, and some write, for the whole run. Texts are bytes unless said otherwise.
struct SessionSettings {
  Bytes CR{kCr};
  Bytes LF{kLf};
  Bytes CRLF{kCrLf};
  Bytes Quote{kQuote};
  Bytes BaudRate = "9600";  // decimal digits
  Bytes Parity = "O";       // "O" odd, "E" even
  Bytes ComPort = "1";      // "1" to "4"; the settings file may name any other character
  std::string PortDevice;   // UTF-8; a device of the host in the place of `ComPort`, on a command line only
  bool Connected = false;   // set only by the connection test
  std::string Language = "D";
  Bytes DeviceIdent;         // characters 1 to 4 the device type, 6 to 21 the software version; or "?"
  bool ModemSwitch = false;  // the settings file holds the modem mark
  std::string SourcePath;    // UTF-8, firmware packer
  std::string TargetPath;    // UTF-8, firmware packer

  /// Line parameters of the text dialogue: "<baud>,<parity>,7,1".
  Bytes DialogueSettings() const { return DialogueSettings(BaudRate, Parity); }
  static Bytes DialogueSettings(const Bytes& baud, const Bytes& parity) {
    return baud + "," + parity + ",7,1";
  }

  /// `ComPort` as a number; 0, which no port has, when it is none or `PortDevice` takes its place.
  int PortNumber() const;
  /// How a message calls the port: "2", or the device. UTF-8.
  std::string PortText() const;

  /// Characters 1 to 4 of `DeviceIdent`.
  Bytes DeviceType() const { return DeviceIdent.substr(0, kDeviceTypeLength); }
  /// Characters 6 to 21 of `DeviceIdent`; empty when it is shorter.
  Bytes SoftwareVersion() const;

  static constexpr std::size_t kDeviceTypeLength = 4;
  static constexpr std::size_t kVersionOffset = 5;
  static constexpr std::size_t kVersionLength = 16;
};

}  // namespace ox
