// The files of the demo folder.
#pragma once

#include <fstream>
#include <iterator>
#include <string>

#include "platform/bytes.h"

namespace ox::test {

inline Bytes DemoFile(const std::string& name) {
  std::ifstream file(OX_DEMO_FOLDER "/" + name, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(file), {});
}

}  // namespace ox::test
