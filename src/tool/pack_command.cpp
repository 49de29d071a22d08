// oxtool pack: a loader hex file becomes a program file.
#include <cstdint>
#include <memory>
#include <optional>
#include <random>

#include "programming/firmware_packing.h"
#include "programming/loader_hex.h"
#include "programming/program_file.h"
#include "tool/commands.h"
#include "tool/common_options.h"
#include "tool/files.h"

namespace ox::tool {
namespace {

/// The same numbers after the same seed, on every host.
class SeededRandom : public RandomNumbers {
 public:
  explicit SeededRandom(std::uint64_t seed) : engine_(seed) {}
  double Next() override {
    constexpr unsigned kSpareBits = 11;  // 53 of the 64 bits fit into a double
    return static_cast<double>(engine_() >> kSpareBits) * 0x1.0p-53;
  }

 private:
  std::mt19937_64 engine_;
};

struct Options {
  std::string path;
  std::string output;
  std::optional<std::uint64_t> seed;
};

std::string SeedFault(const std::string& text) {
  constexpr std::size_t kMostDigits = 18;  // that fit into 64 bits
  const bool number = !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
  return number && text.size() <= kMostDigits ? "" : text + " geht nicht, eine Zahl ab 0 erwartet";
}

ExitStatus Pack(const Options& options, Console& console) {
  const auto hex = ReadInput(console, options.path, kMaxLoaderFile).content;
  if (!hex) return ExitStatus::kFailed;
  std::optional<SeededRandom> seeded;
  if (options.seed) seeded.emplace(*options.seed);
  const auto packed = PackFirmware(*hex, seeded ? *seeded : console.machine.random);
  if (!packed) {
    return console.Fail(options.path + ":" + std::to_string(FaultyHexLine(*hex)) +
                        ": Satz aus : und Paaren von 0 bis 9 und A bis F mit Summe 0 erwartet, am Ende "
                        ":00000001FF");
  }
  const ExitStatus written = WriteOutput(console, options.output, *packed, {options.path});
  if (written == ExitStatus::kFine) {
    const auto [status, program] = ReadProgramFile(*packed, kProgramFormat3);
    console.Say(options.output + ": " + DescribeProgram(program));
  }
  return written;
}

}  // namespace

Action DefinePack(CLI::App& app) {
  auto options = std::make_shared<Options>();
  TakeFile(app, options->path, "Ladedatei, .LDR");
  TakeOutput(app, options->output);
  AddOption(app, "--seed", options->seed,
            "Anfang der Zufallszahlen für die Füllbytes: gleiche Zahl, gleiche Datei")
      .Takes("ZAHL")
      .Checked(SeedFault);
  return [options](Console& console) { return Pack(*options, console); };
}

}  // namespace ox::tool
