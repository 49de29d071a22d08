// updatepro and UpdateproOx3: each writes a new program into a device of its generation.
#pragma once

#include <string>

#include "chooser/file_chooser.h"
#include "programming/device_kind.h"
#include "session/subs.h"
#include "ui/controls.h"
#include "ui/host.h"
#include "ui/window.h"
#include "updates/file_box.h"
#include "updates/update_frame.h"
#include "updates/update_progress.h"

namespace ox {

class ProgramUpdateWindow : public Window {
 public:
  /// The window that the kind names. All of them outlive it.
  ProgramUpdateWindow(Host& host, const DeviceKind& kind, Subs& subs, FileChooser& chooser);

  /// The status line: a loading message, or the marks of a run.
  Label Go{*this, "Go"};
  CheckBox ChPro{*this, "ChPro", "Programmdatei wählen"};
  /// What the file holds.
  Label ProContents{*this, "ProContents"};
  UpdateProgress Progress;
  Button ProStart{*this, "ProStart", "Update Start"};
  Button proEnd{*this, "proEnd", "Verlassen"};
  QuietLine Hinweis;

 protected:
  void OnLoad() override { program_.Clear(); }
  void OnFailure() override;
  void OnCloseWhileRunning() override { frame_.OnCloseWhileRunning(); }

 private:
  /// The checked program of a file; empty after the user was told of its fault.
  Bytes LoadProgram(const std::string& path);
  void EnableStart() { ProStart.SetEnabled(!program_.Content().empty()); }
  void UpdateDevice();

  const DeviceKind& kind_;
  Host& host_;
  FileBox program_;
  UpdateFrame frame_;
};

}  // namespace ox
