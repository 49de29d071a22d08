// What ports say alike on every host.
#pragma once

#include <string>

#include "platform/serial_port.h"

namespace ox {

/// A number that nothing stands for.
PortError NoSuchPort();

/// Another program has the port; its name where it is known.
PortError Taken(const std::string& holder = {});

/// Something else stands there, a file or a printer.
PortError NotSerial(const std::string& advice = {});

/// The driver does not take the line parameters.
PortError RefusesSettings();

/// The line does not exist any more, or does not answer the host.
PortError HungUp();

/// The adapter was pulled out in use. The device is empty where the port's number says all.
PortError PulledOut(const std::string& device);

/// The driver takes no more characters.
PortError SendsNothing();

}  // namespace ox
