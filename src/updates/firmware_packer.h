// FirmwareOX3Verpacken: packs a loader hex file into a generation III program file.
#pragma once

#include "session/session_settings.h"
#include "ui/controls.h"
#include "ui/host.h"
#include "ui/window.h"

namespace ox {

class FirmwareOX3Verpacken : public Window {
 public:
  /// Host and settings outlive the window. The settings keep both paths from one session to the next.
  FirmwareOX3Verpacken(Host& host, SessionSettings& settings);

  Label LabelTextQuelle{*this, "LabelTextQuelle", "Quellendatei (.LDR)"};
  /// File names without their extensions, which are part of the labels.
  TextBox TextQuelle{*this, "TextQuelle"};
  Label LabelTextZiel{*this, "LabelTextZiel", "Zieldatei (.PR3)"};
  TextBox TextZiel{*this, "TextZiel"};
  Button CoStart{*this, "CoStart", "Start"};

 protected:
  void OnLoad() override;

 private:
  void Start();

  Host& host_;
  SessionSettings& settings_;
};

}  // namespace ox
