// One wording and one check for each.
#include "tool/common_options.h"

namespace ox::tool {

NewOption TakeJson(CLI::App& app, bool& json) {
  return AddFlag(app, "--json", json, "antwortet in JSON, für Maschinen");
}

NewOption TakeTables(CLI::App& app, std::vector<std::string>& paths) {
  return AddOption(app, "TABELLE", paths, "X.mes, X.par und X.zuo").Required();
}

std::string FileNameFault(const std::string& path) {
  return path.empty() ? "der Name einer Datei fehlt" : "";
}

NewOption TakeFile(CLI::App& app, std::string& path, const std::string& help) {
  return AddOption(app, "DATEI", path, help).Required().Checked(FileNameFault);
}

NewOption TakeOutput(CLI::App& app, std::string& path) {
  return AddOption(app, "-o,--output", path, "Datei, die geschrieben wird")
      .Required()
      .Takes("DATEI")
      .Checked(FileNameFault);
}

}  // namespace ox::tool
