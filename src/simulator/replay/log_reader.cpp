// Reading lines of bounded length.
#include "simulator/replay/log_reader.h"

#include <stdexcept>
#include <string>

#include "platform/utf8.h"

namespace ox::sim {
namespace {

[[noreturn]] void FailInLine(std::size_t number, const std::string& why) {
  throw std::runtime_error("Zeile " + std::to_string(number) + " " + why);
}

}  // namespace

LogReader::LogReader(std::istream& text) : text_(text) {
  const auto line = NextLine();
  const auto header = line ? ReadLogHeader(WithoutByteOrderMark(*line)) : std::nullopt;
  if (!header) throw std::runtime_error("ist kein Protokoll von Orvanexe Service");
  if (header->format != kLogFormat)
    throw std::runtime_error("ist ein Protokoll der Form " + std::to_string(header->format) +
                             ", die dieses oxsim nicht kennt");
  header_ = *header;
}

std::optional<BytesView> LogReader::NextLine() {
  ++number_;
  text_.getline(line_.data(), static_cast<std::streamsize>(line_.size()));
  const auto length = static_cast<std::size_t>(text_.gcount());
  if (text_.eof()) return std::nullopt;  // what was read has no line end
  if (text_.bad()) throw std::runtime_error("lässt sich nicht lesen");
  if (text_.fail()) FailInLine(number_, "ist zu lang für ein Protokoll");
  BytesView line(line_.data(), length - 1);
  // The mail that brought the log may have changed its line ends.
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

LogEvent LogReader::Next() {
  while (const auto line = NextLine()) {
    auto event = ReadLogLine(*line);
    if (!event) FailInLine(number_, "ist nicht zu verstehen");
    event->line = number_;
    end_.line = number_;
    end_.time = event->time;
    if (event->kind != LogEvent::Kind::kOther) return *event;
  }
  return end_;
}

LogContents LookThrough(std::istream& text) {
  LogReader reader(text);
  LogContents contents;
  contents.header = reader.Header();
  for (LogEvent event = reader.Next(); event.kind != LogEvent::Kind::kEnd; event = reader.Next()) {
    if (event.kind == LogEvent::Kind::kOpening) ++contents.openings;
  }
  return contents;
}

}  // namespace ox::sim
