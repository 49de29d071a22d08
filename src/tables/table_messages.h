// How the table code speaks to the user, so that it runs without a window system.
#pragma once

#include <string>
#include <string_view>

namespace ox {

class TableText;

/// Message boxes asked for by parsers and linking. Every text is UTF-8 with CR as line end. Calls return when
/// the user has answered.
class TableMessages {
 public:
  virtual ~TableMessages() = default;

  /// A box with only an OK button.
  virtual void Show(const std::string& text) = 0;

  /// A box with OK and Cancel; true when the user chose OK.
  virtual bool Confirm(const std::string& text) = 0;

  /// A parser's fault in a line of its table, from 1; one past the last where the end is missing. `specific`
  /// says what is wrong and begins with ", ". Here it is shown.
  virtual void ShowFault(int line, std::string_view specific, const TableText& text);

  /// Whether a parser shall look for further faults behind the one that it has just shown. The table is
  /// refused in any case.
  virtual bool WantsFurtherFaults() const { return false; }
};

}  // namespace ox
