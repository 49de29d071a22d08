// The demo programs are what the folder holds. That they are sound is tried where they are read.
#include "simulator/demo_files.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace ox::sim {
namespace {

Bytes DemoFile(const std::string& name) {
  std::ifstream file(std::string(OX_DEMO_FOLDER "/") + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(DemoFiles, AreThoseOfTheFolder) {
  EXPECT_EQ(DemoProgram2(), DemoFile("ox2.pro"));
  EXPECT_EQ(DemoProgram3(), DemoFile("ox3.pr3"));
  EXPECT_EQ(DemoLoaderHex(), DemoFile("OX3NEU.LDR"));
}

}  // namespace
}  // namespace ox::sim
