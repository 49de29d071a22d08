// Tables read and linked by a command, which tells what is wrong with them.
#pragma once

#include <string>
#include <string_view>

#include "tables/table_messages.h"
#include "tables/table_text.h"
#include "tool/console.h"

namespace ox::tool {

/// Says the messages of parsers and linking, and puts their questions to the user.
class ToldMessages : public TableMessages {
 public:
  /// The console outlives it. `from` stands before each message, such as the name of the file and ": ". With
  /// `yes` every question is answered by yes.
  ToldMessages(const Console& console, std::string from, bool yes)
      : console_(console), from_(std::move(from)), yes_(yes) {}

  void Show(const std::string& text) override;
  bool Confirm(const std::string& text) override;

 private:
  const Console& console_;
  std::string from_;
  bool yes_;
};

/// The packed table of a file; empty after the user was told of its fault.
Bytes LoadTable(const Console& console, const std::string& path,
                Bytes (*parse)(const TableText& text, TableMessages& messages));

/// Whether the user agrees to a message: asked on a terminal, else no, unless `yes` says so beforehand.
bool Agrees(const Console& console, std::string_view message, bool yes);

}  // namespace ox::tool
