// How the table code speaks to the user, so that it runs without a window system.
#pragma once

#include <string>

namespace ox {

/// Message boxes asked for by parsers and linking. Every text is UTF-8 with CR as line end. Both calls return
/// when the user has answered.
class TableMessages {
 public:
  virtual ~TableMessages() = default;

  /// A box with only an OK button.
  virtual void Show(const std::string& text) = 0;

  /// A box with OK and Cancel; true when the user chose OK.
  virtual bool Confirm(const std::string& text) = 0;
};

}  // namespace ox
