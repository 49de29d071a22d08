// The command line of oxsim.
#pragma once

#include <string>
#include <vector>

#include "simulator/program/named_faults.h"

namespace ox::sim {

/// What oxsim is to do.
struct SimulatorOptions {
  FaultTargets parts;        ///< device, modem and line, with the faults that are switched on
  bool modem = false;        ///< simulate a modem in place of a device
  std::string tables = ".";  ///< folder with the tables that the device starts with
  std::string memory;        ///< file that keeps the device's memory between two starts; empty: none does
  std::string dump;          ///< folder that the device's memory is written to; empty: nowhere
  std::string replay;        ///< support log to play in place of a device; empty: none
  int opening = 1;           ///< number of the opening that it begins with
  bool version = false;      ///< only tell the version
  bool help = false;         ///< only tell the help
};

/// Reads the arguments behind the program's name. On one that cannot be understood `error` says so, in
/// German; otherwise it is empty.
SimulatorOptions ReadOptions(const std::vector<std::string>& arguments, std::string& error);

/// The help text, in German.
std::string HelpText();

}  // namespace ox::sim
