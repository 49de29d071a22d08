// A console that takes what every other host's does.
#pragma once

#include <vector>

#include "platform/terminals.h"

namespace ox {

/// For its own life: output and messages are the same bytes as on any other host, and a console that they
/// lead to reads them as UTF-8 and obeys control sequences, as far as it can. Given back at the end, since
/// the console outlives the program. Made before anything is written.
class ConsoleModes {
 public:
  ConsoleModes();
  ConsoleModes(const ConsoleModes&) = delete;
  ConsoleModes& operator=(const ConsoleModes&) = delete;
  ~ConsoleModes();

  /// Which of the three streams lead to a console, and whether all that do show colours.
  const Terminals& Which() const { return which_; }

 private:
  struct Changed {
    void* console;
    unsigned long before;
  };

  bool Prepare(unsigned long stream);

  Terminals which_;
  std::vector<Changed> changed_;
  unsigned codePage_ = 0;  // of the console before
};

}  // namespace ox
