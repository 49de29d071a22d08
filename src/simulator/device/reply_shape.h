// Poll replies of an odd shape: too long, broken off, cut in a record.
#pragma once

#include <cstddef>
#include <optional>

#include "simulator/device/polls.h"

namespace ox::sim {

/// What is odd about a device's poll replies; the defaults are sound ones.
struct ReplyShape {
  std::size_t leastRecords = 0;          ///< fills a collective poll up to so many records
  std::optional<char> flag;              ///< stands as quality flag in every record
  std::optional<std::size_t> endsAfter;  ///< a reply of several records breaks off after so many
  Bytes lastWord;                        ///< "R" or nothing where it breaks off
  Bytes instead;                         ///< "R" or "N" in place of every reply; empty: none
  bool refusesFirst = false;             ///< "N" goes before every reply
  bool cutRecord = false;                ///< the last record stops in its middle, and nothing comes after it
};

/// The lines as such a device sends them. Bare letters and the framing stay as they are.
ReplyLines Shaped(ReplyLines lines, const ReplyShape& shape);

}  // namespace ox::sim
