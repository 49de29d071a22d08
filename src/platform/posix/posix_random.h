// Random numbers, seeded anew by the host for each run.
#pragma once

#include <random>

#include "platform/random_numbers.h"

namespace ox {

class PosixRandom : public RandomNumbers {
 public:
  PosixRandom() : engine_(std::random_device{}()) {}

  double Next() override;

 private:
  std::mt19937_64 engine_;
};

}  // namespace ox
