// What the controls tell their views and their windows.
#include "ui/controls.h"

#include <utility>

#include "ui/window.h"

namespace ox {

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

void TextBox::Append(std::string_view text) {
  text_ += text;
  Tell(Change::kAppended);
}

void TextBox::Edit(std::string_view text) {
  if (!Usable() || text_ == text) return;
  // What the user typed may be more than the memory holds.
  RunHandler([this, &text] {
    text_ = text;
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

Timer::Timer(Window& window, std::string_view name, int intervalMilliseconds)
    : Control(window, name), interval_(intervalMilliseconds) {
  SetEnabled(false);
}

}  // namespace ox
