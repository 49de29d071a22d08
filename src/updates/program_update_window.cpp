// Loading a program file, and the program update in its window.
#include "updates/program_update_window.h"

#include <optional>
#include <utility>

#include "programming/program_update.h"

namespace ox {
namespace {

/// All generations share it.
constexpr std::string_view kForm = "updatepro";

constexpr std::string_view kLoading = "Programmdatei wird geladen ...";

}  // namespace

ProgramUpdateWindow::ProgramUpdateWindow(Host& host, const DeviceKind& kind, Subs& subs, FileChooser& chooser)
    : Window(host.windows, kind.program.windowName, kind.program.caption, kForm),
      Progress(*this, host.clock),
      Hinweis(*this, host.notices),
      kind_(kind),
      host_(host),
      program_(host, chooser,
               {.box = ChPro,
                .go = Go,
                .contents = ProContents,
                .pattern = kind.program.filePattern,
                .loading = kLoading,
                .load = [this](const std::string& path) { return LoadProgram(path); },
                .describe = DescribeProgram,
                .changed = [this] { EnableStart(); }}),
      frame_(*this, host, subs.settings, Go, Progress, {&proEnd, &ProStart, &ChPro}) {
  ProStart.onClick = [this] { UpdateDevice(); };
  proEnd.onClick = [this] { RequestClose(); };
}

void ProgramUpdateWindow::OnFailure() {
  frame_.OnFailure();
  program_.OnFailure();
}

Bytes ProgramUpdateWindow::LoadProgram(const std::string& path) {
  const ProgramFormat& format = kind_.program.format;
  // One byte more than the format has is read, to notice a file that is too long.
  const std::optional<Bytes> file = host_.files.Read(path, format.FileSize() + 1);
  LoadedProgram loaded = ReadProgramFile(file.value_or(Bytes()), format);
  if (loaded.status != ProgramFileStatus::kGood) {
    program_.Clear();  // before the user is told
    host_.windows.ShowMessage(ProgramFileFault(loaded.status, path));
  }
  return std::move(loaded.program);
}

void ProgramUpdateWindow::UpdateDevice() {
  frame_.Run(ProStart, [this](LoaderLink& link, const DeviceSearch& search, UpdateObserver& observer) {
    return RunProgramUpdate(kind_, link, search, program_.Content(), observer);
  });
}

}  // namespace ox
