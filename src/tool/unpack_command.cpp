// oxtool unpack: the program bytes of a program file.
#include <memory>

#include "tool/commands.h"
#include "tool/common_options.h"
#include "tool/files.h"
#include "tool/program_files.h"

namespace ox::tool {
namespace {

struct Options {
  std::string path;
  std::string output;
};

ExitStatus Unpack(const Options& options, Console& console) {
  const auto content = ReadProgram(console, options.path);
  if (content.kind == nullptr) return ExitStatus::kFailed;
  const auto [status, program] = ReadProgramFile(content.file, content.kind->program.format);
  if (status != ProgramFileStatus::kGood) return console.Fail(ProgramFileFault(status, options.path));
  const ExitStatus written = WriteOutput(console, options.output, program, {options.path});
  if (written == ExitStatus::kFine) {
    console.Say(options.output + ": " + std::string(content.kind->name) + ", " + DescribeProgram(program));
  }
  return written;
}

}  // namespace

Action DefineUnpack(CLI::App& app) {
  auto options = std::make_shared<Options>();
  TakeFile(app, options->path, "Programm, .pro oder .pr3");
  TakeOutput(app, options->output);
  return [options](Console& console) { return Unpack(*options, console); };
}

}  // namespace ox::tool
