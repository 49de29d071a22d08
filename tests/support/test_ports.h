// Serial ports in memory: on each a simulated device, a scripted one or nothing.
#pragma once

#include <limits>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/serial_port.h"
#include "simulator/line/endpoint.h"
#include "support/test_clock.h"

namespace ox::test {

/// They keep the contract of platform/serial_port.h. What comes to a closed port is lost, as on a serial
/// line.
class TestPorts : public SerialPorts {
 public:
  static constexpr double kNever = std::numeric_limits<double>::infinity();

  explicit TestPorts(TestClock& clock) : clock_(clock) {}

  std::unique_ptr<SerialPort> Create() override;

  /// Makes COM<number> exist, with the test's device at its other end; null: with none.
  void Connect(int number, sim::Endpoint* device) { lines_[number] = device; }
  void Remove(int number) { lines_.erase(number); }
  /// What comes to a closed port waits for its opening, as on a pseudo-terminal.
  void KeepForClosedPorts(bool keep) { keeps_ = keep; }
  /// Breaks every port behind so many further characters: every operation fails from then on until Mend.
  void BreakAfterSending(std::size_t characters) { sendable_ = characters; }
  void Break() { broken_ = true; }
  void Mend() { sendable_ = Bytes::npos, broken_ = false; }

  /// When the next character reaches an open port, or now when one has broken: what a wait ends with.
  double NextInput() const;

  int OpenCount() const { return static_cast<int>(open_.size()); }

  std::vector<std::string> openings;  // "1:9600,O,7,1" for each, in order
  std::vector<bool> modemLine;        // how it was switched, in order
  Bytes sent;                         // on all ports

 private:
  friend class TestPort;

  TestClock& clock_;
  std::map<int, sim::Endpoint*> lines_{{1, nullptr}};
  std::vector<class TestPort*> open_;
  std::size_t sendable_ = Bytes::npos;
  bool broken_ = false;
  bool keeps_ = false;
};

}  // namespace ox::test
