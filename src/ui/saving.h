// What a window offers to keep in a file.
#pragma once

#include <string_view>
#include <vector>

#include "platform/bytes.h"
#include "ui/host.h"

namespace ox {

/// A content as it would stand in the file, and what kind of file that is.
struct Savable {
  FileKind kind;
  Bytes content;
};

/// Asks the user where to save one of the contents and writes it there; returns at once, whatever the user
/// does. `name` is proposed to him, without extension. When the file cannot be written he is told. The window
/// is the one that is shown uppermost.
void OfferToSave(Host& host, Window& window, std::string_view name, std::vector<Savable> contents);

/// "2026-11-22_14-05-58": for the name of a file.
std::string TimeInName(const CivilTime& time);

}  // namespace ox
