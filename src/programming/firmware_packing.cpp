// Filler, hex records and check word of a packed program.
#include "programming/firmware_packing.h"

#include <algorithm>
#include <cmath>

#include "programming/loader_hex.h"
#include "programming/program_file.h"

namespace ox {
namespace {

constexpr double kHighestFiller = 250;

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

}  // namespace ox
