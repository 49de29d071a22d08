// What people write: settings, names and patterns of files, texts in any encoding, the fields of the windows.
#include <cmath>

#include "app/start.h"
#include "chooser/file_pattern.h"
#include "chooser/path_rules.h"
#include "exchange/poll_request.h"
#include "harness.h"
#include "modem/modem_checks.h"
#include "modem/modem_requests.h"
#include "platform/text.h"
#include "platform/utf8.h"
#include "power/power_request.h"
#include "support/test_host.h"

namespace ox {
namespace {

/// The settings file that a start of the program leaves behind.
Bytes Restart(BytesView file) {
  test::TestHost host;
  host.files.content["OX.CFG"] = file;
  SessionSettings settings;
  Start start(host.host, settings, {});
  host.windows.OpenMain(start);
  start.RequestClose();
  return host.files.content["OX.CFG"];
}

/// Settings that were saved stay as they are; only quotes can bring in what ends a value without them.
void RoundTrip(BytesView file) {
  const Bytes saved = Restart(file);
  Require(Restart(saved) == saved || file.find(kQuote) != BytesView::npos);
}

/// In pairs that fit each other; the last two pairs are for patterns alone.
constexpr std::string_view kSigns[] = {"a", "A", "ä", "Ä", "×", "×", "÷", "÷",
                                       ".", ".", "€", "€", "*", "*", "?", "?"};

bool Fits(BytesView name, BytesView pattern) {
  if (pattern.empty()) return name.empty();
  const std::string_view sign = kSigns[ByteValue(pattern[0])];
  if (sign == "*") return Fits(name, pattern.substr(1)) || (!name.empty() && Fits(name.substr(1), pattern));
  return !name.empty() && (sign == "?" || name[0] / 2 == pattern[0] / 2) &&
         Fits(name.substr(1), pattern.substr(1));
}

void Match(BytesView input) {
  MatchesPattern(input.substr(0, input.size() / 2), input.substr(input.size() / 2));  // any bytes at all
  Bytes signs[2];  // of the pattern and of the name
  std::string texts[2];
  for (const char byte : input.substr(0, 20)) {
    const bool ofName = signs[0].size() == 6;
    signs[ofName] += ByteOf(ByteValue(byte) % (ofName ? 12 : 16));
    texts[ofName] += kSigns[ByteValue(signs[ofName].back())];
  }
  const bool all = texts[0].empty() || texts[0] == "*.*";
  Require(MatchesPattern(texts[1], " " + texts[0]) == (all || Fits(signs[1], signs[0])));
}

void WalkPaths(PathStyle style, BytesView input) {
  const std::string folder = TakeText(input);
  const std::string name = TakeText(input);
  const std::string path = JoinPath(folder, name, style);
  Require(path == folder + Bytes(folder.ends_with(style.separator) ? 0 : 1, style.separator) + name);
  const auto [drive, rest] = SplitFolder(path, style, {"/", folder});
  Require(drive + rest == (drive.empty() ? "" : path));
  std::string below;
  for (const NamedFolder& step : WayTo(path, style)) {
    Require(IsAbsolutePath(step.path, style) && step.path.starts_with(below) &&
            step.path.ends_with(step.name));
    below = step.path;
  }
  const auto names = [style](std::string text) { return std::erase(text, style.separator), text; };
  Require(names(below) == names(path));
  Require(WithExtension(name, "*.mes") == name + (name.find('.') == std::string::npos ? ".mes" : ""));
}

void Convert(unsigned cut, BytesView bytes) {
  constexpr char kPlaceholder = '\x1A';
  const std::string text = ToText(bytes);
  Require(IsUtf8(text) && ToBytes(text) == bytes && ToBytes(bytes).size() <= bytes.size());
  if (bytes.find(kPlaceholder) != BytesView::npos) return;
  const FileText file(Bytes(bytes), kPlaceholder);
  const std::size_t size = file.Characters().size();
  const std::string written = file.Written(0, size);
  Require(file.Written(0, cut % (size + 1)) + file.Written(cut % (size + 1), size) == written);
  // Where no mark was joined with its letter, all is written as it stands.
  const auto count =
      std::ranges::count_if(bytes, [](char byte) { return (ByteValue(byte) & 0xC0U) != 0x80; });
  if (!IsUtf8(bytes) || size == static_cast<std::size_t>(count))
    Require(written == (IsUtf8(bytes) ? bytes : text));
}

/// A request is sent when it is made as the device wants it, and never else.
void CheckPoll(BytesView input) {
  const PollFields fields{TakeText(input), TakeText(input), TakeText(input)};
  const Bytes mask = Bytes(fields.AKZ.empty() ? "    " : "000 ") +
                     (fields.MST.empty() ? "          " : "00000000: ") +
                     (fields.Par.empty() ? "    \r" : "0000\r");
  const bool any = !(fields.AKZ + fields.MST + fields.Par).empty();
  Require(RefusalOfSingleRequest(fields).has_value() != (any && Looks(SingleRequest(fields), "J" + mask)));
  Require(RefusalOfZRequest(fields).has_value() !=
          (NamesOneValue(fields) && Looks(ZRequest(fields), "Z" + mask)));
}

void CheckModem(BytesView input) {
  const Bytes one = TakeText(input);
  const Bytes two = TakeText(input);
  const Bytes three = TakeText(input);
  const std::string flag = NormalisedQualityFlag(three);
  const std::string value = NormalisedValue(TakeText(input));
  const auto passes = [](const std::optional<Finding>& finding) { return !finding || !finding->stops; };
  Require((passes(CheckOffice(one)) && passes(CheckDate(two)) && passes(CheckTime(three))) ==
          Looks(BuildDateRequest(one, two, three), "*000 000000 0000\r"));
  const bool right = passes(CheckMeasuringPoint(one)) && passes(CheckParameter(two));
  Require((right && passes(CheckQualityFlag(flag)) && passes(CheckValue(value))) ==
          Looks(BuildValueRequest(one, two, ToBytes(flag), ToBytes(value)), "#00000000: 0000 _ _~~~~ \r"));
}

/// Rounded as the processor rounds: halves to the even number.
void CheckPreset(BytesView input) {
  std::string text;  // short enough that there is no doubt about a half
  for (const char byte : input.substr(0, 12)) text += "0123456789.+- \t5"[ByteValue(byte) % 16];
  const int charge = ReadPreset(text);
  Require(charge == std::clamp(std::nearbyint(std::strtod(text.c_str(), nullptr)), -32767.0, 32767.0));
  const unsigned sent = IsPreset(charge) ? static_cast<unsigned>(charge) : 0xFFU;
  Require(BuildStatusRequest(charge) == Bytes{'>', ByteOf(sent), '\r'});
}

}  // namespace

void Fuzz(unsigned choice, BytesView input) {
  const unsigned target = choice % 8;
  if (target == 0) return RoundTrip(input);
  if (target == 1) return Match(input);
  if (target == 2) return WalkPaths({'/', false}, input);
  if (target == 3) return WalkPaths({'\\', true}, input);
  if (target == 4) return Convert(choice / 8, input);
  if (target == 5) return CheckPoll(input);
  if (target == 6) return CheckModem(input);
  CheckPreset(input);
}

}  // namespace ox
