// From the typed names to the packed file.
#include "updates/firmware_packer.h"

#include <optional>

#include "programming/firmware_packing.h"

namespace ox {
namespace {

constexpr std::string_view kSourceExtension = ".LDR";
constexpr std::string_view kTargetExtension = ".pr3";

constexpr std::string_view kSuccess = "Vorgang erfolgeich beendet !";

}  // namespace

FirmwareOX3Verpacken::FirmwareOX3Verpacken(Host& host, SessionSettings& settings)
    : Window(host.windows, "FirmwareOX3Verpacken", "Firmware OX3 verpacken"),
      host_(host),
      settings_(settings) {
  CoStart.onClick = [this] { Start(); };
  for (TextBox* field : {&TextQuelle, &TextZiel}) field->onEnter = [this] { CoStart.Click(); };
}

void FirmwareOX3Verpacken::OnLoad() {
  TextQuelle.SetText(settings_.SourcePath);
  TextZiel.SetText(settings_.TargetPath);
}

void FirmwareOX3Verpacken::Start() {
  settings_.SourcePath = TextQuelle.Text();
  settings_.TargetPath = TextZiel.Text();
  const std::string source = settings_.SourcePath + std::string(kSourceExtension);
  const std::string target = settings_.TargetPath + std::string(kTargetExtension);
  const std::optional<std::string> fault = PackFirmwareFile(source, target, host_.files, host_.random);
  host_.windows.ShowMessage(fault ? std::string_view(*fault) : kSuccess);
}

}  // namespace ox
