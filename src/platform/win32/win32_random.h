// Random numbers, seeded anew by the host for each run.
#pragma once

#include "platform/seeded_random.h"

namespace ox {

class Win32Random : public SeededRandom {
 public:
  Win32Random();
};

}  // namespace ox
