// Why a file cannot be read or written, in plain words.
#include "tool/files.h"

#include <algorithm>

namespace ox::tool {
namespace {

constexpr std::size_t kMegabyte = std::size_t{1024} * 1024;
constexpr std::size_t kKilobyte = 1024;

bool Exists(Files& files, const std::string& path) {
  return files.SameFile(path, path);
}

std::string SizeText(std::size_t bytes) {
  return bytes % kMegabyte == 0 ? std::to_string(bytes / kMegabyte) + " MB"
                                : std::to_string(bytes / kKilobyte) + " KB";
}

}  // namespace

std::optional<Bytes> ReadInput(const Console& console, const std::string& path, std::size_t limit) {
  Files& files = console.machine.files;
  auto content = files.Read(path, limit + 1);  // one byte more, to notice a file that is too large
  std::string fault;
  if (!content) {
    fault = !Exists(files, path)                ? "nicht gefunden"
            : files.FoldersIn(path).has_value() ? "ist ein Ordner, erwartet ist eine Datei"
                                                : "lässt sich nicht lesen";
  } else if (content->size() > limit) {
    fault = "zu groß, höchstens " + SizeText(limit) + " erwartet";
  }
  if (fault.empty()) return content;
  console.Fail(path + ": " + fault);
  return std::nullopt;
}

ExitStatus WriteOutput(const Console& console, const std::string& path, BytesView content,
                       const std::vector<std::string>& read) {
  Files& files = console.machine.files;
  if (std::ranges::any_of(read, [&](const std::string& input) { return files.SameFile(input, path); })) {
    return console.Fail(path + ": wird auch gelesen; nichts geschrieben");
  }
  if (files.Replace(path, content)) return ExitStatus::kFine;
  return console.Fail(path + (files.FoldersIn(path).has_value() ? ": ist ein Ordner; nichts geschrieben"
                                                                : ": lässt sich nicht schreiben"));
}

}  // namespace ox::tool
