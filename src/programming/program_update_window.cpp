// Loading a program file, and the steps of the program update.
#include "programming/program_update_window.h"

#include <optional>
#include <utility>

namespace ox {
namespace {

constexpr std::string_view kLoading = "Programmdatei wird geladen ...";
constexpr std::string_view kLoaded = " O.K.!";
constexpr std::string_view kSuccess = "Programmupdate erfolgreich abgeschlossen!";

// The numbers in the abort messages of the steps that both generations share.
constexpr int kNoAcknowledgement = 11;
constexpr int kLoaderSilent = 12;
constexpr int kNotVerified = 16;

}  // namespace

ProgramUpdateWindow::ProgramUpdateWindow(const ProgramUpdate& update, Host& host, Subs& subs,
                                         FileChooser& chooser)
    : UpdateWindow(host, subs.settings, update.windowName, update.caption),
      update_(update),
      chooser_(chooser) {
  ChPro.onClick = [this] { ChooseProgram(); };
  ProStart.onClick = [this] { RunUpdate(ProStart, [this] { return UpdateDevice(); }); };
  proEnd.onClick = [this] { RequestClose(); };
}

void ProgramUpdateWindow::OnFailure() {
  UpdateWindow::OnFailure();
  if (program_.empty()) ForgetProgram();
}

void ProgramUpdateWindow::ForgetProgram() {
  program_.clear();
  ChPro.SetChecked(false);
  ProStart.SetEnabled(false);
  Go.SetText("");
}

void ProgramUpdateWindow::ChooseProgram() {
  const int choice = ++choices_;
  program_.clear();
  const std::string path = ChPro.Checked() ? chooser_.Choose(update_.filePattern) : std::string();
  if (!path.empty()) {
    Go.SetText(kLoading);
    host_.windows.Yield();
    if (choice != choices_) return;  // the user has clicked the box once more: his last word counts
    program_ = LoadProgram(path);
  }
  if (program_.empty()) {
    ForgetProgram();
    return;
  }
  Go.Append(kLoaded);
  ProStart.SetEnabled(true);
}

Bytes ProgramUpdateWindow::LoadProgram(const std::string& path) {
  // One byte more than the format's tells a file that is too long.
  const std::optional<Bytes> file = host_.files.Read(path, update_.format.FileSize() + 1);
  LoadedProgram loaded = ReadProgramFile(file.value_or(Bytes()), update_.format);
  if (loaded.status != ProgramFileStatus::kGood) {
    ForgetProgram();
    Abort(loaded.status == ProgramFileStatus::kWrongSize ? "Datei " + path + " fehlerhaft!"
                                                         : "Checksummenfehler in Datei " + path + "!");
  }
  return std::move(loaded.program);
}

bool ProgramUpdateWindow::UpdateDevice() {
  const bool loaderRuns = update_.triesLoaderFirst && LoaderRuns();
  if (!loaderRuns && !SendIntoLoader()) return false;
  return PrepareDevice() && WriteBlocks(program_, update_.transfer, update_.blockRefusal) &&
         Demand(request::kVerifyProgram, WrongAnswer(kNotVerified)) && Finish(kSuccess);
}

bool ProgramUpdateWindow::SendIntoLoader() {
  return FindDevice(ProgramUpdateConnectionMessage()) && CheckDeviceType() &&
         EnterLoader(WrongAnswer(kNoAcknowledgement));
}

bool ProgramUpdateWindow::CheckDeviceType() {
  const Bytes type = settings_.DeviceType();
  if (type.starts_with(update_.deviceType)) return true;
  for (const ProgramUpdate::TypeRefusal& refusal : update_.otherTypes) {
    if (type.starts_with(refusal.type)) return Abort(refusal.message);
  }
  return false;
}

bool ProgramUpdateWindow::PrepareDevice() {
  if (update_.probesLoader) {
    Mark();
    if (!Probe(request::kProbe, WrongAnswer(kLoaderSilent))) return false;
  }
  for (const ProgramUpdate::Preparation& step : update_.preparations) {
    if (step.marked) Mark();
    if (!step.numbered) {
      if (!link_.Accepts(step.request)) return Abort(step.refusal);
    } else if (!Demand(step.request, step.refusal)) {
      return false;
    }
  }
  return true;
}

}  // namespace ox
