// The search in its window.
#include "link/verbindungstest.h"

#include "platform/text.h"

namespace ox {

Verbindungstest::Verbindungstest(Host& host, SessionSettings& settings)
    : Window(host.windows, "Verbindungstest", "Verbindung mit Orvanexe prüfen"),
      Hinweis(*this, host.notices),
      host_(host),
      settings_(settings) {}

void Verbindungstest::OnActivate() {
  host_.windows.Yield();
  const Bytes& port = settings_.ComPort;
  COM.SetText("Schnittstelle: COM" + ToText(port.substr(port.empty() ? 0 : port.size() - 1)));
  SearchDevice(host_, settings_, *this);
  Unload();
}

void Verbindungstest::OnFailure() {
  Unload();
}

void Verbindungstest::TryPair(BytesView baud, BytesView parity) {
  Baudanz.SetText(baud);
  Paritätanz.SetText(parity == "E" ? "gerade" : "ungerade");
}

void Verbindungstest::Tell(std::string_view message) {
  host_.windows.ShowMessage(message);
}

void RunConnectionTest(Host& host, SessionSettings& settings) {
  Verbindungstest window(host, settings);
  host.windows.ShowModal(window);
}

}  // namespace ox
