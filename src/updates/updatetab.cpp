// Loading the tables, and the table update in its window.
#include "updates/updatetab.h"

#include <optional>

#include "programming/device_kind.h"
#include "programming/table_update.h"
#include "session/window_table_messages.h"
#include "tables/image_fill.h"
#include "tables/mes_table.h"
#include "tables/par_table.h"
#include "tables/table_file.h"
#include "tables/table_summary.h"
#include "tables/zuo_table.h"

namespace ox {
namespace {

constexpr const char* kNoImages = "Die Tabellen passen nicht zusammen";

std::string FillOf(const TableImages& images, const DeviceKind& kind) {
  return "Belegung " + std::string(kind.name) + ": " + DescribeFill(images.*kind.tables.image);
}

}  // namespace

updatetab::updatetab(Host& host, Subs& subs, FileChooser& chooser)
    : Window(host.windows, "updatetab", "Update Tabellen"),
      Progress(*this, host.clock),
      Hinweis(*this, host.notices),
      host_(host),
      points_(host, chooser,
              TableParts({.box = ChMes,
                          .go = Go,
                          .contents = MesContents,
                          .pattern = "*.mes",
                          .loading = "Messstellentabelle wird geladen ...",
                          .describe = DescribePointTable},
                         ParseMesTable)),
      parameters_(host, chooser,
                  TableParts({.box = ChPar,
                              .go = Go,
                              .contents = ParContents,
                              .pattern = "*.par",
                              .loading = "Parameterliste wird geladen ...",
                              .describe = DescribeParameterList},
                             ParseParTable)),
      assignments_(host, chooser,
                   TableParts({.box = ChZuo,
                               .go = Go,
                               .contents = ZuoContents,
                               .pattern = "*.zuo",
                               .loading = "Zuordnungstabelle wird geladen ...",
                               .describe = DescribeAssignmentTable},
                              ParseZuoTable)),
      frame_(*this, host, subs.settings, Go, Progress, {&TabEnd, &TabStart, &ChMes, &ChPar, &ChZuo}) {
  TabStart.onClick = [this] { UpdateDevice(); };
  TabEnd.onClick = [this] { RequestClose(); };
}

FileBox::Parts updatetab::TableParts(FileBox::Parts parts, Parser parse) {
  parts.load = [this, parse](const std::string& path) { return LoadTable(path, parse); };
  parts.changed = [this] {
    EnableStart();
    ShowFill();
  };
  return parts;
}

void updatetab::OnLoad() {
  for (FileBox* table : {&points_, &parameters_, &assignments_}) table->Clear();
}

void updatetab::OnFailure() {
  frame_.OnFailure();
  for (FileBox* table : {&points_, &parameters_, &assignments_}) table->OnFailure();
}

bool updatetab::AllLoaded() const {
  return !points_.Content().empty() && !parameters_.Content().empty() && !assignments_.Content().empty();
}

void updatetab::ShowFill() {
  std::optional<TableImages> images;
  if (AllLoaded()) {
    images = BuildImagesSilently(points_.Content(), parameters_.Content(), assignments_.Content());
  }
  Fill2.SetText(images ? FillOf(*images, DeviceKinds().front()) : AllLoaded() ? kNoImages : "");
  Fill3.SetText(images ? FillOf(*images, DeviceKinds().back()) : "");
}

Bytes updatetab::LoadTable(const std::string& path, Parser parse) {
  const std::optional<TableText> text = ReadTableText(host_.files, path);
  if (!text) {
    host_.windows.ShowMessage("Fehler beim Lesen der Datei: " + path + "!");
    return {};
  }
  WindowTableMessages messages(host_.windows);
  return parse(*text, messages);
}

void updatetab::UpdateDevice() {
  frame_.Run(TabStart, [this](LoaderLink& link, const DeviceSearch& search, UpdateObserver& observer) {
    WindowTableMessages messages(host_.windows);
    const std::optional<TableImages> images = BuildLinkedImages(
        {points_.Content(), parameters_.Content(), assignments_.Content()}, messages, observer);
    if (!images) return UpdateEnd::kFailed;
    const UpdateEnd end = RunTableUpdate(link, search, *images, observer);
    if (end == UpdateEnd::kSucceeded) Go.SetText("");
    return end;
  });
}

}  // namespace ox
