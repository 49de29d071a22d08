// oxtool log: what the power monitor has noted.
#include <algorithm>
#include <array>
#include <iomanip>
#include <memory>
#include <ostream>

#include "platform/line_ends.h"
#include "platform/time_text.h"
#include "power/power_log_reader.h"
#include "tool/commands.h"
#include "tool/common_options.h"
#include "tool/files.h"
#include "tool/log_curves.h"

namespace ox::tool {
namespace {

constexpr std::size_t kMaxLog = std::size_t{128} * 1024 * 1024;  // bytes; a line a minute for 20 months
constexpr int kMostTold = 10;                                    // lines that are not understood

constexpr const char* kHeading =
    "Zeit                 Ladung %  Akku V  Netzteil V  Kapazität %  Temp. °C  Ladebetrieb\n";
constexpr std::array<int, kLogValues> kWidths{10, 8, 12, 13, 10};
constexpr std::string_view kCsvHeading =
    "Sitzung;Zeit;Akkuladung %;Akkuspannung V;Netzteilspannung V;Akkukapazität %;Temperatur °C;Ladebetrieb";

std::string WithComma(std::string number) {
  std::ranges::replace(number, '.', ',');
  return number;
}

struct Options {
  std::string path;
  std::string svg;
  bool csv = false;
};

/// Writes entry by entry, as a table for people or as CSV; tells what it does not understand.
class Listing {
 public:
  Listing(const Options& options, Console& console) : options_(options), console_(console) {}

  void List(BytesView log) {
    if (options_.csv) console_.output << kCsvHeading << kCrLf;
    PowerLogReader reader(log);
    while (!reader.AtEnd()) {
      const LogLineKind kind = reader.Next();
      if (kind == LogLineKind::kRuler) inSession_ = false;
      if (kind == LogLineKind::kUnknown) Tell(reader.Line());
      if (kind != LogLineKind::kEntry) continue;
      if (!inSession_) BeginSession();
      ++entries_;
      Write(reader.Entry());
    }
  }

  std::size_t Sessions() const { return sessions_; }
  std::size_t Entries() const { return entries_; }
  int NotUnderstood() const { return notUnderstood_; }

 private:
  void BeginSession() {
    inSession_ = true;
    ++sessions_;
    if (!options_.csv && options_.svg.empty()) {
      console_.output << (sessions_ > 1 ? "\n" : "") << "Sitzung " << sessions_ << "\n" << kHeading;
    }
  }

  void Write(const PowerLogEntry& entry) {
    std::ostream& out = console_.output;
    if (options_.csv) {
      out << sessions_ << ";" << IsoTime(entry.time);
      for (const std::string& value : entry.values) out << ";" << WithComma(value);
      out << ";" << entry.state << kCrLf;
    } else if (options_.svg.empty()) {
      out << IsoTime(entry.time);
      for (std::size_t value = 0; value < kLogValues; ++value) {
        out << std::setw(kWidths[value]) << WithComma(entry.values[value]);
      }
      out << "  " << entry.state << "\n";
    }
  }

  void Tell(int line) {
    if (++notUnderstood_ > kMostTold) return;
    console_.Say(options_.path + ":" + std::to_string(line) +
                 ": erwartet ist MM-TT-JJJJ hh:mm:ss, Akkuldg:, Akkuspg:, Netzteilspg:, Kapazität:, Temp.:, "
                 "Ladebetrieb:");
  }

  const Options& options_;
  Console& console_;
  bool inSession_ = false;
  std::size_t sessions_ = 0;
  std::size_t entries_ = 0;
  int notUnderstood_ = 0;
};

ExitStatus ShowLog(const Options& options, Console& console) {
  const auto log = ReadInput(console, options.path, kMaxLog).content;
  if (!log) return ExitStatus::kFailed;
  Listing listing(options, console);
  listing.List(*log);
  if (listing.Entries() == 0) return console.Fail(options.path + ": keine Zeile eines Stromprotokolls");
  ExitStatus status = ExitStatus::kFine;
  if (listing.NotUnderstood() > 0) {
    status =
        console.Fail(options.path + ": nicht verstandene Zeilen: " + std::to_string(listing.NotUnderstood()));
  }
  if (options.svg.empty()) return status;
  const ExitStatus written = WriteOutput(console, options.svg, LogCurves(*log), {options.path});
  if (written != ExitStatus::kFine) return written;
  console.Say(options.svg + ": Sitzungen: " + std::to_string(listing.Sessions()) +
              ", Zeilen: " + std::to_string(listing.Entries()));
  return status;
}

}  // namespace

Action DefineLog(CLI::App& app) {
  auto options = std::make_shared<Options>();
  TakeFile(app, options->path, "PowerManagementLog.txt");
  AddFlag(app, "--csv", options->csv, "schreibt CSV für eine Tabellenkalkulation");
  AddOption(app, "--svg", options->svg, "schreibt die Kurven als Bild, das ein Browser zeigt")
      .Takes("DATEI")
      .Checked(FileNameFault);
  return [options](Console& console) { return ShowLog(*options, console); };
}

}  // namespace ox::tool
