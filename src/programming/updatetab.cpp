// Loading the tables, and the steps of the table update.
#include "programming/updatetab.h"

#include "session/messages.h"
#include "session/window_table_messages.h"
#include "tables/linking.h"
#include "tables/mes_table.h"
#include "tables/par_table.h"
#include "tables/table_file.h"
#include "tables/zuo_table.h"

namespace ox {
namespace {

constexpr std::string_view kLoaded = " O.K.!";

constexpr std::string_view kOverflow = "Abbruch: Überlauffehler der Tabellen!";
constexpr std::string_view kGeneration3Overflow = "Abbruch: Überlauffehler der Tabellen OX3!";
constexpr std::string_view kGeneration3Unusable = "Abbruch: Tabellen OX3 fehlerhaft!";
constexpr std::string_view kOldSoftware =
    "Hinweis: Orvanexen mit einem SW-Stand vor 3.0\r\n"
    "können mit diesem Programm keine neue Messstellentabelle\r\n"
    "erhalten!";
constexpr std::string_view kUnknownKind =
    "Abbruch: Geräte mit SW-Stand vor 3.0 können so nicht programmiert werden!\r\n"
    "Bitte wenden Sie sich an den Hersteller.";
constexpr std::string_view kChecksumError = "Abbruch der Programmierung(5): Checksummenfehler!";
constexpr std::string_view kSuccess = "Tabellenupdate erfolgreich abgeschlossen!";

/// What the type of a device with software from 3.0 on begins with.
constexpr BytesView kUpdatableType = "OX ";
constexpr BytesView kGeneration3Type = "OX 3";

// The numbers in the abort messages of this procedure.
constexpr int kNoAcknowledgement = 1;
constexpr int kLoaderSilent = 2;
constexpr int kPrepareRefused = 3;
constexpr int kBlockRefused = 4;

constexpr BlockTransfer kTransfer{.write = request::kWriteTables, .markPeriod = 2, .markPhase = 0};

}  // namespace

updatetab::updatetab(Host& host, Subs& subs, FileChooser& chooser)
    : UpdateWindow(host, subs.settings, "updatetab", "Update Tabellen"),
      chooser_(chooser),
      points_{ChMes, "*.mes", "Messstellentabelle wird geladen ...", ParseMesTable, {}},
      parameters_{ChPar, "*.par", "Parameterliste wird geladen ...", ParseParTable, {}},
      assignments_{ChZuo, "*.zuo", "Zuordnungstabelle wird geladen ...", ParseZuoTable, {}} {
  for (Table* table : {&points_, &parameters_, &assignments_}) {
    table->box.onClick = [this, table] { ChooseTable(*table); };
  }
  TabStart.onClick = [this] { RunUpdate(TabStart, [this] { return UpdateDevice(); }); };
  TabEnd.onClick = [this] { RequestClose(); };
}

void updatetab::OnLoad() {
  for (Table* table : {&points_, &parameters_, &assignments_}) {
    table->box.SetChecked(false);
    table->packed.clear();
  }
  Go.SetText("");
  TabStart.SetEnabled(false);
}

void updatetab::OnFailure() {
  UpdateWindow::OnFailure();
  for (Table* table : {&points_, &parameters_, &assignments_}) {
    if (!table->packed.empty() || !table->box.Checked()) continue;
    table->box.SetChecked(false);
    Go.SetText("");
  }
  EnableStart();
}

void updatetab::EnableStart() {
  TabStart.SetEnabled(ChMes.Checked() && ChPar.Checked() && ChZuo.Checked());
}

void updatetab::ChooseTable(Table& table) {
  const int choice = ++table.choices;
  // Until the new table is there, there is none: not even when its loading breaks off.
  table.packed.clear();
  const std::string path = table.box.Checked() ? chooser_.Choose(table.pattern) : std::string();
  if (path.empty()) {
    table.box.SetChecked(false);
  } else {
    Go.SetText(table.status);
    host_.windows.Yield();
    if (choice != table.choices) return;  // the user has clicked the box once more: his last word counts
    table.packed = LoadTable(path, table);
    if (table.packed.empty()) table.box.SetChecked(false);
  }
  Go.SetText(table.box.Checked() ? std::string(table.status) + std::string(kLoaded) : std::string());
  EnableStart();
}

Bytes updatetab::LoadTable(const std::string& path, const Table& table) {
  const std::optional<TableText> text = ReadTableText(host_.files, path);
  if (!text) {
    host_.windows.ShowMessage("Fehler beim Lesen der Datei: " + path + "!");
    return {};
  }
  WindowTableMessages messages(host_.windows);
  return table.parse(*text, messages);
}

bool updatetab::UpdateDevice() {
  const std::optional<TableImages> images = BuildImages();
  if (!images || !ReachLoader(*images)) return false;
  const Bytes* image = SelectImage(*images);
  if (image == nullptr) return false;
  Mark();
  if (!Demand(request::kPrepareTables, WrongAnswer(kPrepareRefused)) ||
      !WriteBlocks(*image, kTransfer, WrongAnswer(kBlockRefused)) ||
      !Demand(request::kVerifyTables, kChecksumError)) {
    return false;
  }
  Finish(kSuccess);
  Go.SetText("");
  return true;
}

std::optional<TableImages> updatetab::BuildImages() {
  WindowTableMessages messages(host_.windows);
  if (!CheckAssignmentParameters(assignments_.packed, parameters_.packed, messages)) return std::nullopt;
  const Bytes linked = AttachAssignments(points_.packed, assignments_.packed, messages);
  if (linked.empty()) return std::nullopt;
  TableImages images = BuildTableImages(linked, parameters_.packed);
  if (images.generation3.status == ImageStatus::kOverflow) {
    Abort(kGeneration3Overflow);
    return std::nullopt;
  }
  if (images.older.status == ImageStatus::kOverflow) {
    Abort(kOverflow);
    return std::nullopt;
  }
  return images;
}

bool updatetab::ReachLoader(const TableImages& images) {
  if (LoaderRuns()) return true;
  if (!FindDevice(kConnectionMessage)) return false;
  if (!settings_.DeviceIdent.starts_with(kUpdatableType)) return Abort(kOldSoftware);
  // Its image is of no use: the device is not taken out of service for it.
  if (settings_.DeviceIdent.starts_with(kGeneration3Type) && images.generation3.status != ImageStatus::kBuilt)
    return Abort(kGeneration3Unusable);
  Mark();
  if (!EnterLoader(WrongAnswer(kNoAcknowledgement))) return false;
  Mark();
  return Probe(request::kTableProbe, WrongAnswer(kLoaderSilent));
}

const Bytes* updatetab::SelectImage(const TableImages& images) {
  const TableImage* image = nullptr;
  if (link_.Accepts(request::kOlderKind)) {
    image = &images.older;
  } else if (link_.Accepts(request::kGeneration3Kind) || link_.Accepts(request::kLaterGeneration3Kind)) {
    image = &images.generation3;
  }
  if (image != nullptr && image->status == ImageStatus::kBuilt) return &image->bytes;
  Abort(image == nullptr ? kUnknownKind : kGeneration3Unusable);
  return nullptr;
}

}  // namespace ox
