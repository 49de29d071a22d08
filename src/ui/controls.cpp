// What the controls tell their views and their windows.
#include "ui/controls.h"

#include <algorithm>
#include <utility>

#include "ui/window.h"

namespace ox {
namespace {

/// Of a UTF-8 text.
bool StartsCharacter(char byte) {
  constexpr unsigned kKindMask = 0xC0;
  constexpr unsigned kContinuation = 0x80;
  return (static_cast<unsigned char>(byte) & kKindMask) != kContinuation;
}

char AsciiLower(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

}  // namespace

Control::Control(Window& window, std::string_view name) : window_(window), name_(name) {
  window.Add(*this);
}

void Control::SetEnabled(bool enabled) {
  if (enabled_ == enabled) return;
  enabled_ = enabled;
  Tell(Change::kEnabled);
}

void Control::SetVisible(bool visible) {
  if (visible_ == visible) return;
  visible_ = visible;
  Tell(Change::kVisible);
}

void Control::SetFocus() {
  window_.NoteFocus(*this);
  Tell(Change::kFocus);
}

void Control::TakeFiles(std::string_view pattern, FileHandler onDrop) {
  extension_ = pattern.substr(pattern.rfind('.'));
  onDrop_ = std::move(onDrop);
}

bool Control::Takes(std::string_view path) const {
  if (!Usable() || !onDrop_ || path.size() <= extension_.size()) return false;
  const auto same = [](char a, char b) { return AsciiLower(a) == AsciiLower(b); };
  return std::ranges::equal(path.substr(path.size() - extension_.size()), extension_, same);
}

void Control::Drop(const std::string& path) {
  if (Takes(path)) RunHandler([&] { onDrop_(path); });
}

void Control::Save(const Bytes& shown) {
  if (onSave_) RunHandler([&] { onSave_(shown); });
}

void Control::Tell(Change change) const {
  if (view_) view_(change);
}

void Control::RunHandler(const Handler& handler) {
  if (Usable() && handler) window_.Run(handler);
}

void TextControl::SetText(std::string_view text) {
  if (text_ == text) return;
  text_ = text;
  Tell(Change::kText);
}

void MenuEntry::SetHint(std::string_view hint) {
  if (hint_ == hint) return;
  hint_ = hint;
  Tell(Change::kHint);
}

void CheckBox::SetChecked(bool checked) {
  if (checked_ == checked) return;
  checked_ = checked;
  Tell(Change::kChecked);
}

void CheckBox::Click() {
  if (!Usable()) return;
  SetChecked(!checked_);
  RunHandler(onClick);
}

void TextBox::SetText(std::string_view text) {
  if (text != Text()) SetMarked(false);
  TextControl::SetText(text);
}

void TextBox::SetMarked(bool marked) {
  if (marked_ == marked) return;
  marked_ = marked;
  Tell(Change::kMarked);
}

void TextBox::Append(std::string_view text) {
  text_ += text;
  Tell(Change::kAppended);
}

void TextBox::KeepNewest(std::size_t most) {
  if (text_.size() <= 2 * most) return;
  const std::size_t newest = text_.size() - most;
  const std::size_t lineEnd = text_.find('\n', newest);
  std::size_t first = lineEnd == std::string::npos ? newest : lineEnd + 1;
  while (first < text_.size() && !StartsCharacter(text_[first])) ++first;
  text_.erase(0, first);
  Tell(Change::kCut);
}

void TextBox::Edit(std::string_view text) {
  if (!Usable() || text_ == text) return;
  // The text that the user typed may not fit into the memory.
  RunHandler([this, &text] {
    text_ = text;
    SetMarked(false);
    if (onChange) onChange();
  });
}

void ListBox::SetItems(std::vector<std::string> items) {
  items_ = std::move(items);
  selected_ = kNone;
  Tell(Change::kItems);
}

std::string ListBox::SelectedItem() const {
  return Has(selected_) ? items_[static_cast<std::size_t>(selected_)] : std::string();
}

void ListBox::SetSelected(int index) {
  const int wanted = Has(index) ? index : kNone;
  if (selected_ == wanted) return;
  selected_ = wanted;
  Tell(Change::kSelected);
}

void ListBox::Select(int index) {
  if (!Usable() || !Has(index)) return;
  SetSelected(index);
  RunHandler(onSelect);
}

void ListBox::Activate(int index) {
  if (!Usable() || !Has(index)) return;
  SetSelected(index);
  RunHandler(onActivate);
}

void ProgressBar::SetPercent(int percent) {
  if (!busy_ && percent_ == percent) return;
  busy_ = false;
  percent_ = percent;
  Tell(Change::kProgress);
}

void ProgressBar::Pulse() {
  busy_ = true;
  Tell(Change::kPulse);
}

Timer::Timer(Window& window, std::string_view name, int intervalMilliseconds)
    : Control(window, name), interval_(intervalMilliseconds) {
  SetEnabled(false);
}

}  // namespace ox
