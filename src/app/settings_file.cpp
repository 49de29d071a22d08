// Reading and writing OX.CFG: one entry a line, each behind a mark of three characters.
#include "app/settings_file.h"

#include "platform/controls.h"

namespace ox {
namespace {

constexpr const char* kFileName = "OX.CFG";
/// Far beyond any real settings file; what lies behind it is not read.
constexpr std::size_t kMaxFileSize = 65536;  // bytes

/// Some editors put it in front of a text.
constexpr BytesView kByteOrderMark = "\xEF\xBB\xBF";

constexpr std::size_t kMarkLength = 3;
constexpr std::string_view kComMark = "\\C\\";
constexpr std::string_view kBaudMark = "\\B\\";
constexpr std::string_view kParityMark = "\\P\\";
constexpr std::string_view kSourceMark = "\\Q\\";
constexpr std::string_view kTargetMark = "\\Z\\";
constexpr std::string_view kModemMark = "\\M\\";
constexpr std::string_view kToolsMark = "EDT";

bool IsLineEnd(char c) {
  return c == '\r' || c == '\n';
}

/// Takes the entries one by one as delimited fields: leading blanks are skipped, a field ends at a comma or
/// at the end of its line, and a field in double quotes runs to the closing quote.
class FieldReader {
 public:
  explicit FieldReader(BytesView content) : rest_(content) {}

  bool AtEnd() const { return rest_.empty(); }

  BytesView Next() {
    while (!rest_.empty() && rest_.front() == ' ') rest_.remove_prefix(1);
    if (!rest_.empty() && rest_.front() == '"') return NextQuoted();
    const BytesView field = TakeWhile([](char c) { return c != ',' && !IsLineEnd(c); });
    SkipDelimiter();
    return field;
  }

 private:
  BytesView NextQuoted() {
    rest_.remove_prefix(1);
    const BytesView field = TakeWhile([](char c) { return c != '"'; });
    TakeWhile([](char c) { return c != ',' && !IsLineEnd(c); });
    SkipDelimiter();
    return field;
  }

  template <class Condition>
  BytesView TakeWhile(Condition condition) {
    std::size_t length = 0;
    while (length < rest_.size() && condition(rest_[length])) ++length;
    const BytesView taken = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return taken;
  }

  void SkipDelimiter() {
    if (rest_.empty()) return;
    const bool crLf = rest_.size() > 1 && rest_[0] == '\r' && rest_[1] == '\n';
    rest_.remove_prefix(crLf ? 2 : 1);
  }

  BytesView rest_;
};

void TakeEntry(BytesView entry, SessionSettings& settings, SwitchedEntries entries) {
  if (entry.size() < kMarkLength) return;
  const BytesView mark = entry.substr(0, kMarkLength);
  const BytesView value = entry.substr(kMarkLength);
  const Bytes last(1, entry.back());
  if (mark == kComMark) {
    settings.ComPort = last;
  } else if (mark == kBaudMark) {
    settings.BaudRate = value;
  } else if (mark == kParityMark) {
    settings.Parity = last;
  } else if (mark == kSourceMark) {
    settings.SourcePath = value;
  } else if (mark == kTargetMark) {
    settings.TargetPath = value;
  } else if (mark == kModemMark) {
    settings.ModemSwitch = true;
    entries.MenuModem.SetVisible(true);
  } else if (mark == kToolsMark) {
    entries.MenueTools.SetVisible(true);
  }
}

}  // namespace

void LoadSettings(Files& files, SessionSettings& settings, SwitchedEntries entries) {
  settings = SessionSettings();
  const auto content = files.Read(kFileName, kMaxFileSize);
  if (!content) return;
  const bool marked = content->starts_with(kByteOrderMark);
  FieldReader fields(BytesView(*content).substr(marked ? kByteOrderMark.size() : 0));
  while (!fields.AtEnd()) TakeEntry(fields.Next(), settings, entries);
}

void SaveSettings(Files& files, const SessionSettings& settings, SwitchedEntries entries) {
  Bytes content;
  const auto line = [&](std::string_view mark, std::string_view value) {
    content.append(mark).append(value).append(settings.CRLF);
  };
  line(kComMark, settings.ComPort);
  line(kBaudMark, settings.BaudRate);
  line(kParityMark, settings.Parity);
  if (!settings.SourcePath.empty()) line(kSourceMark, settings.SourcePath);
  if (!settings.TargetPath.empty()) line(kTargetMark, settings.TargetPath);
  if (settings.ModemSwitch) line(kModemMark, {});
  if (entries.MenueTools.Visible()) line(kToolsMark, {});
  files.Replace(kFileName, content);
}

}  // namespace ox
