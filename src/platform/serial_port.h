// The serial port as the program uses it: five polled operations and one modem line.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "platform/bytes.h"
#include "platform/port_fault.h"

namespace ox {

/// A port that is missing, taken, forbidden or wrongly set, or that was lost while it was in use.
class PortError : public std::runtime_error {
 public:
  explicit PortError(PortFault fault)
      : std::runtime_error(fault.reason), fault_(std::make_shared<const PortFault>(std::move(fault))) {}
  explicit PortError(std::string reason, std::string advice = {})
      : PortError(PortFault{{}, std::move(reason), std::move(advice)}) {}

  const PortFault& Fault() const { return *fault_; }

 private:
  std::shared_ptr<const PortFault> fault_;  // shared, so that copies of the exception cannot fail
};

/// One COM port. Every operation but PortOpen and Close may throw PortError; it ends inside link/,
/// programming/ and the modem's link. Where opening, reading, writing or the modem line fail, the port is
/// closed afterwards.
class SerialPort {
 public:
  SerialPort() = default;
  SerialPort(const SerialPort&) = delete;
  SerialPort& operator=(const SerialPort&) = delete;
  virtual ~SerialPort() = default;

  /// Line parameters for the next opening: "<baud>,<parity>,<data bits>,<stop bits>", for example
  /// "9600,O,7,1". Wrong ones are refused at the opening.
  virtual void SetSettings(std::string_view settings) = 0;

  /// COM port number, from 1 on; any other is refused at the opening. Not while the port is open.
  virtual void SetCommPort(int number) = 0;

  virtual bool PortOpen() const = 0;

  /// Takes the port for this program alone; does nothing when it is open. Drops nothing: what the host has
  /// kept from before is read first. Hosts differ in that: on a serial line what comes to a closed port is
  /// lost, and so is what nobody has read at the closing; a pseudo-terminal keeps both.
  virtual void Open() = 0;

  /// First sends what was written, within the time that the line needs for it, then frees the port. Does
  /// nothing on a closed port and never fails.
  virtual void Close() noexcept = 0;

  /// Sends all the bytes, or throws.
  virtual void Output(BytesView bytes) = 0;

  /// Everything that has arrived so far, but no more than some 64 KB: a line that never pauses leaves the
  /// rest for the next look. Empty when nothing has arrived.
  virtual Bytes Input() = 0;

  /// Switches the data-terminal-ready line; does nothing on a port without modem lines.
  virtual void SetModemLine(bool on) = 0;
};

/// Makes the serial-port control of a window, closed; the window owns it.
class SerialPorts {
 public:
  virtual ~SerialPorts() = default;
  virtual std::unique_ptr<SerialPort> Create() = 0;
};

}  // namespace ox
