// Gathering lines, and handing them over at the right time.
#include "journal/journal.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <utility>

#include "journal/journal_folder.h"
#include "journal/quoted.h"

namespace ox {
namespace {

using As = JournalPiece::As;

constexpr int kFormat = 1;  // of the lines; another number where an old reader would go wrong

constexpr std::int64_t kHandOverAfter = 250;  // milliseconds
/// Characters of a reply follow each other faster at every speed of the line.
constexpr std::int64_t kPause = 10;             // milliseconds
constexpr std::size_t kMostBytesOfALine = 512;  // received or sent
constexpr std::size_t kMostWaiting = 65536;     // bytes of lines

constexpr char kNotWritten[] =
    "Das Protokoll endet hier: In den Ordner \"Protokoll\" lässt sich nicht mehr schreiben (Datenträger "
    "voll?).";
constexpr char kNoMemory[] = "Das Protokoll endet hier: nicht genügend Speicher.";

std::string TimeColumn(std::int64_t milliseconds) {
  constexpr std::size_t kRoom = 32;
  std::array<char, kRoom> text{};
  std::snprintf(text.data(), text.size(), "%9lld ", static_cast<long long>(milliseconds));
  return text.data();
}

}  // namespace

Journal::Journal(Files& files, Clock& clock, std::string build, Tell tell)
    : files_(files), clock_(clock), build_(std::move(build)), tell_(std::move(tell)) {
  Begin();
}

Journal::~Journal() {
  Note({{"Ende"}});
  WriteOut();
}

/// What fails for want of memory ends the log.
template <typename Work>
void Journal::WhileOn(Work work) noexcept {
  if (!On()) return;
  try {
    work();
  } catch (const std::exception&) {
    try {
      End(kNoMemory);
    } catch (const std::exception&) {
      file_.reset();
    }
  }
}

void Journal::Begin() {
  const CivilTime now = clock_.Now();
  NewJournal made = MakeJournal(files_, now);
  file_ = std::move(made.file);
  name_ = std::move(made.name);
  start_ = handedOver_ = clock_.Milliseconds();
  size_ = 0;
  openings_ = 0;
  if (On()) {
    waiting_ =
        build_ + ", Protokoll " + std::to_string(kFormat) + ", begonnen " + TimeText(now, ' ', ':') + "\n";
    HandOver();
  } else if (!made.trouble.empty()) {
    End(made.trouble);
  }
}

void Journal::End(const std::string& trouble) {
  file_.reset();
  if (tell_) tell_(trouble);
}

void Journal::Note(std::initializer_list<JournalPiece> pieces) noexcept {
  WhileOn([&] {
    EndReceived();
    AddLine(clock_.Milliseconds(), pieces);
  });
}

void Journal::NoteOpening(std::string_view port, std::string_view settings) noexcept {
  WhileOn([&] {
    EndReceived();
    const std::string number = std::to_string(++openings_);
    AddLine(clock_.Milliseconds(), {{port}, {" Öffnung "}, {number}, {" "}, {settings, As::kBytes}});
  });
}

void Journal::NoteSent(std::string_view port, BytesView bytes) noexcept {
  WhileOn([&] {
    EndReceived();
    const std::int64_t now = clock_.Milliseconds();
    for (; !bytes.empty(); bytes.remove_prefix(std::min(bytes.size(), kMostBytesOfALine)))
      AddLine(now, {{port}, {" > "}, {bytes.substr(0, kMostBytesOfALine), As::kBytes}});
  });
}

void Journal::NoteReceived(std::string_view port, BytesView bytes) noexcept {
  WhileOn([&] {
    const std::int64_t now = clock_.Milliseconds();
    const bool follows = port == received_.port && now - received_.last <= kPause;
    if (!follows) EndReceived();
    received_.port = port;
    while (!bytes.empty()) {
      if (received_.bytes.size() == kMostBytesOfALine) EndReceived();
      if (received_.bytes.empty()) received_.first = now;
      received_.last = now;
      const BytesView fitting = bytes.substr(0, kMostBytesOfALine - received_.bytes.size());
      received_.bytes += fitting;
      bytes.remove_prefix(fitting.size());
    }
  });
}

void Journal::EndReceived() {
  if (received_.bytes.empty()) return;
  const Bytes bytes = std::exchange(received_.bytes, {});
  const std::int64_t lasted = received_.last - received_.first;
  const std::string length = lasted > 0 ? " +" + std::to_string(lasted) : "";
  AddLine(received_.first, {{received_.port}, {" < "}, {bytes, As::kBytes}, {length}});
}

void Journal::AddLine(std::int64_t when, std::initializer_list<JournalPiece> pieces) {
  waiting_ += TimeColumn(when - start_);
  for (const auto& [text, as] : pieces) {
    if (as == As::kItStands) waiting_ += text;
    if (as == As::kBytes) waiting_ += QuotedBytes(text);
    if (as == As::kText) waiting_ += QuotedText(text);
  }
  waiting_ += '\n';
  if (waiting_.size() > kMostWaiting) HandOver();
}

void Journal::HandOver() {
  if (!On()) return waiting_.clear();
  if (!file_->Append(waiting_)) {
    if (size_ == 0) files_.Remove(name_);  // not even the first line
    return End(kNotWritten);
  }
  size_ += waiting_.size();
  waiting_.clear();
  handedOver_ = clock_.Milliseconds();
  if (size_ > kLargestJournal) Begin();
}

void Journal::WriteOut() noexcept {
  WhileOn([&] {
    EndReceived();
    if (!waiting_.empty()) HandOver();
  });
}

void Journal::WriteOutInTime() noexcept {
  if (clock_.Milliseconds() - handedOver_ >= kHandOverAfter) WriteOut();
}

}  // namespace ox
