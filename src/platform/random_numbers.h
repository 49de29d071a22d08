// A source of pseudo-random numbers.
#pragma once

namespace ox {

class RandomNumbers {
 public:
  virtual ~RandomNumbers() = default;

  /// The next number, uniform in [0, 1).
  virtual double Next() = 0;
};

}  // namespace ox
