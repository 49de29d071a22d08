// Datenaustausch: polls values from the device and shows them with the names of their measuring points.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "exchange/name_index.h"
#include "exchange/poll_request.h"
#include "link/device_link.h"
#include "session/session_settings.h"
#include "ui/control_lock.h"
#include "ui/controls.h"
#include "ui/host.h"
#include "ui/window.h"

namespace ox {

class FileChooser;

/// Made anew for each showing: fields, displays and names begin empty. All polls share the window's one link;
/// while one runs its buttons are locked, but for the table button. A table that is loaded meanwhile leaves
/// the lock of the poll in force.
class Datenaustausch : public Window {
 public:
  Datenaustausch(Host& host, SessionSettings& settings, FileChooser& chooser);

  Label LabelAKZ{*this, "LabelAKZ", " Amtskennzeichen"};
  TextBox AKZ{*this, "AKZ"};
  Label LabelMST{*this, "LabelMST", "Messstellennummer"};
  TextBox MST{*this, "MST"};
  Label LabelPar{*this, "LabelPar", "Parameter"};
  TextBox Par{*this, "Par"};
  Button Einzelabruf{*this, "Einzelabruf", "Abruf J"};
  Button Abruf_Y{*this, "Abruf_Y", "Abruf Z"};
  Button Sammelabruf{*this, "Sammelabruf", "Sammelabruf"};
  Button Zyklischer_Abruf{*this, "Zyklischer_Abruf", "Zyklischer Sammelabruf"};
  Button Zeitabruf{*this, "Zeitabruf", "Zeitabruf"};
  Button Abbruch{*this, "Abbruch", "Abruf abbrechen"};
  Button Verlassen{*this, "Verlassen", "Verlassen"};
  Button duemstwal{*this, "duemstwal", "Messstellen- tabelle zur Darstellung wählen"};
  Label LabelDatanz{*this, "LabelDatanz", "PC <> OX  Ausgetauschte Daten"};
  TextBox datanz{*this, "datanz"};  // trace
  Label Records{*this, "Records"};  // how many records of a collective reply have come
  Label LabelMewanz{*this, "LabelMewanz",
                    "Mst.Nr.   Par.   Mewe.  Mst.Nr.   Par.   Mewe.  Mst.Nr.   Par.   Mewe."};
  TextBox mewanz{*this, "mewanz"};  // values
  Label Abrufzeit{*this, "Abrufzeit"};
  QuietLine Hinweis;

  /// When the last exchange began, in seconds since midnight.
  float StartTime() const { return StartTime_; }

 protected:
  void OnActivate() override;
  void OnCloseWhileRunning() override;
  void OnFailure() override;

 private:
  enum class Running { kNothing, kPoll, kCyclicPoll };

  void PollSingle();
  void PollZ();
  void PollCyclically();
  /// Of a file that the user chose; nothing for an empty path.
  void LoadTable(const std::string& path);
  /// The part of LoadTable with the buttons locked; false, after the message, when the file cannot be read.
  bool ReadNames(const std::string& path);

  /// One exchange with a fresh trace, the records of several counted; returns the reply.
  Bytes Exchange(const Bytes& request, bool multiRecord);
  /// One exchange and its display, with the buttons locked. `office` is the one that was asked for.
  void Poll(const Bytes& request, bool multiRecord, BytesView office = {});
  /// Does the poll's work with the lock of its kind.
  void RunLocked(Running kind, const std::function<void()>& work);
  /// Waits for the time between two cyclic polls, at most until the abort.
  void RestBetweenPolls();
  PollFields TypedFields() const;
  /// Marks the fields that the refusal names, and no others. Shows its message when there is one, and returns
  /// true then.
  bool Refused(const std::optional<PollRefusal>& refusal);

  void MarkStartTime();
  /// `office` is the one that was asked for.
  void ShowValues(BytesView reply, BytesView office = {});
  /// Both offer what is shown to be saved.
  void SaveValues(const Bytes& shown);
  void SaveTrace(const Bytes& shown);
  void LockButtons();
  void UnlockButtons();
  /// Puts the lock of what runs in force, and the focus where it belongs then.
  void ShowLock();
  /// The focus goes to the button that ends the cyclic poll while there is one, else to the first field.
  void FocusHome();

  Host& host_;
  FileChooser& chooser_;
  /// What every poll locks.
  ControlLock buttons_{&Zeitabruf, &Sammelabruf, &Verlassen, &Abruf_Y, &Zyklischer_Abruf, &Einzelabruf};
  DeviceLink Due_;  // the window's serial line
  NameIndex nameIndex_;
  float StartTime_ = 0;
  CivilTime polled_;   // when the last exchange began
  Bytes shownReply_;   // what the values come from
  Bytes askedOffice_;  // by the request for it
  Running running_ = Running::kNothing;
  bool tableLocks_ = false;      // a table is being loaded, or the last one could not be read
  bool AbortRequested_ = false;  // read by the cyclic poll alone
};

}  // namespace ox
