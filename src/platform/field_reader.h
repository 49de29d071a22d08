// Delimited fields of a text file, as the settings file and loader files are read.
#pragma once

#include "platform/bytes.h"

namespace ox {

/// Takes a text apart field by field. Blanks in front of a field are skipped; it ends at a comma or at a line
/// end (CR LF, LF or CR). A field in double quotes runs to the closing quote, over commas and line ends, or
/// to the end of the text; the quotes are dropped, and so is what follows them up to the field's end.
class FieldReader {
 public:
  /// The text outlives the reader and the fields, which are parts of it.
  explicit FieldReader(BytesView text) : rest_(text) {}

  bool AtEnd() const { return rest_.empty(); }

  /// The next field; empty for one without content, and at the end.
  BytesView Next();

 private:
  BytesView TakeUpTo(BytesView ends);
  void SkipDelimiter();

  BytesView rest_;
};

}  // namespace ox
