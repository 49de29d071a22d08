// The table of faults.
#include "simulator/program/named_faults.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <climits>

namespace ox::sim {
namespace {

using Kind = ReplyFault::Kind;

constexpr double kMillisecondsPerSecond = 1000;
constexpr int kAlways = INT_MAX;
constexpr BytesView kUnknownState = "07D003B6303903520017000B";
constexpr BytesView kTooShortStatus = kUnknownState.substr(0, 12);
constexpr BytesView kNegativeStatus = "FFF9FC18FFFFCFC7005A0001";

// The values that may follow the "=".
enum class ValueKind { kNone, kNumber, kText, kCharacter };

// What follows the "=", or the default that stands in the table.
struct Value {
  std::string text;
  int number = 0;

  Seconds Milliseconds() const { return number / kMillisecondsPerSecond; }
};

ReplySelection Every(ReplyStage stage) {
  return {stage, std::nullopt, 0, kAlways};
}

ReplySelection EveryTo(char letter) {
  return {ReplyStage::kDialogueReply, letter, 0, kAlways};
}

ReplySelection Block(int number) {
  return {ReplyStage::kLoaderReply, 'P', number, 1};
}

void Add(FaultTargets& targets, ReplySelection which, Kind kind, Bytes text = {}, Seconds delay = 0,
         bool requestLost = false) {
  targets.replies.push_back({which, kind, std::move(text), delay, requestLost});
}

void BreakOff(FaultTargets& targets, const Value& records, const Bytes& lastWord) {
  targets.device.replies.endsAfter = static_cast<size_t>(records.number);
  targets.device.replies.lastWord = lastWord;
}

struct NamedFault {
  std::string_view name;
  ValueKind kind;
  std::string_view value;  // the default
  std::string_view help;
  void (*switchOn)(FaultTargets&, const Value&);
};

const std::array kFaults = {
    NamedFault{"silent", ValueKind::kNone, "", "antwortet auf nichts",
               [](FaultTargets& t, const Value&) {
                 Add(t, {std::nullopt, std::nullopt, 0, kAlways}, Kind::kSilence, {}, 0, true);
                 t.modem.wakes = false;
               }},
    NamedFault{"sleepy", ValueKind::kNumber, "1", "überhört die ersten N Weckrufe",
               [](FaultTargets& t, const Value& v) {
                 Add(t, {ReplyStage::kDialogueWakeUp, std::nullopt, 0, v.number}, Kind::kSilence);
               }},
    NamedFault{"wakeup", ValueKind::kText, "X", "antwortet auf den Weckruf mit TEXT",
               [](FaultTargets& t, const Value& v) {
                 Add(t, Every(ReplyStage::kDialogueWakeUp), Kind::kReplaced, v.text);
               }},
    NamedFault{"rubbish", ValueKind::kNone, "", "sendet Unsinn, wenn Baudrate oder Parität nicht passen",
               [](FaultTargets& t, const Value&) { t.device.rubbishWhenUnfit = true; }},
    NamedFault{"late", ValueKind::kNumber, "700", "jede Antwort kommt N ms später",
               [](FaultTargets& t, const Value& v) {
                 Add(t, {std::nullopt, std::nullopt, 0, kAlways}, Kind::kLate, {}, v.Milliseconds());
               }},
    NamedFault{"split", ValueKind::kNumber, "20", "zwischen zwei Zeichen einer Antwort vergehen N ms",
               [](FaultTargets& t, const Value& v) {
                 Add(t, {std::nullopt, std::nullopt, 0, kAlways}, Kind::kSplit, {}, v.Milliseconds());
               }},
    NamedFault{"ident-short", ValueKind::kNone, "", "der Kennung fehlt ein Zeichen",
               [](FaultTargets& t, const Value&) { t.device.identificationCut = true; }},
    NamedFault{"ident-n", ValueKind::kNone, "", "antwortet auf die Frage nach der Kennung mit N",
               [](FaultTargets& t, const Value&) { Add(t, EveryTo('K'), Kind::kReplaced, "N"); }},
    NamedFault{"type", ValueKind::kText, "ZX 9", "meldet sich als Gerätetyp TEXT",
               [](FaultTargets& t, const Value& v) { t.device.type = v.text; }},
    NamedFault{"poll-r", ValueKind::kNone, "", "antwortet auf Abrufe mit R",
               [](FaultTargets& t, const Value&) { t.device.replies.instead = kNothingKnown; }},
    NamedFault{"poll-n", ValueKind::kNone, "", "antwortet auf Abrufe mit N",
               [](FaultTargets& t, const Value&) { t.device.replies.instead = kRefused; }},
    NamedFault{"cut-record", ValueKind::kNone, "", "der letzte Datensatz bricht ab",
               [](FaultTargets& t, const Value&) { t.device.replies.cutRecord = true; }},
    NamedFault{"silence-after", ValueKind::kNumber, "2", "verstummt nach N Datensätzen",
               [](FaultTargets& t, const Value& v) { BreakOff(t, v, ""); }},
    NamedFault{"r-after", ValueKind::kNumber, "2", "bricht Sammelabrufe nach N Datensätzen mit R ab",
               [](FaultTargets& t, const Value& v) { BreakOff(t, v, kNothingKnown); }},
    NamedFault{"n-line", ValueKind::kNone, "", "sendet vor der Antwort auf einen Abruf ein N",
               [](FaultTargets& t, const Value&) { t.device.replies.refusesFirst = true; }},
    NamedFault{"flag", ValueKind::kCharacter, "?", "alle Werte tragen dieses Bewertungszeichen",
               [](FaultTargets& t, const Value& v) { t.device.replies.flag = v.text.front(); }},
    NamedFault{"records", ValueKind::kNumber, "1000", "Sammelabruf mit mindestens N Datensätzen",
               [](FaultTargets& t, const Value& v) {
                 t.device.replies.leastRecords = static_cast<size_t>(v.number);
               }},
    NamedFault{"power-short", ValueKind::kNone, "", "Stromversorgungsstatus mit zu wenigen Zeichen",
               [](FaultTargets& t, const Value&) { t.device.powerStatus = kTooShortStatus; }},
    NamedFault{"power-state", ValueKind::kNone, "", "unbekannter Zustand des Ladereglers",
               [](FaultTargets& t, const Value&) { t.device.powerStatus = kUnknownState; }},
    NamedFault{"power-negative", ValueKind::kNone, "", "negative Werte im Stromversorgungsstatus",
               [](FaultTargets& t, const Value&) { t.device.powerStatus = kNegativeStatus; }},
    NamedFault{"ack", ValueKind::kText, "@UPDATENAK", "falsche Bestätigung des Ladeprogramms",
               [](FaultTargets& t, const Value& v) {
                 Add(t, Every(ReplyStage::kUpdateAcknowledgement), Kind::kReplaced, v.text + "\r");
               }},
    NamedFault{"ack-no-cr", ValueKind::kNone, "", "Bestätigung des Ladeprogramms ohne Zeilenende",
               [](FaultTargets& t, const Value&) {
                 Add(t, Every(ReplyStage::kUpdateAcknowledgement), Kind::kLastCharacterLost);
               }},
    NamedFault{
        "block-n", ValueKind::kNumber, "10", "weist Block N zurück",
        [](FaultTargets& t, const Value& v) { Add(t, Block(v.number), Kind::kReplaced, "N", 0, true); }},
    NamedFault{"block-lost", ValueKind::kNumber, "10", "überhört Block N",
               [](FaultTargets& t, const Value& v) { Add(t, Block(v.number), Kind::kSilence, {}, 0, true); }},
    NamedFault{"block-silent", ValueKind::kNumber, "10", "schreibt Block N, ohne zu antworten",
               [](FaultTargets& t, const Value& v) { Add(t, Block(v.number), Kind::kSilence); }},
    NamedFault{"block-aa", ValueKind::kNumber, "10", "antwortet auf Block N doppelt",
               [](FaultTargets& t, const Value& v) { Add(t, Block(v.number), Kind::kDoubled); }},
    NamedFault{"block-noise", ValueKind::kNumber, "10",
               "vor der Antwort auf Block N steht ein falsches Zeichen",
               [](FaultTargets& t, const Value& v) { Add(t, Block(v.number), Kind::kNoiseBefore, "\x7F"); }},
    NamedFault{"slow-2", ValueKind::kNumber, "20000", "löscht die Tabellen in N ms",
               [](FaultTargets& t, const Value& v) {
                 Add(t, {ReplyStage::kLoaderReply, '2', 0, kAlways}, Kind::kLate, {}, v.Milliseconds());
               }},
    NamedFault{"modem", ValueKind::kText, "NR", "das Modem antwortet auf Datensätze mit TEXT",
               [](FaultTargets& t, const Value& v) { t.modem.answer = v.text; }},
    NamedFault{"modem-silent", ValueKind::kNone, "", "das Modem antwortet nicht auf Datensätze",
               [](FaultTargets& t, const Value&) { t.modem.answer = ""; }},
    NamedFault{"modem-burst", ValueKind::kNumber, "15", "das Modem sendet alle N Sekunden von sich aus",
               [](FaultTargets& t, const Value& v) { t.modem.burstPeriod = v.number; }},
    NamedFault{
        "switch-off", ValueKind::kNumber, "200",
        "das Gerät geht nach N empfangenen Zeichen aus, nach 3 s wieder an",
        [](FaultTargets& t, const Value& v) { t.device.switchOffAfter = static_cast<size_t>(v.number); }},
    NamedFault{"unplug", ValueKind::kNumber, "200",
               "das Kabel wird nach N Zeichen gezogen, nach 3 s wieder gesteckt",
               [](FaultTargets& t, const Value& v) { t.host.unplugAfter = static_cast<size_t>(v.number); }},
};

bool ReadValue(std::string_view text, ValueKind kind, Value& value) {
  value.text = text;
  if (kind == ValueKind::kCharacter) return text.size() == 1;
  if (kind != ValueKind::kNumber) return true;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value.number);
  return error == std::errc{} && end == text.data() + text.size() && value.number >= 0;
}

}  // namespace

bool SwitchOn(std::string_view fault, FaultTargets& targets) {
  const size_t equals = fault.find('=');
  const std::string_view name = fault.substr(0, equals);
  const auto* found =
      std::find_if(kFaults.begin(), kFaults.end(), [name](const NamedFault& f) { return f.name == name; });
  if (found == kFaults.end()) return false;
  const bool given = equals != std::string_view::npos;
  if (given && found->kind == ValueKind::kNone) return false;
  Value value;
  if (!ReadValue(given ? fault.substr(equals + 1) : found->value, found->kind, value)) return false;
  found->switchOn(targets, value);
  return true;
}

std::string FaultHelp() {
  constexpr size_t kColumn = 22;
  std::string help;
  for (const NamedFault& fault : kFaults) {
    std::string name(fault.name);
    if (fault.kind != ValueKind::kNone) name += "=" + std::string(fault.value);
    name.resize(std::max(kColumn, name.size() + 1), ' ');
    help += "    " + name + std::string(fault.help) + "\n";
  }
  return help;
}

}  // namespace ox::sim
