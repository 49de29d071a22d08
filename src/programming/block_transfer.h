// How the blocks of a table image or of a program are sent.
#pragma once

#include <cstddef>

#include "programming/loader_requests.h"
#include "programming/refusal.h"

namespace ox {

/// `write` sends one block; `refusal` is told at the first that is not accepted. Before block r, counted from
/// 0, goes a mark when r modulo `markPeriod` is `markPhase`.
struct BlockTransfer {
  LoaderRequest write{};
  std::size_t markPeriod = 1;
  std::size_t markPhase = 0;
  Refusal refusal{};
};

}  // namespace ox
