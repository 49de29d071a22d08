// Paths in both styles, and patterns.
#include "chooser/path_rules.h"

#include <gtest/gtest.h>

#include "chooser/file_pattern.h"

namespace ox::test {
namespace {

constexpr PathStyle kLetters{'\\', true};
constexpr PathStyle kSlashes{'/', false};

TEST(PathRules, AbsoluteNamesAndExtensions) {
  for (const char* path : {"C:\\a", "c:a", "\\a", "\\\\rechner\\a"})
    EXPECT_TRUE(IsAbsolutePath(path, kLetters)) << path;
  for (const char* path : {"", "C", "a\\b", "/a", "ä:x"})
    EXPECT_FALSE(IsAbsolutePath(path, kLetters)) << path;
  EXPECT_TRUE(IsAbsolutePath("/a", kSlashes));
  for (const char* path : {"", "a/b", "\\a", "C:x"}) EXPECT_FALSE(IsAbsolutePath(path, kSlashes)) << path;

  // The "." may stand anywhere; what a name without one gets is tested with the dialogue.
  EXPECT_EQ(WithExtension("D:\\a.b\\netz", "*.mes"), "D:\\a.b\\netz");
}

TEST(PathRules, TakenApartAPathCanBePutTogetherAgain) {
  struct Row {
    PathStyle style;
    const char* path;
    const char* drive;
    const char* folder;
    std::vector<std::string> way;
  };
  const std::vector<std::string> drives{"/", "/mnt/stick", "/mnt"};
  const Row rows[] = {
      {kLetters, "C:\\", "C:", "\\", {"C:\\"}},
      {kLetters, "C:\\Tabellen\\alt", "C:", "\\Tabellen\\alt", {"C:\\", "C:\\Tabellen", "C:\\Tabellen\\alt"}},
      {kLetters, "\\Tabellen", "", "", {"\\", "\\Tabellen"}},
      {kSlashes, "/", "/", "", {"/"}},
      {kSlashes, "/mnt/stick", "/mnt/stick", "", {"/", "/mnt", "/mnt/stick"}},
      {kSlashes, "/mnt/stick/ä b", "/mnt/stick", "/ä b", {"/", "/mnt", "/mnt/stick", "/mnt/stick/ä b"}},
      {kSlashes, "/mnt/sticks", "/mnt", "/sticks", {"/", "/mnt", "/mnt/sticks"}},
      {kSlashes, "/C:/x", "/", "C:/x", {"/", "/C:", "/C:/x"}},
  };
  for (const Row& row : rows) {
    const DriveAndFolder split = SplitFolder(row.path, row.style, drives);
    EXPECT_EQ(split.drive, row.drive) << row.path;
    EXPECT_EQ(split.folder, row.folder) << row.path;
    std::vector<std::string> way;
    for (const NamedFolder& folder : WayTo(row.path, row.style)) way.push_back(folder.path);
    EXPECT_EQ(way, row.way);
  }
  EXPECT_EQ(SplitFolder("/home", kSlashes, {}).drive, "");
}

TEST(FilePattern, StarsQuestionMarksAndSeveralPatterns) {
  struct Row {
    const char* name;
    const char* pattern;
    bool fits;
  };
  const Row rows[] = {
      {"netz.mes", "*.mes", true},
      {"NETZ.MES", "*.mes", true},
      {"netz.mes", "*.ME?", true},
      {"netz.mes.alt", "*.mes", false},
      {"netz.mesx", "*.mes", false},
      {".mes", "*.mes", true},
      {"netz", "*.mes", false},
      {"März.mes", "M?rz.*", true},
      {"Mrz.mes", "M?rz.*", false},
      {"€", "?", true},
      {"Ä.mes", "ä.mes", false},
      {"aXbXc", "a*X?", true},
      {"netz.par", "*.mes; *.PAR", true},
      {"netz.zuo", "*.mes;*.par;", false},
      {"ohne Punkt", "*.*", true},
      {"alles", "", true},
      {"alles", " ", true},
      {"alles", "**", true},
      {"", "*", true},
      {"a", "a?", false},
      {"nichts", ";", false},
      {"abc", "abc*?", false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(MatchesPattern(row.name, row.pattern), row.fits) << row.name << " " << row.pattern;
  }
  // No pattern takes exponential time.
  std::string stars;
  for (int i = 0; i < 200; ++i) stars += "*a";
  EXPECT_FALSE(MatchesPattern(std::string(2000, 'a') + "b", stars + "c"));
}

}  // namespace
}  // namespace ox::test
