// The far end of a line as a support log has recorded it.
#pragma once

#include <cstdint>
#include <istream>
#include <string>

#include "simulator/line/endpoint.h"
#include "simulator/replay/log_reader.h"

namespace ox::sim {

/// Compares what the PC sends with what it sent then, and answers what was answered then, as long after the
/// request as then. Times on the line are part of that, so the line itself takes none. Breaks of the line are
/// repeated; openings that failed are not. Holds one event of the log at a time.
class ReplayedEnd : public Endpoint {
 public:
  /// Plays from the opening of that number on. Throws std::runtime_error, in German, when the log has no such
  /// opening; at any later time when it goes on unintelligibly. The text outlives the end.
  explicit ReplayedEnd(std::istream& log, int firstOpening = 1);

  void Receive(BytesView bytes, const LineSettings& pc, Seconds now) override;
  std::optional<Seconds> NextOutput() const override;
  Bytes TakeSome(Seconds now, std::size_t most) override;
  LineSettings Line() const override { return settings_; }
  void PortOpened(Seconds now) override;
  void PortClosed(Seconds now) override;
  std::optional<Seconds> NextUnplugging() const override;
  void Unplugged(Seconds now) override;

  /// Whether nothing more will be played: all was, and the PC has closed the port; or the PC did otherwise.
  bool Ended() const;
  /// What the PC did otherwise first, in German; empty when it did as then.
  const std::string& Difference() const { return difference_; }
  /// Number of the line that is to be played next.
  std::size_t NextLine() const { return event_.line; }

 private:
  using Kind = LogEvent::Kind;

  void Proceed(Seconds now);
  void Anchor(Seconds now);
  Seconds Due(std::size_t byte) const;
  void CompareEarly(Seconds now);
  void Compare(char seen);
  std::string DifferenceHere(const std::string& expected, const std::string& seen) const;
  void TellSettings();

  LogReader reader_;
  LogEvent event_;               // the present one, which waits for the PC or for its time
  std::size_t done_ = 0;         // bytes of it
  LineSettings settings_;        // of the present opening
  int opening_ = 0;              // its number
  std::size_t sent_ = 0;         // bytes that the PC has sent in it
  bool closedLast_ = false;      // the event before closed the port
  std::int64_t anchorTime_ = 0;  // in the log, of what the next reply answers
  Seconds anchor_ = 0;           // the same now
  Seconds lastOutput_ = 0;
  int openingsSeen_ = 0;   // of the port here
  int openingsTaken_ = 0;  // so many of them stand for one in the log
  Seconds opened_ = 0;
  bool open_ = false;
  Bytes early_;      // what the PC has sent before its turn
  LineSettings pc_;  // what the PC is set to
  /// Other settings of the PC than those of the present opening, and what to tell of them. Who closes a port
  /// and opens it at once with other settings may be seen with these too early.
  LineSettings doubted_;
  std::string doubt_;
  std::string difference_;
};

}  // namespace ox::sim
