// How the table code speaks to the user, so that it runs without a window system.
#pragma once

#include "platform/bytes.h"

namespace ox {

/// Message boxes asked for by parsers and linking. Every text is Windows-1252 with CR as line end, since the
/// messages quote lines of the table file byte for byte; the implementer turns it into text for the screen.
/// Both calls return when the user has answered.
class TableMessages {
 public:
  virtual ~TableMessages() = default;

  /// A box with only an OK button.
  virtual void Show(const Bytes& text) = 0;

  /// A box with OK and Cancel; true when the user chose OK.
  virtual bool Confirm(const Bytes& text) = 0;
};

}  // namespace ox
