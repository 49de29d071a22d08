// Support logs: any bytes, and a sound log with damage, are refused or played; what the program puts into
// quotes is read as it was.
#include <sstream>
#include <stdexcept>

#include "harness.h"
#include "journal/quoted.h"
#include "simulator/replay/replayed_end.h"

namespace ox {
namespace {

constexpr BytesView kLog =
    "Orvanexe Service 4.0.0 (0123456789), Protokoll 1, begonnen 2026-11-23 23:59:58\n"
    "        0 Fenster auf \"Verbindungstest\" \"Verbindung\"\n"
    "        1 COM1 Öffnung 1 \"9600,O,7,1\"\n        2 COM1 > \"S\"\n       20 COM1 < \"A<22>bc\" +12\n"
    "       30 COM1 > \"K\"\n       40 COM1 abgerissen \"x\"\n       50 COM1 Öffnung 2 \"19200,n,8,1\"\n"
    "       60 COM1 < \"@\"\n       70 COM1 > \"S<13>\"\n       80 COM1 zu\n";

void ReadQuoted(BytesView input) {
  const auto event = sim::ReadLogLine("1 COM1 > " + QuotedBytes(input));
  Require(input.empty() ? !event : event && event->bytes == input);
  for (const char byte : QuotedText(input)) Require(byte != '\n' && byte != '\r');
}

/// The PC does what the bytes tell.
void Play(const Bytes& log, BytesView acts) {
  std::istringstream text(log);
  sim::ReplayedEnd end(text);
  sim::Seconds now = 0;
  for (const char act : acts) {
    const bool ended = end.Ended() && !end.Difference().empty();
    if (act == 'o') end.PortOpened(now);
    if (act == 'c') end.PortClosed(now);
    if (act == '.') now = end.NextOutput().value_or(now);
    if (ByteValue(act) < 'a') end.Receive({&act, 1}, end.Line(), now);
    if (end.NextUnplugging().value_or(now + 1) <= now) end.Unplugged(now);
    end.TakeSome(now, ByteValue(act));
    Require(!ended || (end.Ended() && !end.NextOutput()));  // the first difference is the last word
  }
}

}  // namespace

void Fuzz(unsigned choice, BytesView input) {
  if (choice % 4 == 0) return ReadQuoted(input);
  const BytesView acts = input.substr(0, input.size() / 2);
  const BytesView rest = input.substr(acts.size());
  try {
    Play(choice % 4 == 1 ? Bytes(rest) : Damaged(Bytes(kLog), rest), acts);
  } catch (const std::runtime_error&) {
    // Refused, with a word for its user.
  }
}

}  // namespace ox
