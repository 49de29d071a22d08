// The lines on which the promises of a port are tried: those in memory and those of this host.
#pragma once

#include <memory>
#include <vector>

#include "platform/open_ports.h"
#include "platform/serial_port.h"

namespace ox::test {

/// A line with ports at its near end; the far end says what the test wants.
struct Line {
  virtual ~Line() = default;
  virtual SerialPorts& Ports() = 0;
  /// Number of the port that the line is plugged into.
  virtual int Number() const { return 1; }
  /// What Rest would wait on; null where nothing is known of that.
  virtual const OpenPorts* Waiting() const { return nullptr; }
  virtual void Say(char said) = 0;
  virtual void Pull() = 0;
  virtual void Work() {}  // carries what is under way
};

/// What a line still holds for a port that is opened.
enum class Keeps {
  kAll,
  kWhatCameToAClosedPort,  // but not what was unread when it was closed
  kNothing
};

struct Kind {
  const char* name;
  std::unique_ptr<Line> (*make)();
  Keeps keeps;
  bool judges = true;  // characters by the settings of both ends
  bool alone = true;   // keeps a second opener away
};

std::vector<Kind> KindsOfThisHost();

template <class Made>
std::unique_ptr<Line> Make() {
  return std::make_unique<Made>();
}

}  // namespace ox::test
