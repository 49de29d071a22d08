// Loading the tables, and the table update in its window.
#include "updates/updatetab.h"

#include <optional>

#include "programming/table_update.h"
#include "session/window_table_messages.h"
#include "tables/mes_table.h"
#include "tables/par_table.h"
#include "tables/table_file.h"
#include "tables/zuo_table.h"

namespace ox {

updatetab::updatetab(Host& host, Subs& subs, FileChooser& chooser)
    : Window(host.windows, "updatetab", "Update Tabellen"),
      Hinweis(*this, host.notices),
      host_(host),
      points_(host, chooser,
              TableParts(ChMes, "*.mes", "Messstellentabelle wird geladen ...", ParseMesTable)),
      parameters_(host, chooser,
                  TableParts(ChPar, "*.par", "Parameterliste wird geladen ...", ParseParTable)),
      assignments_(host, chooser,
                   TableParts(ChZuo, "*.zuo", "Zuordnungstabelle wird geladen ...", ParseZuoTable)),
      frame_(*this, host, subs.settings, Go, {&TabEnd, &TabStart, &ChMes, &ChPar, &ChZuo}) {
  TabStart.onClick = [this] { UpdateDevice(); };
  TabEnd.onClick = [this] { RequestClose(); };
}

FileBox::Parts updatetab::TableParts(CheckBox& box, std::string_view pattern, std::string_view loading,
                                     Parser parse) {
  return {.box = box,
          .go = Go,
          .pattern = pattern,
          .loading = loading,
          .load = [this, parse](const std::string& path) { return LoadTable(path, parse); },
          .changed = [this] { EnableStart(); }};
}

void updatetab::OnLoad() {
  for (FileBox* table : {&points_, &parameters_, &assignments_}) table->Clear();
}

void updatetab::OnFailure() {
  frame_.OnFailure();
  for (FileBox* table : {&points_, &parameters_, &assignments_}) table->OnFailure();
  EnableStart();
}

void updatetab::EnableStart() {
  TabStart.SetEnabled(!points_.Content().empty() && !parameters_.Content().empty() &&
                      !assignments_.Content().empty());
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
