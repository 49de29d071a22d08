// Reading, packing and writing, and what the user is told of it.
#include "updates/firmware_packer.h"

#include <cstddef>
#include <optional>

#include "programming/firmware_packing.h"

namespace ox {
namespace {

constexpr std::string_view kSourceExtension = ".LDR";
constexpr std::string_view kTargetExtension = ".pr3";

/// No loader file is larger: the whole memory, one byte a line, stays below a megabyte.
constexpr std::size_t kMaxLoaderFile = std::size_t{4} * 1024 * 1024;  // bytes

std::string OpeningFailed(const std::string& path) {
  return "Fehler beim Öffnen von " + path + " !";
}

}  // namespace

FirmwareOX3Verpacken::FirmwareOX3Verpacken(Host& host, SessionSettings& settings)
    : Window(host.windows, "FirmwareOX3Verpacken", "Firmware OX3 verpacken"),
      host_(host),
      settings_(settings) {
  CoStart.onClick = [this] { Start(); };
}

void FirmwareOX3Verpacken::OnLoad() {
  TextQuelle.SetText(settings_.SourcePath);
  TextZiel.SetText(settings_.TargetPath);
}

void FirmwareOX3Verpacken::Start() {
  settings_.SourcePath = TextQuelle.Text();
  settings_.TargetPath = TextZiel.Text();
  host_.windows.ShowMessage(Pack());
}

std::string FirmwareOX3Verpacken::Pack() {
  const std::string source = settings_.SourcePath + std::string(kSourceExtension);
  const std::string target = settings_.TargetPath + std::string(kTargetExtension);
  // One byte more than allowed tells a file that is too large.
  const std::optional<Bytes> hex = host_.files.Read(source, kMaxLoaderFile + 1);
  if (!hex) return OpeningFailed(source);
  std::optional<Bytes> packed;
  if (hex->size() <= kMaxLoaderFile) packed = PackFirmware(*hex, host_.random);
  if (!packed) return "Fehler beim Lesen der Datei " + source + " !";
  if (host_.files.SameFile(source, target) || !host_.files.Replace(target, *packed))
    return OpeningFailed(target);
  return "Vorgang erfolgeich beendet !";
}

}  // namespace ox
