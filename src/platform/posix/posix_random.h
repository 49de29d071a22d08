// Random numbers, seeded anew by the host for each run.
#pragma once

#include "platform/seeded_random.h"

namespace ox {

class PosixRandom : public SeededRandom {
 public:
  PosixRandom() : SeededRandom(std::random_device{}()) {}
};

}  // namespace ox
