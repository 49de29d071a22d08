// The polls, their buttons, and the loading of names.
#include "exchange/datenaustausch.h"

#include <cmath>
#include <cstddef>
#include <optional>
#include <string>

#include "chooser/file_chooser.h"
#include "exchange/reply_display.h"
#include "exchange/values_csv.h"
#include "link/wait.h"
#include "platform/text.h"
#include "platform/time_text.h"
#include "platform/utf8.h"
#include "session/window_table_messages.h"
#include "tables/mes_table.h"
#include "tables/table_file.h"
#include "ui/saving.h"

namespace ox {
namespace {

constexpr Seconds kBetweenPolls = 10.0F;  // from a cyclic poll's display to the next poll

constexpr FileKind kTextFile{"Text wie angezeigt", "txt"};
constexpr FileKind kCsvFile{"Tabelle", "csv"};

constexpr std::string_view kTablePattern = "*.mes";
constexpr std::string_view kLoading = "Messstellentabelle wird geladen ...";

/// So often at most the records are counted on the screen.
constexpr Seconds kBetweenCounts = 0.1F;

std::string ValuesOf(std::size_t records) {
  return records == 1 ? "1 Wert" : std::to_string(records) + " Werte";
}

/// Says what runs, and on every way out of it that nothing does.
template <class Running>
class RunMark {
 public:
  RunMark(Running& running, Running kind) : running_(running) { running_ = kind; }
  RunMark(const RunMark&) = delete;
  RunMark& operator=(const RunMark&) = delete;
  ~RunMark() { running_ = Running::kNothing; }

