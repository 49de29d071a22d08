// From a click to the content of a file.
#include "updates/file_box.h"

#include <utility>

namespace ox {
namespace {

constexpr std::string_view kLoaded = " O.K.!";

}  // namespace

FileBox::FileBox(Host& host, FileChooser& chooser, Parts parts)
    : host_(host), chooser_(chooser), parts_(std::move(parts)) {
  parts_.box.onClick = [this] { Choose(); };
  parts_.box.TakeFiles(parts_.pattern, [this](const std::string& path) {
    parts_.box.SetChecked(true);
    Load(path);
  });
}

void FileBox::Clear() {
  content_.clear();
  parts_.box.SetChecked(false);
  parts_.go.SetText("");
  parts_.contents.SetText("");
  parts_.changed();
}

void FileBox::OnFailure() {
  if (content_.empty() && parts_.box.Checked()) Clear();
}

void FileBox::Choose() {
  Load(parts_.box.Checked() ? chooser_.Choose(parts_.pattern) : std::string());
}

void FileBox::Load(const std::string& path) {
  const int click = ++clicks_;
  // From here on there is no file until the new one is loaded, also when the loading breaks off.
  content_.clear();
  parts_.contents.SetText("");
  if (!path.empty()) {
    parts_.go.SetText(parts_.loading);
    host_.windows.Yield();
    if (click != clicks_) return;  // the user has clicked the box once more, and the last click counts
    content_ = parts_.load(path);
  }
  if (content_.empty()) {
    Clear();
    return;
  }
  parts_.go.SetText(std::string(parts_.loading).append(kLoaded));
  const std::string name = path.substr(path.rfind(host_.files.Style().separator) + 1);
  parts_.contents.SetText(name + ": " + parts_.describe(content_));
  parts_.changed();
}

}  // namespace ox
