// Faults that oxsim's user switches on by name.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/device/device.h"
#include "simulator/device/modem.h"
#include "simulator/line/host_options.h"

namespace ox::sim {

/// Everything a fault can be switched on in.
struct FaultTargets {
  DeviceOptions device;
  std::vector<ReplyFault> replies;  ///< for the device's ReplyFaults
  ModemOptions modem;
  HostOptions host;
};

/// Switches on "NAME" or "NAME=VALUE". False, and nothing changed, when there is no such fault or the value
/// is none for it.
bool SwitchOn(std::string_view fault, FaultTargets& targets);

/// One German line for each fault, for the program's help.
std::string FaultHelp();

}  // namespace ox::sim
