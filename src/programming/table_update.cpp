// Linking the tables, and the steps of the table update.
#include "programming/table_update.h"

#include "programming/device_kind.h"
#include "programming/update_steps.h"
#include "session/messages.h"
#include "tables/linking.h"

namespace ox {
namespace {

constexpr std::string_view kOldSoftware =
    "Hinweis: Orvanexen mit einem SW-Stand vor 3.0\r\n"
    "können mit diesem Programm keine neue Messstellentabelle\r\n"
    "erhalten!";
constexpr std::string_view kUnknownKind =
    "Abbruch: Geräte mit SW-Stand vor 3.0 können so nicht programmiert werden!\r\n"
    "Bitte wenden Sie sich an den Hersteller.";
constexpr std::string_view kSuccess = "Tabellenupdate erfolgreich abgeschlossen!";
constexpr std::string_view kRehearsed = "Probelauf beendet: Das Gerät kann die Tabellen erhalten.";

/// What the type of a device with software from 3.0 on begins with.
constexpr BytesView kUpdatableType = "OX ";

constexpr Refusal kNoAcknowledgement{1};
constexpr Refusal kLoaderSilent{2};
constexpr Refusal kPrepareRefused{3};
constexpr Refusal kNotVerified{5, "Checksummenfehler!"};

constexpr BlockTransfer kTransfer{
    .write = request::kWriteTables, .markPeriod = 2, .markPhase = 0, .refusal = {4}};

bool Usable(const TableImages& images, const DeviceKind& kind) {
  return (images.*kind.tables.image).status == ImageStatus::kBuilt;
}

/// Looks for a device that is at work. One whose image is known to be of no use stays in service.
bool FindFittingDevice(UpdateRun& run, const TableImages& images) {
  if (!run.FindDevice(kConnectionMessage)) return false;
  const Bytes& ident = run.Session().DeviceIdent;
  if (!ident.starts_with(kUpdatableType)) return run.Abort(kOldSoftware);
  const DeviceKind* kind = FindDeviceKind(ident);
  return kind == nullptr || Usable(images, *kind) || run.Abort(kind->tables.unusable);
}

/// Brings the device into its loader, unless it runs it already.
bool ReachLoader(UpdateRun& run, const TableImages& images) {
  if (run.LoaderRuns()) return true;
  if (!FindFittingDevice(run, images)) return false;
  run.Mark();
  if (!run.EnterLoader(kNoAcknowledgement)) return false;
  run.Mark();
  return run.Probe(request::kTableProbe, kLoaderSilent);
}

/// The kind that the loader says it is; null after a message when it accepts no kind query, or when the image
/// for it is of no use.
const DeviceKind* AskForKind(UpdateRun& run, const TableImages& images) {
  for (const DeviceKind& kind : DeviceKinds()) {
    for (const LoaderRequest& query : kind.tables.kindQueries) {
      run.Begin(step::kAskForKind, query.seconds);
      if (!run.Accepts(query)) continue;
      return Usable(images, kind) || run.Abort(kind.tables.unusable) ? &kind : nullptr;
    }
  }
  run.Abort(kUnknownKind);
  return nullptr;
}

}  // namespace

std::optional<TableImages> BuildLinkedImages(const StationTables& tables, TableMessages& messages,
                                             UpdateObserver& observer) {
  if (!CheckAssignmentParameters(tables.assignments, tables.parameters, messages)) return std::nullopt;
  const Bytes linked = AttachAssignments(tables.points, tables.assignments, messages);
  if (linked.empty()) return std::nullopt;
  TableImages images = BuildTableImages(linked, tables.parameters);
  const std::span<const DeviceKind> kinds = DeviceKinds();
  for (auto kind = kinds.rbegin(); kind != kinds.rend(); ++kind) {  // the newest first
    if ((images.*kind->tables.image).status != ImageStatus::kOverflow) continue;
    observer.Tell(kind->tables.overflow);
    return std::nullopt;
  }
  return images;
}

UpdateEnd RunTableUpdate(LoaderLink& link, const DeviceSearch& search, const TableImages& images,
                         UpdateObserver& observer) {
  return RunUpdate(link, search, observer, [&](UpdateRun& run) {
    if (!ReachLoader(run, images)) return false;
    const DeviceKind* kind = AskForKind(run, images);
    if (kind == nullptr) return false;
    run.Mark();
    return run.Demand(step::kPrepare, request::kPrepareTables, kPrepareRefused) &&
           run.WriteBlocks(step::kWriteTables, (images.*kind->tables.image).bytes, kTransfer) &&
           run.Demand(step::kVerifyTables, request::kVerifyTables, kNotVerified) && run.Finish(kSuccess);
  });
}

UpdateEnd RehearseTableUpdate(LoaderLink& link, const DeviceSearch& search, const TableImages& images,
                              UpdateObserver& observer) {
  return RunUpdate(link, search, observer, [&](UpdateRun& run) {
    const bool takes = run.LoaderRuns() ? AskForKind(run, images) != nullptr : FindFittingDevice(run, images);
    return takes && run.Conclude(kRehearsed);
  });
}

}  // namespace ox
