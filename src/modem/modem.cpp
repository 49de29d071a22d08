// The modem window's commands.
#include "modem/modem.h"

#include "link/line_protocol.h"
#include "modem/modem_requests.h"
#include "platform/text.h"

namespace ox {
namespace {

constexpr std::string_view kRefused = "Achtung: Modem hat Daten nicht angenommen!";

}  // namespace

Modem::Modem(Host& host, const SessionSettings& settings)
    : Window(host.windows, "Modem", "Modem-ZEM"),
      Hinweis(*this, host.notices),
      host_(host),
      link_(host, settings, Datanz) {
  // This works during a command too: the window then goes when the command has ended.
  Command1.onClick = [this] { RequestClose(); };
  Command2.onClick = [this] { SendDate(); };
  Command3.onClick = [this] { SendMeasuredValue(); };
  Command4.onClick = [this] { WithModem([this] { link_.CallForData(); }); };
}

void Modem::OnLoad() {
  link_.Resume();
  // The window stays when its port cannot be opened: each command tries again.
  link_.OpenPort();
}

void Modem::OnCloseWhileRunning() {
  link_.Stop();
}

void Modem::OnUnload() {
  link_.ClosePort();
}

void Modem::OnFailure() {
  commands_.Unlock();
}

void Modem::WithModem(const std::function<void()>& work) {
  commands_.Lock();
  work();
  commands_.Unlock();
}

void Modem::SendDate() {
  if (!Passes(CheckOffice(TAKZ.Text()), TAKZ) || !Passes(CheckDate(TDAT.Text()), TDAT) ||
      !Passes(CheckTime(TUHR.Text()), TUHR)) {
    return;
  }
  SendRequest(BuildDateRequest(ToBytes(TAKZ.Text()), ToBytes(TDAT.Text()), ToBytes(TUHR.Text())));
}

void Modem::SendMeasuredValue() {
  if (!PrepareMeasuredValue()) return;
  const Bytes request = BuildValueRequest(ToBytes(TMST.Text()), ToBytes(TPAR.Text()), ToBytes(TBEW.Text()),
                                          ToBytes(TMEW.Text()));
  TMST.SetFocus();
  SendRequest(request);
}

bool Modem::PrepareMeasuredValue() {
  if (!Passes(CheckMeasuringPoint(TMST.Text()), TMST)) return false;
  if (!Passes(CheckParameter(TPAR.Text()), TPAR)) return false;
  if (!Passes(CheckQualityFlag(TBEW.Text()), TBEW)) return false;
  TBEW.SetText(NormalisedQualityFlag(TBEW.Text()));
  TMEW.SetText(NormalisedValue(TMEW.Text()));
  return Passes(CheckValue(TMEW.Text()), TMEW);
}

bool Modem::Passes(const std::optional<Finding>& finding, TextBox& field) {
  if (!finding) return true;
  if (finding->stops) field.SetMarked(true);
  host_.windows.ShowMessage(finding->message);
  if (finding->takesFocus) field.SetFocus();
  return !finding->stops;
}

void Modem::SendRequest(const Bytes& request) {
  WithModem([&] {
    if (link_.ModemDialogue(request) != kYes) host_.windows.ShowMessage(kRefused);
  });
}

}  // namespace ox
