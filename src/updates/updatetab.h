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
  Button TabStart{*this, "TabStart", "Update Start"};
  Button TabEnd{*this, "TabEnd", "Verlassen"};
  QuietLine Hinweis;

 protected:
  void OnLoad() override;
  void OnFailure() override;

 private:
  using Parser = Bytes (*)(const TableText& tableText, TableMessages& messages);

  FileBox::Parts TableParts(CheckBox& box, std::string_view pattern, std::string_view loading, Parser parse);
  /// The packed table of a file; empty after the user was told of its fault.
  Bytes LoadTable(const std::string& path, Parser parse);
  /// Only three good tables can be written.
  void EnableStart();
  void UpdateDevice();

  Host& host_;
  FileBox points_;
  FileBox parameters_;
  FileBox assignments_;
  UpdateFrame frame_;
};

}  // namespace ox
