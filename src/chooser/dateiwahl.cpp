// What the chooser's lists and buttons do.
#include "chooser/dateiwahl.h"

#include "chooser/chooser_values.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "chooser/file_pattern.h"
#include "chooser/path_rules.h"

namespace ox {
namespace {

constexpr std::string_view kLanguageEnglish = "GB";
/// In front of a folder's name for each folder above it.
constexpr std::string_view kIndent = "  ";

}  // namespace

Dateiwahl::Dateiwahl(Host& host, Subs& subs)
    : Window(host.windows, "Dateiwahl", "Datei wählen"),
      host_(host),
      subs_(subs),
      style_(host.files.Style()) {
  Drive1.onSelect = [this] { ChooseDrive(); };
  // A click only marks a folder, so that the arrow keys can pass by; double click or Enter goes there.
  Dir1.onActivate = [this] { ChooseFolder(); };
  File1.onSelect = [this] { TakeFileName(); };
  File1.onActivate = [this] {
    TakeFileName();
    Accept();
  };
  Text1.onChange = [this] { ShowFiles(); };
  Command1.onClick = [this] { Accept(); };
  Command2.onClick = [this] { Cancel(); };
}

void Dateiwahl::OnLoad() {
  folder_ = host_.files.WorkingFolder();
}

void Dateiwahl::OnActivate() {
  Command1.MakeDefault();
  Text2.SetFocus();
  ChooserValues& values = subs_.chooser;
  Text1.SetText(values.FilePattern);
  RestoreLastFolder();
  Text2.SetText(std::exchange(values.ChosenFile, {}));
  Label1.SetText(values.ChooserPrompt);
  Command2.SetText(English() ? "Cancel" : "Abbrechen");
}

void Dateiwahl::OnClose() {
  Hide();
}

void Dateiwahl::RestoreLastFolder() {
  const ChooserValues& values = subs_.chooser;
  if (!values.LastDrive.empty() && ListFolder(values.LastDrive + values.LastFolder)) return;
  if (ListFolder(folder_)) return;
  ShowDrives();
  ShowFiles();
}

void Dateiwahl::ShowDrives() {
  const std::vector<std::string> drives = host_.files.Drives();
  const std::string drive = SplitFolder(folder_, style_, drives).drive;
  const auto found = std::find(drives.begin(), drives.end(), drive);
  const auto index = found == drives.end() ? ListBox::kNone : static_cast<int>(found - drives.begin());
  if (Drive1.Items() != drives) Drive1.SetItems(drives);
  Drive1.SetSelected(index);
}

void Dateiwahl::ShowFiles() {
  std::vector<std::string> shown;
  std::copy_if(fileNames_.begin(), fileNames_.end(), std::back_inserter(shown),
               [this](const std::string& name) { return MatchesPattern(name, Text1.Text()); });
  File1.SetItems(std::move(shown));
}

bool Dateiwahl::ListFolder(const std::string& folder) {
  const auto subfolders = host_.files.FoldersIn(folder);
  auto files = host_.files.FilesIn(folder);
  if (!subfolders || !files) return false;

  std::vector<std::string> lines;
  std::vector<std::string> paths;
  std::string indent;
  const auto add = [&](const std::string& name, std::string path) {
    lines.push_back(indent + name);
    paths.push_back(std::move(path));
  };
  for (const NamedFolder& above : WayTo(folder, style_)) {
    add(above.name, above.path);
    indent += kIndent;
  }
  const int own = static_cast<int>(lines.size()) - 1;
  for (const std::string& name : *subfolders) add(name, JoinPath(folder, name, style_));
  // Assigned last, when nothing can throw any more: lines and paths always belong together.
  folder_ = folder;
  fileNames_ = *std::move(files);
  folderPaths_ = std::move(paths);
  Dir1.SetItems(std::move(lines));
  Dir1.SetSelected(own);

  ShowDrives();
  ShowFiles();
  return true;
}

bool Dateiwahl::GoTo(const std::string& folder) {
  const bool changed = folder != folder_;
  if (!ListFolder(folder)) return false;
  if (changed) Text2.SetText(folder_);
  return true;
}

void Dateiwahl::ChooseDrive() {
  if (GoTo(DriveRoot(Drive1.SelectedItem(), style_))) return;
  host_.windows.ShowMessage(English() ? "Device not available" : "Gerät nicht verfügbar");
}

void Dateiwahl::ChooseFolder() {
  const std::string folder = folderPaths_[static_cast<std::size_t>(Dir1.Selected())];
  if (!GoTo(folder)) host_.windows.ShowMessage("Fehler beim Lesen des Ordners: " + folder + "!");
}

void Dateiwahl::TakeFileName() {
  Text2.SetText(File1.SelectedItem());
}

void Dateiwahl::Accept() {
  subs_.chooser.ChosenFile = ChosenPath();
  Hide();
}

void Dateiwahl::Cancel() {
  Text2.SetText("");
  Accept();
}

std::string Dateiwahl::ChosenPath() {
  if (Text2.Text().empty()) return {};
  ChooserValues& values = subs_.chooser;
  Text2.SetText(WithExtension(Text2.Text(), values.FilePattern));
  const std::string& name = Text2.Text();
  if (IsAbsolutePath(name, style_)) return name;
  const DriveAndFolder last = SplitFolder(folder_, style_, Drive1.Items());
  values.LastDrive = last.drive;
  values.LastFolder = last.folder;
  const std::string path = JoinPath(folder_, name, style_);
  return path.ends_with(style_.separator) ? std::string() : path;
}

bool Dateiwahl::English() const {
  return subs_.settings.Language == kLanguageEnglish;
}

}  // namespace ox
