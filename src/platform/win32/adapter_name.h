// Maker and model of a serial adapter.
#pragma once

#include <string>

namespace ox {

/// What the device manager calls the device of a port, "COM3", with its maker: "FTDI USB Serial Port"; UTF-8,
/// empty when it does not list the port.
std::string AdapterOf(const std::string& port);

/// Puts maker and name together, without the port that the system adds to the name: "FTDI" and "USB Serial
/// Port (COM3)" become "FTDI USB Serial Port". A maker in parentheses is none, and one with which the name
/// begins is not told twice.
std::string AdapterName(const std::string& maker, const std::string& name, const std::string& port);

}  // namespace ox
