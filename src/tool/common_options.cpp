// One wording and one check for each.
#include "tool/common_options.h"

namespace ox::tool {

CLI::Option* TakeJson(CLI::App& app, bool& json) {
  return app.add_flag("--json", json, "antwortet in JSON, für Maschinen")->disable_flag_override();
}

CLI::Option* TakeTables(CLI::App& app, std::vector<std::string>& paths) {
  return app.add_option("TABELLE", paths, "X.mes, X.par und X.zuo")->required();
}

std::string FileNameFault(const std::string& path) {
  return path.empty() ? "der Name einer Datei fehlt" : "";
}

CLI::Option* TakeFile(CLI::App& app, std::string& path, const std::string& help) {
  return app.add_option("DATEI", path, help)->required()->check(FileNameFault);
}

CLI::Option* TakeOutput(CLI::App& app, std::string& path) {
  return app.add_option("-o,--output", path, "Datei, die geschrieben wird")
      ->required()
      ->type_name("DATEI")
      ->check(FileNameFault);
}

}  // namespace ox::tool
