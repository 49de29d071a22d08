// Filler, hex records and check word of a packed program.
#include "programming/firmware_packing.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "programming/loader_hex.h"
#include "programming/program_file.h"

namespace ox {
namespace {

constexpr double kHighestFiller = 250;

std::string OpeningFailed(const std::string& path) {
  return "Fehler beim Öffnen von " + path + " !";
}

Bytes FilledImage(RandomNumbers& random) {
  Bytes image(kProgramFormat3.ProgramSize(), '\0');
  std::ranges::generate(
      image, [&] { return ByteOf(static_cast<unsigned>(std::lround(random.Next() * kHighestFiller))); });
  return image;
}

}  // namespace

std::optional<Bytes> PackFirmware(BytesView loaderHex, RandomNumbers& random) {
  Bytes image = FilledImage(random);
  if (!ReadLoaderHex(loaderHex, image)) return std::nullopt;
  InsertCheckWord(image, kProgramFormat3);
  return BuildProgramFile(image);
}

std::optional<std::string> PackFirmwareFile(const std::string& source, const std::string& target,
                                            Files& files, RandomNumbers& random) {
  // One byte more than allowed is read, to notice a file that is too large.
  const std::optional<Bytes> hex = files.Read(source, kMaxLoaderFile + 1);
  if (!hex) return OpeningFailed(source);
  std::optional<Bytes> packed;
  if (hex->size() <= kMaxLoaderFile) packed = PackFirmware(*hex, random);
  if (!packed) return "Fehler beim Lesen der Datei " + source + " !";
  if (files.SameFile(source, target) || !files.Replace(target, *packed)) return OpeningFailed(target);
  return std::nullopt;
}

}  // namespace ox