 private:
  Running& running_;
};

}  // namespace

Datenaustausch::Datenaustausch(Host& host, SessionSettings& settings, FileChooser& chooser)
    : Window(host.windows, "Datenaustausch", "Datenaustausch mit Orvanexe"),
      Hinweis(*this, host.notices),
      host_(host),
      chooser_(chooser),
      Due_(host, settings, datanz) {
  Abbruch.SetEnabled(false);
  Einzelabruf.onClick = [this] { PollSingle(); };
  Abruf_Y.onClick = [this] { PollZ(); };
  Sammelabruf.onClick = [this] { Poll(Bytes(kCollectiveRequest), true); };
  Zyklischer_Abruf.onClick = [this] { PollCyclically(); };
  Zeitabruf.onClick = [this] { Poll(Bytes(kTimeRequest), false); };
  Abbruch.onClick = [this] { AbortRequested_ = true; };
  Verlassen.onClick = [this] { RequestClose(); };
  for (TextBox* field : {&AKZ, &MST, &Par}) field->onEnter = [this] { Einzelabruf.Click(); };
  duemstwal.onClick = [this] { LoadTable(chooser_.Choose(kTablePattern)); };
  mewanz.LetSave([this](const Bytes& shown) { SaveValues(shown); });
  datanz.LetSave([this](const Bytes& shown) { SaveTrace(shown); });
  duemstwal.TakeFiles(kTablePattern, [this](const std::string& path) { LoadTable(path); });
}

void Datenaustausch::OnActivate() {
  AKZ.SetFocus();
}

void Datenaustausch::OnCloseWhileRunning() {
  AbortRequested_ = true;
}

void Datenaustausch::OnFailure() {
  tableLocks_ = false;
  ShowLock();
}

void Datenaustausch::PollSingle() {
  const PollFields fields = TypedFields();
  if (Refused(RefusalOfSingleRequest(fields))) return;
  if (OfficeIsRedundant(fields)) host_.windows.ShowMessage(kRedundantOffice);
  Poll(SingleRequest(fields), !NamesOneValue(fields), OfficeAskedFor(fields));
}

void Datenaustausch::PollZ() {
  const PollFields fields = TypedFields();
  if (Refused(RefusalOfZRequest(fields))) return;
  if (OfficeIsRedundant(fields)) host_.windows.ShowMessage(kRedundantOffice);
  RunLocked(Running::kPoll, [&] { ShowValues(ShownOfZReply(Exchange(ZRequest(fields), false))); });
}

void Datenaustausch::Poll(const Bytes& request, bool multiRecord, BytesView office) {
  RunLocked(Running::kPoll, [&] { ShowValues(Exchange(request, multiRecord), office); });
}

void Datenaustausch::PollCyclically() {
  AbortRequested_ = false;
  RunLocked(Running::kCyclicPoll, [this] {
    while (!AbortRequested_) {
      ShowValues(Exchange(Bytes(kCollectiveRequest), true));
      RestBetweenPolls();
    }
  });
}

void Datenaustausch::RunLocked(Running kind, const std::function<void()>& work) {
  {
    const RunMark mark(running_, kind);
    ShowLock();
    work();
  }
  ShowLock();
}

void Datenaustausch::RestBetweenPolls() {
  // Midnight ends the wait.
  Pause(host_, Difference{host_.clock.SecondsSinceMidnight(), kBetweenPolls}, AbortRequested_);
}

void Datenaustausch::LoadTable(const std::string& path) {
  if (!path.empty()) {
    tableLocks_ = true;
    LockButtons();
  }
  FocusHome();  // the window is the active one again
  if (path.empty()) return;
  // After a failure the buttons stay locked until another table is loaded; only the close box still works.
  if (!ReadNames(path)) return;
  tableLocks_ = false;
  ShowLock();
}

bool Datenaustausch::ReadNames(const std::string& path) {
  datanz.SetText(kLoading);
  host_.windows.Yield();
  const std::optional<TableText> text = ReadTableText(host_.files, path);
  if (!text) {
    host_.windows.ShowMessage("Fehler beim Lesen der Datei: " + path + "!");
    return false;
  }
  WindowTableMessages messages(host_.windows);
  nameIndex_ = NameIndex(ParseMesTable(*text, messages));
  datanz.SetText("");
  return true;
}

Bytes Datenaustausch::Exchange(const Bytes& request, bool multiRecord) {
  MarkStartTime();
  datanz.SetText("");
  Records.SetText("");
  if (!multiRecord) return Due_.DeviceDialogue(request, false);
  std::size_t records = 0;
  Seconds shown = StartTime_;
  Bytes reply = Due_.DeviceDialogue(request, true, [&](BytesView line) {
    records += IsRecord(line) ? 1 : 0;
    const Seconds now = host_.clock.SecondsSinceMidnight();
    if (std::abs(now - shown) < kBetweenCounts) return;
    shown = now;
    Records.SetText("bisher " + ValuesOf(records));
  });
  Records.SetText(reply.empty() ? std::string() : ValuesOf(records));
  return reply;
}

void Datenaustausch::ShowValues(BytesView reply, BytesView office) {
  mewanz.SetText(ToText(FormatValues(reply, nameIndex_)));
  shownReply_ = reply;
  askedOffice_ = office;
  Abrufzeit.SetText("Abruf " + GermanTime(polled_));
}

void Datenaustausch::SaveValues(const Bytes& shown) {
  const std::string csv = CsvHeading() + CsvLines(shownReply_, nameIndex_, askedOffice_, polled_);
  OfferToSave(host_, *this, "Messwerte_" + TimeInName(polled_),
              {{kTextFile, shown}, {kCsvFile, Bytes(kByteOrderMark) + csv}});
}

void Datenaustausch::SaveTrace(const Bytes& shown) {
  OfferToSave(host_, *this, "Ausgetauschte_Daten_" + TimeInName(polled_), {{kTextFile, shown}});
}

PollFields Datenaustausch::TypedFields() const {
  return {ToBytes(AKZ.Text()), ToBytes(MST.Text()), ToBytes(Par.Text())};
}

bool Datenaustausch::Refused(const std::optional<PollRefusal>& refusal) {
  const PollRefusal named = refusal.value_or(PollRefusal());
  AKZ.SetMarked(named.AKZ);
  MST.SetMarked(named.MST);
  Par.SetMarked(named.Par);
  if (refusal) host_.windows.ShowMessage(refusal->message);
  return refusal.has_value();
}

void Datenaustausch::MarkStartTime() {
  StartTime_ = host_.clock.SecondsSinceMidnight();
  polled_ = host_.clock.Now();
}

void Datenaustausch::LockButtons() {
  buttons_.Lock();
  Abbruch.SetEnabled(false);
}

void Datenaustausch::UnlockButtons() {
  buttons_.Unlock();
  Abbruch.SetEnabled(false);
  AKZ.SetFocus();
}

void Datenaustausch::ShowLock() {
  if (running_ == Running::kNothing && !tableLocks_) {
    UnlockButtons();
    return;
  }
  LockButtons();
  if (running_ != Running::kCyclicPoll) return;
  Abbruch.SetEnabled(true);
  FocusHome();
}

void Datenaustausch::FocusHome() {
  if (Abbruch.Enabled()) {
    Abbruch.SetFocus();
  } else {
    AKZ.SetFocus();
  }
}

}  // namespace ox
