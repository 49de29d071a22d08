// Random numbers from a seed that the host gives anew for each run.
#pragma once

#include <cstdint>
#include <random>

#include "platform/random_numbers.h"

namespace ox {

class SeededRandom : public RandomNumbers {
 public:
  explicit SeededRandom(std::uint64_t seed) : engine_(seed) {}

  double Next() override;

 private:
  std::mt19937_64 engine_;
};

}  // namespace ox
