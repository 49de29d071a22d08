// Where a program's streams lead.
#pragma once

namespace ox {

/// Which of the streams lead to a terminal, where a user looks on and can answer.
struct Terminals {
  bool input = false;
  bool output = false;
  bool messages = false;
  bool colours = false;  ///< texts on a terminal may be coloured
};

}  // namespace ox
