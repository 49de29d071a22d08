// The support log: one line for each thing that happens, with its time.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "platform/bytes.h"
#include "platform/clock.h"
#include "platform/files.h"

namespace ox {

/// A piece of a line: as it stands (UTF-8 without line ends), or in quotes as the bytes of a line or as text
/// for people.
struct JournalPiece {
  enum class As { kItStands, kBytes, kText };

  std::string_view text;
  As as = As::kItStands;
};

/// Kept in a file of its own for each start where the working folder has a folder "Protokoll". What
/// docs/device-formats.md tells of its lines is what oxsim --replay reads.
///
/// Nothing here throws, and nothing waits for the disk: lines are gathered and handed to the host together. A
/// program that dies loses the last quarter of a second. A log that cannot be kept, or goes on no longer, is
/// told once; the work goes on without it.
class Journal {
 public:
  using Tell = std::function<void(const std::string& trouble)>;

  /// `build` names the program and its build in the first line. `tell` is told, in German, why there is no
  /// log where one is wanted. Files and clock outlive the journal.
  Journal(Files& files, Clock& clock, std::string build, Tell tell);
  Journal(const Journal&) = delete;
  Journal& operator=(const Journal&) = delete;
  ~Journal();

  bool On() const { return file_ != nullptr; }

  /// A line of these pieces, with the present time.
  void Note(std::initializer_list<JournalPiece> pieces) noexcept;

  /// The port was opened: a line with the opening's number, counted from 1 in each file.
  void NoteOpening(std::string_view port, std::string_view settings) noexcept;

  /// Bytes that a port is about to send.
  void NoteSent(std::string_view port, BytesView bytes) noexcept;

  /// Bytes that a port has received. What comes without a pause is gathered to one line.
  void NoteReceived(std::string_view port, BytesView bytes) noexcept;

  /// Hands everything to the host.
  void WriteOut() noexcept;

  /// The same when the last time is long enough ago; at every turn of a loop that waits.
  void WriteOutInTime() noexcept;

 private:
  /// Received bytes that wait for more.
  struct Received {
    std::string port;
    Bytes bytes;
    std::int64_t first = 0;  // when the first piece came, and the last
    std::int64_t last = 0;
  };

  template <typename Work>
  void WhileOn(Work work) noexcept;
  void Begin();
  void End(const std::string& trouble);
  void AddLine(std::int64_t when, std::initializer_list<JournalPiece> pieces);
  void EndReceived();
  void HandOver();

  Files& files_;
  Clock& clock_;
  std::string build_;
  Tell tell_;
  std::unique_ptr<AppendFile> file_;  // null while no log is kept
  std::string name_;
  std::int64_t start_ = 0;       // on the clock: where the times of this file begin
  std::int64_t handedOver_ = 0;  // on the clock: when that was done last
  std::uintmax_t size_ = 0;      // of the file
  int openings_ = 0;             // in this file
  Received received_;
  std::string waiting_;  // lines for the host
};

}  // namespace ox
