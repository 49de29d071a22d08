// The program update of either generation: choosing and loading its file, and the procedure.
#pragma once

#include <string>

#include "chooser/file_chooser.h"
#include "programming/program_update.h"
#include "programming/update_window.h"
#include "ui/controls.h"

namespace ox {

class ProgramUpdateWindow : public UpdateWindow {
 public:
  CheckBox ChPro{*this, "ChPro", "Programmdatei wählen"};
  Button ProStart{*this, "ProStart", "Update Start"};
  Button proEnd{*this, "proEnd", "Verlassen"};

 protected:
  /// All of them outlive the window.
  ProgramUpdateWindow(const ProgramUpdate& update, Host& host, Subs& subs, FileChooser& chooser);

  void OnLoad() override { ForgetProgram(); }
  void OnFailure() override;

 private:
  /// The user clicked the box.
  void ChooseProgram();
  /// The checked program of a file; empty after the user was told of its fault.
  Bytes LoadProgram(const std::string& path);
  /// Leaves nothing that could be written into a device.
  void ForgetProgram();

  /// The run; false after a message.
  bool UpdateDevice();
  /// Brings a device of the right type from its dialogue into its loader; false after a message.
  bool SendIntoLoader();
  bool CheckDeviceType();
  /// Asks for everything that goes before the first block; false after a message.
  bool PrepareDevice();

  const ProgramUpdate& update_;
  FileChooser& chooser_;
  Bytes program_;    // empty when no good file is loaded
  int choices_ = 0;  // clicks on the box
};

}  // namespace ox
