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
  return {ReplyStage::DialogueReply, letter, 0, kAlways};
}

ReplySelection Block(int number) {
  return {ReplyStage::LoaderReply, 'P', number, 1};
}

void Add(FaultTargets& targets, ReplySelection which, Kind kind, Bytes text = {}, Seconds delay = 0,
         bool requestLost = false) {
  targets.replies.push_back({which, kind, std::move(text), delay, requestLost});
}

void AnswerPowerWith(FaultTargets& targets, BytesView fields) {
  Add(targets, EveryTo('>'), Kind::Replaced, "0" + Bytes(fields) + "\r");
}

struct NamedFault {
  std::string_view name;
  std::string_view value;  // the default; empty where the fault takes none
  bool number;             // the value must be a number
  std::string_view help;
  void (*switchOn)(FaultTargets&, const Value&);
};

const std::array kFaults =
    {
        NamedFault{"silent", "", false, "antwortet auf keinen Weckruf",
                   [](FaultTargets& t, const Value&) {
                     Add(t, Every(ReplyStage::DialogueWakeUp), Kind::Silence);
                     t.modem.wakes = false;
                   }},
        NamedFault{"sleepy", "1", true, "überhört die ersten N Weckrufe",
                   [](FaultTargets& t, const Value& v) {
                     Add(t, {ReplyStage::DialogueWakeUp, std::nullopt, 0, v.number}, Kind::Silence);
                   }},
        NamedFault{"wakeup", "X", false, "antwortet auf den Weckruf mit TEXT",
                   [](FaultTargets& t, const Value& v) {
                     Add(t, Every(ReplyStage::DialogueWakeUp), Kind::Replaced, v.text);
                   }},
        NamedFault{"rubbish", "", false, "sendet Unsinn, wenn Baudrate oder Parität nicht passen",
                   [](FaultTargets& t, const Value&) { t.device.rubbishWhenUnfit = true; }},
        NamedFault{"late", "700", true, "jede Antwort kommt N ms später",
                   [](FaultTargets& t, const Value& v) {
                     Add(t, {std::nullopt, std::nullopt, 0, kAlways}, Kind::Late, {}, v.Milliseconds());
                   }},
        NamedFault{"split", "20", true, "zwischen zwei Zeichen einer Antwort vergehen N ms",
                   [](FaultTargets& t, const Value& v) {
                     Add(t, {std::nullopt, std::nullopt, 0, kAlways}, Kind::Split, {}, v.Milliseconds());
                   }},
        NamedFault{
            "ident-short", "", false, "die Kennung ist zu kurz",
            [](FaultTargets& t, const Value&) { Add(t, EveryTo('K'), Kind::Replaced, "OX 3 SW 3.2\r"); }},
        NamedFault{"ident-n", "", false, "antwortet auf die Frage nach der Kennung mit N",
                   [](FaultTargets& t, const Value&) { Add(t, EveryTo('K'), Kind::Replaced, "N"); }},
        NamedFault{"type", "ZX 9", false, "meldet sich als Gerätetyp TEXT",
                   [](FaultTargets& t, const Value& v) { t.device.type = v.text; }},
        NamedFault{"poll-r", "", false, "antwortet auf Abrufe mit R",
                   [](FaultTargets& t, const Value&) { t.device.replies.instead = kNothingKnown; }},
        NamedFault{"poll-n", "", false, "antwortet auf Abrufe mit N",
                   [](FaultTargets& t, const Value&) { t.device.replies.instead = kRefused; }},
        NamedFault{"cut-record", "", false, "der letzte Datensatz bricht ab",
                   [](FaultTargets& t, const Value&) { t.device.replies.cutRecord = true; }},
        NamedFault{"silence-after", "2", true, "verstummt nach N Datensätzen",
                   [](FaultTargets& t, const Value& v) {
                     t.device.replies.silenceAfter = static_cast<size_t>(v.number);
                   }},
        NamedFault{"records", "1000", true, "Sammelabruf mit mindestens N Datensätzen",
                   [](FaultTargets& t, const Value& v) {
                     t.device.replies.leastRecords = static_cast<size_t>(v.number);
                   }},
        NamedFault{"power-short", "", false, "Stromversorgungsstatus mit zu wenigen Zeichen",
                   [](FaultTargets& t, const Value&) { AnswerPowerWith(t, kUnknownState.substr(0, 12)); }},
        NamedFault{"power-state", "", false, "unbekannter Zustand des Ladereglers",
                   [](FaultTargets& t, const Value&) { AnswerPowerWith(t, kUnknownState); }},
        NamedFault{"power-negative", "", false, "negative Werte im Stromversorgungsstatus",
                   [](FaultTargets& t, const Value&) { AnswerPowerWith(t, "FFF9FC18FFFFCFC7005A0001"); }},
        NamedFault{"ack", "@UPDATENAK", false, "falsche Bestätigung des Ladeprogramms",
                   [](FaultTargets& t, const Value& v) {
                     Add(t, Every(ReplyStage::UpdateAcknowledgement), Kind::Replaced, v.text + "\r");
                   }},
        NamedFault{"ack-no-cr", "", false, "Bestätigung des Ladeprogramms ohne Zeilenende",
                   [](FaultTargets& t, const Value&) {
                     Add(t, Every(ReplyStage::UpdateAcknowledgement), Kind::LastCharacterLost);
                   }},
        NamedFault{
            "block-n", "10", true, "weist Block N zurück",
            [](FaultTargets& t, const Value& v) { Add(t, Block(v.number), Kind::Replaced, "N", 0, true); }},
        NamedFault{
            "block-lost", "10", true, "überhört Block N",
            [](FaultTargets& t, const Value& v) { Add(t, Block(v.number), Kind::Silence, {}, 0, true); }},
        NamedFault{"block-silent", "10", true, "schreibt Block N, ohne zu antworten",
                   [](FaultTargets& t, const Value& v) { Add(t, Block(v.number), Kind::Silence); }},
        NamedFault{"block-aa", "10", true, "antwortet auf Block N doppelt",
                   [](FaultTargets& t, const Value& v) { Add(t, Block(v.number), Kind::Doubled); }},
        NamedFault{
            "block-noise", "10", true, "vor der Antwort auf Block N steht ein falsches Zeichen",
            [](FaultTargets& t, const Value& v) { Add(t, Block(v.number), Kind::NoiseBefore, "\x7F"); }},
        NamedFault{"slow-2", "20000", true, "löscht die Tabellen in N ms",
                   [](FaultTargets& t, const Value& v) {
                     Add(t, {ReplyStage::LoaderReply, '2', 0, kAlways}, Kind::Late, {}, v.Milliseconds());
                   }},
        NamedFault{"modem", "NR", false, "das Modem antwortet auf Datensätze mit TEXT",
                   [](FaultTargets& t, const Value& v) { t.modem.answer = v.text; }},
        NamedFault{"modem-silent", "", false, "das Modem antwortet nicht auf Datensätze",
                   [](FaultTargets& t, const Value&) { t.modem.answer = ""; }},
        NamedFault{"modem-burst", "15", true, "das Modem sendet alle N Sekunden von sich aus",
                   [](FaultTargets& t, const Value& v) { t.modem.burstPeriod = v.number; }},
        NamedFault{
            "unplug", "200", true, "das Kabel wird nach N Zeichen gezogen, nach 3 s wieder gesteckt",
            [](FaultTargets& t, const Value& v) { t.host.unplugAfter = static_cast<size_t>(v.number); }},
};

bool ReadValue(std::string_view text, bool isNumber, Value& value) {
  value.text = text;
  if (!isNumber) return true;
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
  if (given && found->value.empty()) return false;
  Value value;
  if (!ReadValue(given ? fault.substr(equals + 1) : found->value, found->number, value)) return false;
  found->switchOn(targets, value);
  return true;
}

std::string FaultHelp() {
  constexpr size_t kColumn = 22;
  std::string help;
  for (const NamedFault& fault : kFaults) {
    std::string name(fault.name);
    if (!fault.value.empty()) name += "=" + std::string(fault.value);
    name.resize(std::max(kColumn, name.size() + 1), ' ');
    help += "    " + name + std::string(fault.help) + "\n";
  }
  return help;
}

}  // namespace ox::sim
