// updatetab: loads the three station tables and writes them into the device.
#pragma once

#include <optional>

#include "chooser/file_chooser.h"
#include "programming/update_window.h"
#include "tables/table_images.h"
#include "tables/table_messages.h"
#include "tables/table_text.h"

namespace ox {

class updatetab : public UpdateWindow {
 public:
  updatetab(Host& host, Subs& subs, FileChooser& chooser);

  CheckBox ChMes{*this, "ChMes", "Messstellentabelle"};
  CheckBox ChPar{*this, "ChPar", "Parametertabelle"};
  CheckBox ChZuo{*this, "ChZuo", "Zuordnungstabelle"};
  Button TabStart{*this, "TabStart", "Update Start"};
  Button TabEnd{*this, "TabEnd", "Verlassen"};

 protected:
  void OnLoad() override;
  void OnFailure() override;

 private:
  /// One of the three tables: how it is chosen and read, and what came of it.
  struct Table {
    CheckBox& box;
    std::string_view pattern;
    std::string_view status;  // shown while it is loaded
    Bytes (*parse)(const TableText& tableText, TableMessages& messages);
    Bytes packed = {};  // empty when there is none
    int choices = 0;    // clicks on the box
  };

  /// The user clicked the table's box.
  void ChooseTable(Table& table);
  /// Only three good tables can be written.
  void EnableStart();
  /// The packed table of a file; empty after the user was told of its fault.
  Bytes LoadTable(const std::string& path, const Table& table);
  /// The run; false after a message.
  bool UpdateDevice();
  /// Links the tables and builds both images, before anything is sent; nothing after a message.
  std::optional<TableImages> BuildImages();
  /// Brings the device into its loader, unless it runs it already; false after a message. A device whose
  /// image is known to be of no use stays in service.
  bool ReachLoader(const TableImages& images);
  /// Asks the device for its kind; the image it takes, or null after a message.
  const Bytes* SelectImage(const TableImages& images);

  FileChooser& chooser_;
  Table points_;
  Table parameters_;
  Table assignments_;
};

}  // namespace ox
