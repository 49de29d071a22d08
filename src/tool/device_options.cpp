// From the words of the command line to session settings.
#include "tool/device_options.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

namespace ox::tool {
namespace {

constexpr std::string_view kComPrefix = "COM";

bool IsComPort(std::string_view port) {
  if (!port.starts_with(kComPrefix)) return false;
  port.remove_prefix(kComPrefix.size());
  int number = 0;
  const auto [end, error] = std::from_chars(port.data(), port.data() + port.size(), number);
  return error == std::errc() && end == port.data() + port.size();
}

// The reasons to refuse an option.

/// A script's variable that was never set must not lead to a port that nobody named.
std::string RefusalOfPort(const std::string& port) {
  return port.empty() ? "COM1 oder eine Gerätedatei erwartet" : "";
}

std::string RefusalOfLine(const std::string& line) {
  constexpr std::array<std::string_view, 4> kBaudRates{"2400", "4800", "9600", "19200"};
  const auto comma = std::min(line.find(','), line.size());
  const std::string parity = line.substr(comma);
  const bool known = std::ranges::find(kBaudRates, line.substr(0, comma)) != kBaudRates.end();
  return known && (parity == ",O" || parity == ",E") ? "" : "Baudrate und Parität erwartet, etwa 9600,O";
}

}  // namespace

void DefineDeviceOptions(CLI::App& app, DeviceOptions& options) {
  AddOption(app, "--port", options.port, "Schnittstelle: COM1 oder eine Gerätedatei wie /dev/ttyUSB0")
      .Takes("PORT")
      .Checked(RefusalOfPort)
      .Required();
  AddOption(app, "--line", options.line,
            "Baudrate und Parität, etwa 9600,O; sonst sucht sie ein Verbindungstest")
      .Takes("BAUD,PARITÄT")
      .Checked(RefusalOfLine);
}

SessionSettings SettingsOf(const DeviceOptions& options) {
  SessionSettings settings;
  if (IsComPort(options.port)) {
    settings.ComPort = options.port.substr(kComPrefix.size());
  } else {
    settings.PortDevice = options.port;
  }
  if (!options.line.empty()) {
    settings.BaudRate = options.line.substr(0, options.line.find(','));
    settings.Parity = options.line.substr(options.line.find(',') + 1);
  }
  return settings;
}

OptionCheck WholeNumber(int least, int most) {
  const std::string expected =
      "eine Zahl von " + std::to_string(least) + " bis " + std::to_string(most) + " erwartet";
  return [=](const std::string& text) -> std::string {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool right = error == std::errc() && end == text.data() + text.size();
    return right && number >= least && number <= most ? "" : expected;
  };
}

}  // namespace ox::tool
