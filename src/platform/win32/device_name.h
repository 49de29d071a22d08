// How the system names its serial ports.
#pragma once

#include <string>

namespace ox {

/// "\\.\COM3", by which a port is opened; empty for a number that no port can have.
std::wstring DevicePath(int number);

/// The same of a name that a user gave, UTF-8: "COM12", "\\.\COM12" or another device; empty for no name.
std::wstring DevicePath(const std::string& name);

/// Whether a driver has a port of that path now. Nothing is opened.
bool IsPluggedIn(const std::wstring& path);

}  // namespace ox
