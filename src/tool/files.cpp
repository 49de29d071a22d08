// Why a file cannot be read or written, in plain words.
#include "tool/files.h"

#include <algorithm>
#include <utility>

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

std::optional<Bytes> ReadFileOrPipe(Files& files, const std::string& path, std::size_t limit) {
  auto content = files.Read(path, limit);
  return content ? std::move(content) : files.ReadPipe(path, limit);
}

Input ReadInput(const Console& console, const std::string& path, std::size_t limit) {
  Files& files = console.machine.files;
  Input input;
  bool tooLarge = files.SizeOf(path).value_or(0) > limit;
  if (!tooLarge) input.content = ReadFileOrPipe(files, path, limit + 1);  // one byte more, to notice too many
  tooLarge = tooLarge || (input.content && input.content->size() > limit);
  if (input.content && !tooLarge) return input;
  input.content.reset();
  input.fault = tooLarge                            ? "zu groß, höchstens " + SizeText(limit) + " erwartet"
                : !Exists(files, path)              ? "nicht gefunden"
                : files.FoldersIn(path).has_value() ? "ist ein Ordner, erwartet ist eine Datei"
                                                    : "lässt sich nicht lesen";
  console.Fail(path + ": " + input.fault);
  return input;
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
