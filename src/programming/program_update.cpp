// The steps of the program update.
#include "programming/program_update.h"

#include "programming/update_steps.h"

namespace ox {
namespace {

constexpr std::string_view kSuccess = "Programmupdate erfolgreich abgeschlossen!";
constexpr std::string_view kRehearsed = "Probelauf beendet: Das Gerät kann das Programm erhalten.";

// The numbers in the abort messages of the steps that the generations share.
constexpr Refusal kNoAcknowledgement{11};
constexpr Refusal kLoaderSilent{12};
constexpr Refusal kNotVerified{16};

bool CheckDeviceType(UpdateRun& run, const DeviceKind& kind) {
  const Bytes type = run.Session().DeviceType();
  if (type.starts_with(kind.type)) return true;
  for (const TypeRefusal& refusal : kind.program.otherTypes) {
    if (type.starts_with(refusal.type)) return run.Abort(refusal.message);
  }
  return false;
}

/// Whether the loader runs already, as far as the kind asks for that.
bool LoaderRuns(UpdateRun& run, const DeviceKind& kind) {
  return kind.program.triesLoaderFirst && run.LoaderRuns();
}

/// Looks for a device of the right type that is at work.
bool FindRightDevice(UpdateRun& run, const DeviceKind& kind) {
  return run.FindDevice(kind.program.notFound) && CheckDeviceType(run, kind);
}

bool ReachLoader(UpdateRun& run, const DeviceKind& kind) {
  return LoaderRuns(run, kind) || (FindRightDevice(run, kind) && run.EnterLoader(kNoAcknowledgement));
}

/// Asks for everything that goes before the first block.
bool PrepareDevice(UpdateRun& run, const ProgramUpdateKind& kind) {
  if (kind.probesLoader) {
    run.Mark();
    if (!run.Probe(request::kProbe, kLoaderSilent)) return false;
  }
  for (const Preparation& preparation : kind.preparations) {
    if (preparation.marked) run.Mark();
    if (!run.Demand(preparation.step, preparation.request, preparation.refusal)) return false;
  }
  return true;
}

}  // namespace

UpdateEnd RunProgramUpdate(const DeviceKind& kind, LoaderLink& link, const DeviceSearch& search,
                           BytesView program, UpdateObserver& observer) {
  return RunUpdate(link, search, observer, [&](UpdateRun& run) {
    return ReachLoader(run, kind) && PrepareDevice(run, kind.program) &&
           run.WriteBlocks(step::kWriteProgram, program, kind.program.transfer) &&
           run.Demand(step::kVerifyProgram, request::kVerifyProgram, kNotVerified) && run.Finish(kSuccess);
  });
}

UpdateEnd RehearseProgramUpdate(const DeviceKind& kind, LoaderLink& link, const DeviceSearch& search,
                                UpdateObserver& observer) {
  return RunUpdate(link, search, observer, [&](UpdateRun& run) {
    return (LoaderRuns(run, kind) || FindRightDevice(run, kind)) && run.Conclude(kRehearsed);
  });
}

}  // namespace ox
