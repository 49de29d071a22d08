// oxtool identify: which device is there?
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>

#include "session/connection_report.h"
#include "tool/commands.h"
#include "tool/console_text.h"
#include "tool/device_session.h"

namespace ox::tool {
namespace {

struct Options {
  DeviceOptions device;
  bool json = false;
};

std::string Json(const SessionSettings& settings) {
  return nlohmann::ordered_json{{"type", Printable(settings.DeviceType())},
                                {"version", Printable(settings.SoftwareVersion())},
                                {"baud", std::stoi(settings.BaudRate)},
                                {"parity", settings.Parity},
                                {"port", settings.PortText()}}
      .dump();
}

ExitStatus Identify(const Options& options, Console& console) {
  DeviceSession session(console, options.device);
  if (!session.Find()) return ExitStatus::kFailed;
  const SessionSettings& found = session.Settings();
  console.output << (options.json ? Json(found) : Lines(ConnectionReport(found))) << std::endl;
  return ExitStatus::kFine;
}

}  // namespace

Action DefineIdentify(CLI::App& app) {
  auto options = std::make_shared<Options>();
  DefineDeviceOptions(app, options->device);
  AddFlag(app, "--json", options->json, "als JSON-Objekt");
  return [options](Console& console) { return Identify(*options, console); };
}

}  // namespace ox::tool
