// oxtool update-program: writes a program into a device.
#include <algorithm>
#include <memory>
#include <optional>

#include "platform/text.h"
#include "programming/program_update.h"
#include "session/messages.h"
#include "tool/commands.h"
#include "tool/console_text.h"
#include "tool/files.h"
#include "tool/told_tables.h"
#include "tool/update_console.h"

namespace ox::tool {
namespace {

struct Options {
  DeviceOptions device;
  UpdateOptions update;
  std::string path;
};

/// The generation that the file's ending stands for; null when it is none of them.
const DeviceKind* KindOfFile(const std::string& path) {
  const auto kinds = DeviceKinds();
  const auto kind = std::ranges::find_if(kinds, [&](const DeviceKind& each) {
    const std::string_view ending = each.program.filePattern.substr(1);  // behind the "*"
    return path.ends_with(ending);
  });
  return kind != kinds.end() ? &*kind : nullptr;
}

/// The program of a file; empty after its fault was told.
Bytes LoadProgram(const Console& console, const std::string& path, const ProgramFormat& format) {
  // One byte more than the format has is read, to notice a file that is too long.
  const std::optional<Bytes> file = ReadFileOrPipe(console.machine.files, path, format.FileSize() + 1);
  if (!file) {
    console.Fail(path + ": lässt sich nicht lesen");
    return {};
  }
  LoadedProgram loaded = ReadProgramFile(*file, format);
  if (loaded.status != ProgramFileStatus::kGood) console.Fail(ProgramFileFault(loaded.status, path));
  return std::move(loaded.program);
}

/// Whether the device that the search found is no other generation than the file; tells it otherwise. One
/// that is of no known generation is left to the procedure, which has a message for it.
bool Fits(DeviceSession& session, const DeviceKind& kind, const std::string& path) {
  const Bytes type = session.Settings().DeviceType();
  const DeviceKind* found = FindDeviceKind(type);
  if (found == nullptr || found == &kind) return true;
  session.Say(path + " ist ein Programm für " + std::string(kind.name) + ", das Gerät meldet sich als " +
              Printable(type));
  return false;
}

ExitStatus UpdateProgram(const Options& options, Console& console) {
  const DeviceKind* kind = KindOfFile(options.path);
  if (kind == nullptr) return console.WrongUse(options.path + ": *.pro oder *.pr3 erwartet");
  const Bytes program = LoadProgram(console, options.path, kind->program.format);
  if (program.empty()) return ExitStatus::kFailed;
  const bool writes = !options.update.dryRun;
  if (writes && !Agrees(console, kUpdateWarning, options.update.yes))
    return console.Fail("nichts wurde geschrieben");
  DeviceSession session(console, options.device);
  // A device that is not found may be in its loader, as after an update that has failed: the procedure asks
  // for that where the generation can be found so, and the test is not repeated.
  const bool found = session.Search();
  if (session.PortFailed() || (found && !Fits(session, *kind, options.path))) return ExitStatus::kFailed;
  return RunOnConsole(
      console, session, writes, [&] { return found && session.Search(); },
      [&](LoaderLink& link, const DeviceSearch& search, UpdateObserver& observer) {
        return writes ? RunProgramUpdate(*kind, link, search, program, observer)
                      : RehearseProgramUpdate(*kind, link, search, observer);
      });
}

}  // namespace

Action DefineUpdateProgram(CLI::App& app) {
  auto options = std::make_shared<Options>();
  DefineDeviceOptions(app, options->device);
  DefineUpdateOptions(app, options->update);
  AddOption(app, "DATEI", options->path, "Programm (*.pro, *.pr3)").Required();
  return [options](Console& console) { return UpdateProgram(*options, console); };
}

}  // namespace ox::tool
