// Verbindungstest: shows how a device is searched for.
#pragma once

#include "link/device_search.h"
#include "session/session_settings.h"
#include "ui/controls.h"
#include "ui/host.h"
#include "ui/window.h"

namespace ox {

/// Searches as soon as it is shown and closes itself. The result stands in the session settings.
class Verbindungstest : public Window, private SearchObserver {
 public:
  Verbindungstest(Host& host, SessionSettings& settings);

  Label Label3{*this, "Label3", "Testparameter"};
  Label Label1{*this, "Label1", "Baudrate:"};
  Label Baudanz{*this, "Baudanz"};
  Label Label2{*this, "Label2", "Parität:"};
  Label Paritätanz{*this, "Paritätanz"};
  Label COM{*this, "COM"};
  QuietLine Hinweis;

 protected:
  void OnActivate() override;
  void OnFailure() override;

 private:
  void TryPair(BytesView baud, BytesView parity) override;
  void Tell(std::string_view message) override;

  Host& host_;
  SessionSettings& settings_;
};

/// Shows a fresh connection test and returns when it has ended; its result stands in the session settings.
void RunConnectionTest(Host& host, SessionSettings& settings);

}  // namespace ox
