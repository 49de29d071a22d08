// Receives what goes over a line.
#pragma once

#include "platform/bytes.h"

namespace ox {

class LineTrace {
 public:
  virtual ~LineTrace() = default;

  /// What was sent or has come. The first character of `entry`, never empty, is "T" for sent, any other for
  /// received; the rest went over the line.
  virtual void Write(BytesView entry) = 0;
};

}  // namespace ox
