// Probes, one after the other.
#include "link/device_search.h"

#include <algorithm>
#include <array>

#include "link/line_protocol.h"
#include "link/port_failure.h"
#include "link/port_waits.h"

namespace ox {
namespace {

constexpr std::array<BytesView, 4> kBaudRates{"2400", "4800", "9600", "19200"};
constexpr BytesView kDefaultBaudRate = "9600";
constexpr BytesView kEven = "E";
constexpr BytesView kOdd = "O";

constexpr BytesView kUnknownDevice = "?";
/// Type, separator and version; the line has its CR behind them.
constexpr std::size_t kIdentificationLength = 21;

enum class ProbeResult { kNoAnswer, kFound, kPortFailure };

/// One search, on a port of its own.
class Search {
 public:
  Search(Machine& machine, SessionSettings& settings, SearchObserver& observer)
      : machine_(machine), settings_(settings), observer_(observer), port_(machine.ports.Create()) {}

  void Run();
  /// The pair of the settings only. The observer is told of a port that cannot be opened.
  ProbeResult TryStoredPair();

 private:
  void NormaliseSettings();
  /// Reports the pair, probes it and, when a device answered, makes it the session's.
  ProbeResult Try(const Bytes& baud, const Bytes& parity);
  /// One attempt with one pair.
  ProbeResult Probe(const Bytes& baud, const Bytes& parity);
  /// True when the port is open with the pair and the wake-up is sent; otherwise the observer has been told.
  bool BeginProbe(const Bytes& baud, const Bytes& parity);
  ProbeResult Identify();

  Machine& machine_;
  SessionSettings& settings_;
  SearchObserver& observer_;
  std::unique_ptr<SerialPort> port_;
};

ProbeResult Search::TryStoredPair() {
  // Set first, so that a search that breaks off has found nothing.
  settings_.Connected = false;
  settings_.DeviceIdent.clear();
  NormaliseSettings();
  return Try(Bytes(settings_.BaudRate), Bytes(settings_.Parity));
}

void Search::Run() {
  // The stored pair is tried first: with a known device one probe is enough.
  if (TryStoredPair() != ProbeResult::kNoAnswer) return;
  for (const BytesView baud : kBaudRates) {
    for (const BytesView parity : {kEven, kOdd}) {
      if (Try(Bytes(baud), Bytes(parity)) == ProbeResult::kFound) return;
    }
  }
}

void Search::NormaliseSettings() {
  const bool known = std::find(kBaudRates.begin(), kBaudRates.end(), settings_.BaudRate) != kBaudRates.end();
  if (!known) settings_.BaudRate = kDefaultBaudRate;
  if (settings_.Parity != kOdd) settings_.Parity = kEven;
}

ProbeResult Search::Try(const Bytes& baud, const Bytes& parity) {
  observer_.TryPair(baud, parity);
  const ProbeResult result = Probe(baud, parity);
  if (result == ProbeResult::kFound) {
    settings_.BaudRate = baud;
    settings_.Parity = parity;
    settings_.Connected = true;
  }
  return result;
}

ProbeResult Search::Probe(const Bytes& baud, const Bytes& parity) {
  if (!BeginProbe(baud, parity)) return ProbeResult::kPortFailure;
  ProbeResult result = ProbeResult::kNoAnswer;
  try {
    result = Identify();
  } catch (const PortError&) {
    // A line that breaks during the waits counts as a pair without an answer.
  }
  port_->Close();
  return result;
}

bool Search::BeginProbe(const Bytes& baud, const Bytes& parity) {
  try {
    port_->SetSettings(SessionSettings::DialogueSettings(baud, parity));
    port_->SetCommPort(settings_.PortNumber());
    port_->Open();
    port_->Output(kWakeUp);
    return true;
  } catch (const PortError&) {
    observer_.Tell(PortFailure(settings_, PortNaming::kCom));
    return false;
  }
}

ProbeResult Search::Identify() {
  const Seconds start = machine_.clock.SecondsSinceMidnight();
  if (FirstPiece(machine_, *port_, Difference{start, kSearchWakeUpWait}) != kYes)
    return ProbeResult::kNoAnswer;
  port_->Output(kIdentify);
  const Bytes got = PiecesToCr(machine_, *port_, Difference{start, kIdentificationWait});
  port_->Output(kYes);
  port_->Output(kNo);
  ProbeResult result = ProbeResult::kNoAnswer;
  if (got.starts_with(kNo)) {
    settings_.DeviceIdent = kUnknownDevice;
    result = ProbeResult::kFound;
  }
  if (got.size() > kIdentificationLength) {
    settings_.DeviceIdent = got.substr(0, kIdentificationLength);
    result = ProbeResult::kFound;
  }
  return result;
}

}  // namespace

bool SearchDevice(Machine& machine, SessionSettings& settings, SearchObserver& observer) {
  Search(machine, settings, observer).Run();
  return settings.Connected;
}

bool ProbeDevice(Machine& machine, SessionSettings& settings, SearchObserver& observer) {
  Search(machine, settings, observer).TryStoredPair();
  return settings.Connected;
}

}  // namespace ox
