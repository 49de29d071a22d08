// How the blocks of a table image or of a program are sent.
#pragma once

#include <cstddef>

#include "programming/loader_requests.h"
#include "programming/refusal.h"

namespace ox {

/// Before block r, counted from 0, goes a mark when r modulo `markPeriod` is `markPhase`.
struct BlockTransfer {
  LoaderRequest write;
  std::size_t markPeriod;
  std::size_t markPhase;
  Refusal refusal;
};

}  // namespace ox
