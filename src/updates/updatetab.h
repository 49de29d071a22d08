// updatetab: loads the three station tables and writes them into the device.
#pragma once

#include <string>
#include <string_view>

#include "chooser/file_chooser.h"
#include "session/subs.h"
#include "tables/table_messages.h"
#include "tables/table_text.h"
#include "ui/controls.h"
#include "ui/host.h"
#include "ui/window.h"
#include "updates/file_box.h"
#include "updates/update_frame.h"
#include "updates/update_progress.h"

namespace ox {

class updatetab : public Window {
 public:
  /// All of them outlive the window.
  updatetab(Host& host, Subs& subs, FileChooser& chooser);

  /// The status line: a loading message, or the marks of a run.
  Label Go{*this, "Go"};
  CheckBox ChMes{*this, "ChMes", "Messstellentabelle"};
  CheckBox ChPar{*this, "ChPar", "Parametertabelle"};
  CheckBox ChZuo{*this, "ChZuo", "Zuordnungstabelle"};
  /// What the three files hold, and how full the images of both generations will be.
  Label MesContents{*this, "MesContents"};
  Label ParContents{*this, "ParContents"};
  Label ZuoContents{*this, "ZuoContents"};
  Label Fill2{*this, "Fill2"};
  Label Fill3{*this, "Fill3"};
  UpdateProgress Progress;
  Button TabStart{*this, "TabStart", "Update Start"};
  Button TabEnd{*this, "TabEnd", "Verlassen"};
  QuietLine Hinweis;

 protected:
  void OnLoad() override;
  void OnFailure() override;
  void OnCloseWhileRunning() override { frame_.OnCloseWhileRunning(); }

 private:
  using Parser = Bytes (*)(const TableText& tableText, TableMessages& messages);

  /// What the three boxes have in common.
  FileBox::Parts TableParts(FileBox::Parts parts, Parser parse);
  /// The packed table of a file; empty after the user was told of its fault.
  Bytes LoadTable(const std::string& path, Parser parse);
  bool AllLoaded() const;
  /// Only three good tables can be written.
  void EnableStart() { TabStart.SetEnabled(AllLoaded()); }
  /// Says nothing of what does not fit: that is told when the update starts.
  void ShowFill();
  void UpdateDevice();

  Host& host_;
  FileBox points_;
  FileBox parameters_;
  FileBox assignments_;
  UpdateFrame frame_;
};

}  // namespace ox
