// A check box by which the user chooses and loads a file for an update.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "chooser/file_chooser.h"
#include "platform/bytes.h"
#include "ui/controls.h"
#include "ui/host.h"

namespace ox {

/// Part of an update window. A click that sets the box opens the file chooser and loads what was chosen; the
/// status line tells of it. A click that clears the box forgets the file. A file that is dropped on the
/// window is loaded as one that was chosen.
class FileBox {
 public:
  struct Parts {
    CheckBox& box;
    Label& go;                 // the status line
    Label& contents;           // what is loaded: the name of the file and what it holds
    std::string_view pattern;  // of the files that are offered
    std::string_view loading;  // shown while the file is loaded
    /// The content of a file; empty after the user was told of its fault.
    std::function<Bytes(const std::string& path)> load = {};
    /// What a content holds, UTF-8.
    std::string (*describe)(BytesView content);
    /// Whether there is a file has changed.
    std::function<void()> changed = {};
  };

  /// Takes the box's clicks. All outlive it.
  FileBox(Host& host, FileChooser& chooser, Parts parts);
  FileBox(const FileBox&) = delete;
  FileBox& operator=(const FileBox&) = delete;

  /// What was loaded; empty when there is none.
  const Bytes& Content() const { return content_; }

  /// Forgets the file: clears box, status line and what is said of the content.
  void Clear();

  /// A handler of the window was left by an exception: a file that was being loaded does not count.
  void OnFailure();

 private:
  void Choose();
  /// The file of the latest click; an empty path stands for none.
  void Load(const std::string& path);

  Host& host_;
  FileChooser& chooser_;
  Parts parts_;
  Bytes content_;
  int clicks_ = 0;
};

}  // namespace ox
