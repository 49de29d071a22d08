// The text of line parameters.
#include "platform/posix/line_settings.h"

#include <gtest/gtest.h>

#include "platform/serial_port.h"

namespace ox {
namespace {

TEST(LineSettings, AreReadFromTheirText) {
  const LineSettings dialogue = ParseLineSettings("9600,O,7,1");
  EXPECT_EQ(dialogue.baud, 9600U);
  EXPECT_EQ(dialogue.speed, static_cast<speed_t>(B9600));
  EXPECT_EQ(dialogue.parity, LineParity::Odd);
  EXPECT_EQ(dialogue.dataBits, 7);
  EXPECT_EQ(dialogue.stopBits, 1);
  EXPECT_EQ(dialogue.DataMask(), 0x7FU);
  EXPECT_EQ(dialogue.CharacterTime(), std::chrono::nanoseconds(1041666));  // 10 bits

  const LineSettings loader = ParseLineSettings("19200,n,8,2");
  EXPECT_EQ(loader.speed, static_cast<speed_t>(B19200));
  EXPECT_EQ(loader.parity, LineParity::None);
  EXPECT_EQ(loader.DataMask(), 0xFFU);
  EXPECT_EQ(loader.CharacterTime(), std::chrono::nanoseconds(572916));  // 11 bits
  EXPECT_EQ(ParseLineSettings("2400,e,7,1").parity, LineParity::Even);
}

TEST(LineSettings, AnythingElseIsRefused) {
  for (const char* text : {"",
                           ",",
                           "9600",
                           "9600,O",
                           "9600,O,7",
                           "9600,O,7,",
                           "9600,O,7,1,",
                           "9600,O,7,1,1",
                           "9600,O,7,3",
                           "9600,O,9,1",
                           "9600,X,7,1",
                           "9600,,7,1",
                           "9600,OO,7,1",
                           ",O,7,1",
                           "0,O,7,1",
                           "9601,O,7,1",
                           "-9600,O,7,1",
                           " 9600,O,7,1",
                           "9600, O,7,1",
                           "9600;O;7;1",
                           "09600,O,7,1",
                           "9600,O,77,1"}) {
    EXPECT_THROW(ParseLineSettings(text), PortError) << text;
  }
}

}  // namespace
}  // namespace ox
