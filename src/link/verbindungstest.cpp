// The search for a device, one probe after the other.
#include "link/verbindungstest.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "link/line_waits.h"
#include "link/link_messages.h"
#include "platform/text.h"

namespace ox {
namespace {

constexpr std::array<BytesView, 4> kBaudRates{"2400", "4800", "9600", "19200"};
constexpr std::array<BytesView, 2> kParities{"E", "O"};
constexpr BytesView kDefaultBaudRate = "9600";

constexpr float kWakeUpSeconds = 0.5F;
/// From the same start as the wake-up: the two share it.
constexpr float kIdentificationSeconds = 1.0F;

constexpr BytesView kWakeUp = "S";
constexpr BytesView kReady = "A";
constexpr BytesView kIdentify = "K";
constexpr BytesView kThanks = "A";
constexpr BytesView kEndOfDialogue = "N";
constexpr char kNoIdentification = 'N';
constexpr BytesView kUnknownDevice = "?";
/// Type, separator and version; the line has its CR behind them.
constexpr std::size_t kIdentificationLength = 21;

}  // namespace

Verbindungstest::Verbindungstest(Host& host, SessionSettings& settings)
    : Window(host.windows, "Verbindungstest", "Verbindung mit Orvanexe prüfen"),
      host_(host),
      settings_(settings),
      port_(host.ports.Create()) {}

void Verbindungstest::OnActivate() {
  host_.windows.Yield();
  TestConnection();
  Unload();
}

void Verbindungstest::OnFailure() {
  port_->Close();
  Unload();
}

void Verbindungstest::TestConnection() {
  // First of all: a test that breaks off has found nothing.
  settings_.Connected = false;
  settings_.DeviceIdent.clear();
  NormaliseSettings();
  COM.SetText("Schnittstelle: COM" +
              ToText(settings_.ComPort.substr(settings_.ComPort.empty() ? 0 : settings_.ComPort.size() - 1)));
  // The stored pair first: with a known device the test costs one probe.
  const Bytes baudRate = settings_.BaudRate;
  const Bytes parity = settings_.Parity;
  if (Try(baudRate, parity) != ProbeResult::kNoAnswer) return;
  for (const BytesView baud : kBaudRates) {
    for (const BytesView letter : kParities) {
      if (Try(Bytes(baud), Bytes(letter)) == ProbeResult::kFound) return;
    }
  }
}

void Verbindungstest::NormaliseSettings() {
  const bool known = std::find(kBaudRates.begin(), kBaudRates.end(), settings_.BaudRate) != kBaudRates.end();
  if (!known) settings_.BaudRate = kDefaultBaudRate;
  if (settings_.Parity != "O") settings_.Parity = "E";
}

void Verbindungstest::ShowPair(const Bytes& baud, const Bytes& parity) {
  Baudanz.SetText(baud);
  Paritätanz.SetText(parity == "E" ? "gerade" : "ungerade");
}

Verbindungstest::ProbeResult Verbindungstest::Try(const Bytes& baud, const Bytes& parity) {
  ShowPair(baud, parity);
  const ProbeResult result = Probe(baud, parity);
  if (result == ProbeResult::kFound) {
    settings_.BaudRate = baud;
    settings_.Parity = parity;
    settings_.Connected = true;
  }
  return result;
}

Verbindungstest::ProbeResult Verbindungstest::Probe(const Bytes& baud, const Bytes& parity) {
  if (!BeginProbe(baud, parity)) return ProbeResult::kPortFailure;
  ProbeResult result = ProbeResult::kNoAnswer;
  try {
    result = Identify();
  } catch (const PortError&) {
    // A line that breaks during the waits is a pair without an answer.
  }
  port_->Close();
  return result;
}

bool Verbindungstest::BeginProbe(const Bytes& baud, const Bytes& parity) {
  try {
    port_->SetSettings(SessionSettings::DialogueSettings(baud, parity));
    port_->SetCommPort(settings_.PortNumber());
    if (!port_->PortOpen()) port_->Open();
    port_->Output(kWakeUp);
    return true;
  } catch (const PortError&) {
    host_.windows.ShowMessage("COM" + ToText(settings_.ComPort) + std::string(kPortFailure));
    port_->Close();
    return false;
  }
}

Verbindungstest::ProbeResult Verbindungstest::Identify() {
  const float start = host_.clock.SecondsSinceMidnight();
  Bytes got;
  while (got.empty() && !Elapsed(start, kWakeUpSeconds)) {
    host_.windows.Rest();
    got = port_->Input();
  }
  if (got != kReady) return ProbeResult::kNoAnswer;
  port_->Output(kIdentify);
  got.clear();
  while (!got.ends_with(settings_.CR) && got.size() <= LineWaits::kLongestReply &&
         !Elapsed(start, kIdentificationSeconds)) {
    host_.windows.Rest();
    got += port_->Input();
  }
  port_->Output(kThanks);
  port_->Output(kEndOfDialogue);
  ProbeResult result = ProbeResult::kNoAnswer;
  if (got.starts_with(kNoIdentification)) {
    settings_.DeviceIdent = kUnknownDevice;
    result = ProbeResult::kFound;
  }
  if (got.size() > kIdentificationLength) {
    settings_.DeviceIdent = got.substr(0, kIdentificationLength);
    result = ProbeResult::kFound;
  }
  return result;
}

bool Verbindungstest::Elapsed(float start, float seconds) const {
  return std::abs(start - host_.clock.SecondsSinceMidnight()) >= seconds;
}

void RunConnectionTest(Host& host, SessionSettings& settings) {
  Verbindungstest window(host, settings);
  host.windows.ShowModal(window);
}

}  // namespace ox
