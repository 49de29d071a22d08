// The demo folder's programs are those that oxdemo makes.
#include "simulator/demo_files.h"

#include <gtest/gtest.h>

#include "programming/demo_file.h"

namespace ox::sim {

TEST(DemoPrograms, AreThoseOfTheFolder) {
  EXPECT_EQ(DemoProgram2(), test::DemoFile("ox2.pro"));
  EXPECT_EQ(DemoProgram3(), test::DemoFile("ox3.pr3"));
  EXPECT_EQ(DemoLoaderHex(), test::DemoFile("OX3NEU.LDR"));
}

}  // namespace ox::sim
