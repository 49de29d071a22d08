// Expected texts that are too long for a test stand in files of its folder.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>

#include "support/difference.h"
#include "support/scratch_folder.h"

namespace ox::test {

/// Tells the first line of tests/`name` that is not as seen. With OX_RENEW in the environment the file
/// becomes what is seen.
inline void ExpectFile(const std::string& name, const std::string& seen) {
  const std::string file = OX_DEMO_FOLDER "/../tests/" + name;
  if (std::getenv("OX_RENEW") != nullptr) WriteFile(file, seen);
  const std::string expected = ReadFile(file);
  EXPECT_EQ(Difference(seen, expected, Lines(expected)), "") << name;
}

}  // namespace ox::test
