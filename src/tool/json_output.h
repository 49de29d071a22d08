// Answers for machines.
#pragma once

#include <nlohmann/json.hpp>
#include <ostream>

#include "tool/console.h"

namespace ox::tool {

/// Members keep the order in which they are put in.
using Json = nlohmann::ordered_json;

/// Writes a document; what is no UTF-8, such as a strange file name, is replaced.
inline void WriteJsonDocument(const Json& json, Console& console) {
  constexpr int kIndent = 2;
  console.output << json.dump(kIndent, ' ', false, Json::error_handler_t::replace) << "\n";
}

}  // namespace ox::tool
