// Reading and writing OX.CFG: one entry a field, each behind a mark of three characters.
#include "app/settings_file.h"

#include "platform/field_reader.h"
#include "platform/utf8.h"
#include "ui/controls.h"

namespace ox {
namespace {

constexpr const char* kFileName = "OX.CFG";
/// Far beyond any real settings file; what lies behind it is not read.
constexpr std::size_t kMaxFileSize = 65536;  // bytes

constexpr std::size_t kMarkLength = 3;
constexpr std::string_view kComMark = "\\C\\";
constexpr std::string_view kBaudMark = "\\B\\";
constexpr std::string_view kParityMark = "\\P\\";
constexpr std::string_view kSourceMark = "\\Q\\";
constexpr std::string_view kTargetMark = "\\Z\\";
constexpr std::string_view kModemMark = "\\M\\";
constexpr std::string_view kToolsMark = "EDT";

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
  FieldReader fields(WithoutByteOrderMark(*content));
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
