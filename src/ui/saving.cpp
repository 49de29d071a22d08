// From the user's answer to the file.
#include "ui/saving.h"

#include <algorithm>
#include <string>
#include <utility>

#include "platform/time_text.h"
#include "ui/window.h"

namespace ox {

void OfferToSave(Host& host, Window& window, std::string_view name, std::vector<Savable> contents) {
  std::vector<FileKind> kinds;
  kinds.reserve(contents.size());
  for (const Savable& content : contents) kinds.push_back(content.kind);
  host.windows.AskWhereToSave(
      name, kinds,
      [&host, &window, contents = std::move(contents)](const std::string& path, std::size_t kind) {
        window.Run([&] {
          if (host.files.Replace(path, contents.at(kind).content)) return;
          host.windows.ShowMessage("Fehler beim Schreiben der Datei: " + path + "!");
        });
      });
}

std::string TimeInName(const CivilTime& time) {
  std::string text = IsoTime(time);
  std::ranges::replace(text, 'T', '_');
  std::ranges::replace(text, ':', '-');
  return text;
}

}  // namespace ox
