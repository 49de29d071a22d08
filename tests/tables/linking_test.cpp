// Points find their parameters; tables that do not fit together, or are damaged, end in the right message.
#include "tables/linking.h"

#include <gtest/gtest.h>

#include "tables/packed_samples.h"

namespace ox {
namespace {

using Texts = std::vector<std::string>;

const Bytes kParameters = Packed(
    "0001 Pegelhoeh cm \0"
    "0012 Temperatu \x1F"
    "C \0"
    "1023 Abfluss   m3s\0\0\0");
const Bytes kAssignments = Packed(
    "1111111100010012\0"
    "222222221023\0"
    "111111110012\0\0");

std::string Undefined(const std::string& number) {
  return "Abbruch: Die Parameternummer " + number +
         " wird in der Zuordnungstabelle verwendet, ist in der Parameterliste aber nicht definiert!";
}

TEST(Linking, EveryAssignedParameterMustBeDefined) {
  struct Case {
    Bytes assignments;
    Bytes parameters;
    Texts shown;
  };
  const Case cases[] = {
      {kAssignments, kParameters, {}},
      {Packed("\0"), kParameters, {"Abbruch(1): Zuordnungstabelle leer!"}},
      {kAssignments, Packed("\0\0"), {"Abbruch(2): Parameterliste leer!"}},
      {Packed("1111111100010013\0"
              "222222220014\0\0"),
       kParameters,
       {Undefined("0013")}},
      {Packed("11111111\0\0"), kParameters, {}},
      // Damaged: a number cut short, no end of the assignment, no end of the table.
      {Packed("111111110001001\0\0"), kParameters, {Undefined("001")}},
      {"111111110001", kParameters, {Undefined("")}},
      {Packed("111111110001\0"), kParameters, {Undefined("")}},
      {kAssignments, kParameters.substr(0, 20), {Undefined("0012")}},
  };
  for (const Case& c : cases) {
    RecordedMessages messages;
    EXPECT_EQ(CheckAssignmentParameters(c.assignments, c.parameters, messages), c.shown.empty());
    EXPECT_EQ(messages.shown, c.shown);
  }
}

TEST(Linking, AShortUnitPutsLaterParametersOutOfStep) {
  const Bytes list = Packed(
      "0001 Pegelhoeh cm \0"
      "0012 Feuchte   %\0"
      "1023 Abfluss   m3s\0\0\0");
  EXPECT_TRUE(FindParameter("0001", list));
  EXPECT_TRUE(FindParameter("0012", list));
  EXPECT_FALSE(FindParameter("1023", list));
  EXPECT_FALSE(FindParameter("0002", kParameters));
  EXPECT_TRUE(FindParameter("1023", kParameters));
}

TEST(Linking, PutsTheFirstAssignmentOfAPointIntoItsEntry) {
  RecordedMessages messages;
  const Bytes head = Packed(
      "Stand\0\0Amt\0"
      "123\0");
  const Bytes second = Packed(
      "\0\0Leer\0"
      "456\0\0\0Dritt\0"
      "789\0");
  const Bytes end = Packed("\0\0\0");
  const Bytes points =
      head + PointEntry("22222222") + PointEntry("11111111") + second + PointEntry("22222222") + end;
  EXPECT_EQ(AttachAssignments(points, kAssignments, messages),
            head + PointEntry("22222222", "1023") + PointEntry("11111111", "00010012") + second +
                PointEntry("22222222", "1023") + end);
  EXPECT_TRUE(messages.shown.empty() && messages.asked.empty());
}

TEST(Linking, AsksAboutEveryPointWithoutAssignment) {
  const Bytes points = OfficeTable(PointEntry("33333333") + PointEntry("11111111") + PointEntry("44444444"));
  RecordedMessages messages;
  EXPECT_EQ(
      AttachAssignments(points, kAssignments, messages),
      OfficeTable(PointEntry("33333333") + PointEntry("11111111", "00010012") + PointEntry("44444444")));
  EXPECT_EQ(messages.asked,
            (Texts{"Warnung: Zur Messstellennummer 33333333 wurde keine Zuordnung gefunden!",
                   "Warnung: Zur Messstellennummer 44444444 wurde keine Zuordnung gefunden!"}));
  EXPECT_TRUE(messages.shown.empty());

  RecordedMessages cancelling;
  cancelling.answer = false;
  EXPECT_EQ(AttachAssignments(points, kAssignments, cancelling), "");
  EXPECT_EQ(cancelling.asked.size(), 1U);
  EXPECT_TRUE(cancelling.shown.empty());
}

TEST(Linking, WarnsOfADamagedAssignmentAndGoesOn) {
  const Bytes points = OfficeTable(PointEntry("11111111"));
  for (const Bytes& assignment : {Packed("11111111\0\0"), Packed("11111111000100\0\0")}) {
    RecordedMessages messages;
    EXPECT_EQ(AttachAssignments(points, assignment, messages), points);
    EXPECT_EQ(messages.shown, Texts{"Warnung: Fehler in der Zuordnung zur Messstellennummer 11111111"});
  }
}

TEST(Linking, RefusesDamagedPointTables) {
  const Bytes entry = PointEntry("11111111");
  struct Case {
    Bytes points;
    const char* shown;
  };
  const Case cases[] = {
      {Packed("1\0\0\0"), "Abbruch(4): Messstellentabelle leer!"},
      {"ohne Nullen", "Abbruch(5): Messstellentabelle leer!"},
      {Packed("Stand\0\0\0"), "Abbruch(6): Messstellentabelle fehlerhaft!"},
      {Packed("Stand\0\0Amt\0"
              "123"),
       "Abbruch(6): Messstellentabelle fehlerhaft!"},
      {Packed("Stand\0\0Amt\0"
              "123\0\0\0"),
       "Abbruch(6): Messstellentabelle fehlerhaft!"},
      {OfficeTable(entry.substr(1)), "Abbruch(7): Messstellentabelle fehlerhaft!"},
      {OfficeTable(entry + "1"), "Abbruch(7): Messstellentabelle fehlerhaft!"},
      {Packed("Stand\0\0Amt\0"
              "123\0") +
           entry,
       "Abbruch(7): Messstellentabelle fehlerhaft!"},
      {Packed("Stand\0\0Amt\0"
              "123\0") +
           entry + Packed("\0x\0"),
       "Abbruch(7): Messstellentabelle fehlerhaft!"},
  };
  for (const Case& c : cases) {
    RecordedMessages messages;
    EXPECT_EQ(AttachAssignments(c.points, kAssignments, messages), "");
    EXPECT_EQ(messages.shown, Texts{c.shown});
  }
  RecordedMessages messages;
  EXPECT_EQ(AttachAssignments(OfficeTable(entry), Packed("\0"), messages), "");
  EXPECT_EQ(messages.shown, Texts{"Abbruch(3): Zuordnungstabelle leer!"});
}

}  // namespace
}  // namespace ox
