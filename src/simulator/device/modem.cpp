// The modem's dialogue and its bursts.
#include "simulator/device/modem.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "platform/line_ends.h"
#include "simulator/line/crossing.h"

namespace ox::sim {
namespace {

constexpr char kWakeUp = 'S';
constexpr char kTaken[] = "A";
constexpr char kNotTaken[] = "NR";

// Forms of the records: "9" stands for a digit, "v" for a digit, "." or "#", "+" for a blank or "-", "f" for
// any flag, anything else for itself.
constexpr BytesView kOfficeForm = "*999 999999 9999";
constexpr BytesView kValueForm = "#99999999: 9999 f +vvvv ";

constexpr size_t kLongestRecord = 80;
constexpr size_t kMostRecords = 1000;
constexpr Seconds kThinkingTime = 0.02;
constexpr Seconds kBetweenLines = 0.2;

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}

bool HasForm(BytesView record, BytesView form) {
  const auto fits = [](char character, char place) {
    switch (place) {
      case '9':
        return IsDigit(character);
      case 'v':
        return IsDigit(character) || character == '.' || character == '#';
      case '+':
        return character == ' ' || character == '-';
      case 'f':
        return true;
      default:
        return character == place;
    }
  };
  return std::equal(record.begin(), record.end(), form.begin(), form.end(), fits);
}

}  // namespace

SimulatedModem::SimulatedModem(ModemOptions options)
    : options_(std::move(options)), nextBurst_(options_.burstPeriod) {}

void SimulatedModem::Receive(BytesView bytes, const LineSettings& pc, Seconds now) {
  for (const char byte : bytes) {
    for (const HeardCharacter& heard : Cross(byte, pc, options_.line)) {
      if (heard.damaged) {
        awake_ = false;
        text_.clear();
      } else {
        ReceiveCharacter(heard.character, now);
      }
    }
  }
}

void SimulatedModem::ReceiveCharacter(char character, Seconds now) {
  if (now - last_ > kTextSilence) text_.clear();
  last_ = now;
  if (text_.empty() && character == kWakeUp) {
    awake_ = options_.wakes;
    if (awake_) output_.Add(now + kThinkingTime, kTaken);
    return;
  }
  // "N": the PC did not accept the answer to its wake-up.
  if (!awake_ || (text_.empty() && character == 'N')) {
    awake_ = false;
    return;
  }
  text_ += character;
  if (character == kCr || text_.size() >= kLongestRecord) TakeRecord(now);
}

void SimulatedModem::TakeRecord(Seconds now) {
  awake_ = false;
  Bytes record = std::exchange(text_, {});
  if (record.back() == kCr) record.pop_back();
  const bool sound = HasForm(record, kOfficeForm) || HasForm(record, kValueForm);
  const Bytes answer = options_.answer.value_or(sound ? kTaken : kNotTaken);
  output_.Add(now + kThinkingTime, answer);
  if (answer == kTaken && records_.size() < kMostRecords) records_.push_back(std::move(record));
}

void SimulatedModem::DropModemLine(Seconds now) {
  Seconds due = now + kBetweenLines;
  output_.Add(due, "CONNECT\r");
  for (const Bytes& record : records_) output_.Add(due += kBetweenLines, record + kCr);
  output_.Add(due + kBetweenLines, "NO CARRIER\r");
}

std::optional<Seconds> SimulatedModem::NextOutput() const {
  const auto next = output_.Next();
  if (options_.burstPeriod <= 0) return next;
  return next ? std::min(*next, nextBurst_) : nextBurst_;
}

Bytes SimulatedModem::TakeSome(Seconds now, std::size_t most) {
  if (options_.burstPeriod > 0 && now >= nextBurst_) {
    // Not while the one before still runs: the bursts would pile up.
    if (!output_.Next()) DropModemLine(now);
    nextBurst_ = now + options_.burstPeriod;
  }
  return output_.Take(now, most);
}

}  // namespace ox::sim
