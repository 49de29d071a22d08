// The forms of the windows.
#pragma once

#include <QWidget>
#include <memory>
#include <string_view>

namespace ox {

/// Makes the form of this name, not yet shown; null when there is none.
std::unique_ptr<QWidget> MakeForm(std::string_view name, QWidget* parent);

}  // namespace ox
