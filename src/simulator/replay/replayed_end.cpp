// Going through the log with the PC.
#include "simulator/replay/replayed_end.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <stdexcept>
#include <utility>

namespace ox::sim {
namespace {

constexpr double kMillisecondsPerSecond = 1000;
/// What was said before a break reaches the program before the line is gone.
constexpr Seconds kBeforeBreak = 0.05;
constexpr std::size_t kMostEarly = 65536;  // bytes

/// The part of the bytes that is worth showing when they differ from that byte on.
std::string Shown(BytesView bytes, std::size_t difference) {
  constexpr std::size_t kBefore = 20;
  constexpr std::size_t kBehind = 20;
  constexpr unsigned kLastPlain = 0x7E;
  constexpr std::size_t kEscapeRoom = 8;
  const std::size_t start = difference - std::min(difference, kBefore);
  std::string text = start > 0 ? "...\"" : "\"";
  for (const char byte : bytes.substr(start, difference - start + kBehind)) {
    std::array<char, kEscapeRoom> escaped{};
    std::snprintf(escaped.data(), escaped.size(), "<%02X>", ByteValue(byte));
    const bool plain = byte >= ' ' && ByteValue(byte) <= kLastPlain && byte != kQuote && byte != '<';
    text += plain ? std::string(1, byte) : escaped.data();
  }
  return text + (bytes.size() > difference + kBehind ? "\"..." : "\"");
}

std::string Shown(const LineSettings& line) {
  return std::to_string(line.baud) + "," + line.parity + "," + std::to_string(line.dataBits) + ",1";
}

/// "11:45:03,537": the time of day so long after the log's beginning.
std::string TimeOfDay(const LogHeader& header, std::int64_t milliseconds) {
  constexpr std::int64_t kSecond = 1000;
  constexpr std::int64_t kMinute = 60;
  constexpr std::int64_t kHour = 3600;
  constexpr std::int64_t kDay = 86400;
  constexpr std::size_t kRoom = 96;
  const std::int64_t second = (header.secondOfDay + milliseconds / kSecond) % kDay;
  std::array<char, kRoom> text{};
  std::snprintf(text.data(), text.size(), "%02d:%02d:%02d,%03d", static_cast<int>(second / kHour),
                static_cast<int>(second / kMinute % kMinute), static_cast<int>(second % kMinute),
                static_cast<int>(milliseconds % kSecond));
  return text.data();
}

}  // namespace

ReplayedEnd::ReplayedEnd(std::istream& log, int firstOpening) : reader_(log) {
  do {
    event_ = reader_.Next();
  } while (event_.kind != Kind::kEnd && (event_.kind != Kind::kOpening || event_.opening < firstOpening));
  if (event_.kind == Kind::kEnd)
    throw std::runtime_error("enthält keine Öffnung " + std::to_string(firstOpening));
  settings_ = event_.settings;
}

/// Takes the next events as long as they wait for nothing.
void ReplayedEnd::Proceed(Seconds now) {
  while (event_.kind == Kind::kClosed || event_.kind == Kind::kOpening || done_ == event_.bytes.size()) {
    if (event_.kind == Kind::kEnd) TellSettings();
    if (event_.kind == Kind::kEnd || event_.kind == Kind::kBroken) return;
    if (event_.kind == Kind::kOpening && openingsTaken_ == openingsSeen_ && early_.empty()) return;
    if (event_.kind == Kind::kOpening) {
      openingsTaken_ = std::min(openingsTaken_ + 1, openingsSeen_);
      settings_ = event_.settings;
      if (settings_ != doubted_) TellSettings();
      doubt_.clear();
      opening_ = event_.opening;
      sent_ = 0;
      Anchor(opened_);
    } else if (event_.kind == Kind::kSent) {
      Anchor(now);
    }
    closedLast_ = event_.kind == Kind::kClosed;
    event_ = reader_.Next();
    done_ = 0;
  }
}

void ReplayedEnd::Anchor(Seconds now) {
  anchorTime_ = event_.time;
  anchor_ = now;
}

/// When a byte of the present event, counted from 0, is due.
Seconds ReplayedEnd::Due(std::size_t byte) const {
  const auto steps = static_cast<double>(std::max<std::size_t>(event_.bytes.size(), 2) - 1);
  const double within = static_cast<double>(event_.lasted) * static_cast<double>(byte) / steps;
  const double after = static_cast<double>(event_.time - anchorTime_) + within;
  return std::max(anchor_ + after / kMillisecondsPerSecond, lastOutput_);
}

std::optional<Seconds> ReplayedEnd::NextOutput() const {
  if (event_.kind != Kind::kReceived || !difference_.empty()) return std::nullopt;
  return Due(done_);
}

Bytes ReplayedEnd::TakeSome(Seconds now, std::size_t most) {
  Bytes taken;
  for (auto due = NextOutput(); due && *due <= now && taken.size() < most; due = NextOutput()) {
    lastOutput_ = *due;
    taken += event_.bytes[done_++];
    Proceed(now);
  }
  CompareEarly(now);
  return taken;
}

std::optional<Seconds> ReplayedEnd::NextUnplugging() const {
  if (event_.kind != Kind::kBroken) return std::nullopt;
  return std::max(Due(0), lastOutput_ + kBeforeBreak);
}

void ReplayedEnd::Unplugged(Seconds now) {
  open_ = false;
  early_.clear();
  if (event_.kind != Kind::kBroken) return;
  event_.kind = Kind::kClosed;
  Proceed(now);
}

void ReplayedEnd::PortOpened(Seconds now) {
  ++openingsSeen_;
  opened_ = now;
  open_ = true;
  if (event_.kind == Kind::kOpening) Proceed(now);
}

void ReplayedEnd::PortClosed(Seconds /*now*/) {
  open_ = false;
}

void ReplayedEnd::Receive(BytesView bytes, const LineSettings& pc, Seconds now) {
  if (!difference_.empty()) return;
  early_ += bytes;
  pc_ = pc;
  CompareEarly(now);
  if (early_.size() > kMostEarly) difference_ = DifferenceHere("weniger", Shown(early_, 0));
}

/// Compares what the PC has sent, as far as its turn has come.
void ReplayedEnd::CompareEarly(Seconds now) {
  while (!early_.empty() && difference_.empty()) {
    if (event_.kind == Kind::kOpening) Proceed(now);
    if (event_.kind == Kind::kReceived || event_.kind == Kind::kBroken) return;
    const char seen = early_.front();
    early_.erase(0, 1);
    Compare(seen);
    Proceed(now);
  }
}

void ReplayedEnd::Compare(char seen) {
  if (event_.kind == Kind::kEnd) {
    // A log that was cut off says nothing of what came then.
    if (closedLast_) difference_ = DifferenceHere("nichts mehr", Shown({&seen, 1}, 0));
    return;
  }
  ++sent_;
  if (pc_ != settings_ && doubt_.empty()) {
    doubted_ = pc_;
    doubt_ = DifferenceHere(Shown(settings_), Shown(pc_));
  }
  const auto heard = [&](char byte) { return MaskedTo({&byte, 1}, settings_.dataBits); };
  if (heard(event_.bytes[done_]) != heard(seen)) {
    TellSettings();
    if (difference_.empty())
      difference_ =
          DifferenceHere(Shown(event_.bytes, done_), Shown(event_.bytes.substr(0, done_) + seen, done_));
  }
  ++done_;
}

std::string ReplayedEnd::DifferenceHere(const std::string& expected, const std::string& seen) const {
  return "Öffnung " + std::to_string(opening_) + ", Zeichen " + std::to_string(sent_) + " (Zeile " +
         std::to_string(event_.line) + " des Protokolls, " + TimeOfDay(reader_.Header(), event_.time) +
         "): erwartet " + expected + ", gesehen " + seen;
}

void ReplayedEnd::TellSettings() {
  if (difference_.empty()) difference_ = doubt_;
}

bool ReplayedEnd::Ended() const {
  return !difference_.empty() || (event_.kind == Kind::kEnd && early_.empty() && !open_);
}

}  // namespace ox::sim
