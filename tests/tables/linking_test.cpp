// Points find their parameters; tables that do not fit together, or are damaged, end in the right message.
#include "tables/linking.h"

#include <gtest/gtest.h>

#include "tables/table_rig.h"

namespace ox {
namespace {

// "1023" is out of step in the second list, since the unit in front of it has but two characters.
const Bytes kParameters = "0001 Pegelhoeh cm _0012 Temperatu C  _1023 Abfluss   m3s___";
const Bytes kShortUnit = "0001 Pegelhoeh cm _0012 Temperatu C _1023 Abfluss   m3s___";
const Bytes kAssignments = "1111111100010012_222222221023_111111110012__";

TEST(Linking, EveryAssignedParameterMustBeDefined) {
  const auto undefined = [](const std::string& number) {
    return "Abbruch: Die Parameternummer " + number +
           " wird in der Zuordnungstabelle verwendet, ist in der Parameterliste aber nicht definiert!";
  };
  using Case = std::tuple<Bytes, Bytes, Texts>;
  for (const auto& [assignments, parameters, told] : {
           Case{kAssignments, kParameters, {}},
           {"_______", "_______", {"Abbruch(1): Zuordnungstabelle leer!"}},
           {kAssignments, "_______", {"Abbruch(2): Parameterliste leer!"}},
           {"1111111100010013_222222220014__", kParameters, {undefined("0013")}},
           {kAssignments, kShortUnit, {undefined("1023")}},
           {kAssignments, "________", {undefined("0001")}},
       }) {
    RecordedMessages messages;
    EXPECT_EQ(CheckAssignmentParameters(Packed(assignments), Packed(parameters), messages), told.empty());
    EXPECT_EQ(messages.texts, told) << assignments;
  }
}

TEST(Linking, PointsGetTheDigitsOfTheirFirstAssignment) {
  const Bytes points = "Stand__Amt_123_" + Point("22222222") + Point("11111111") + "__Leer_456___Dritt_789_" +
                       Point("22222222") + "___";
  const Bytes linked = "Stand__Amt_123_" + Point("22222222", "1023") + Point("11111111", "00010012") +
                       "__Leer_456___Dritt_789_" + Point("22222222", "1023") + "___";
  const Bytes point = Office(Point("11111111"));
  const Bytes strangers = Office(Point("33333333") + Point("11111111") + Point("44444444"));
  const Texts questions = {"? Warnung: Zur Messstellennummer 33333333 wurde keine Zuordnung gefunden!",
                           "? Warnung: Zur Messstellennummer 44444444 wurde keine Zuordnung gefunden!"};
  const Texts damaged = {"Warnung: Fehler in der Zuordnung zur Messstellennummer 11111111"};
  const Texts brokenEntry = {"Abbruch(7): Messstellentabelle fehlerhaft!"};
  struct Case {
    Bytes points, assignments, linked;
    Texts told;
    bool goOn = true;
  };
  for (const Case& c : {
           Case{points, kAssignments, linked, {}},
           {strangers, kAssignments,
            Office(Point("33333333") + Point("11111111", "00010012") + Point("44444444")), questions},
           {strangers, kAssignments, "", {questions[0]}, false},
           {point, "11111111000100__", point, damaged},
           {"_______", "_______", "", {"Abbruch(3): Zuordnungstabelle leer!"}},
           {"_______", "________", "", {"Abbruch(4): Messstellentabelle leer!"}},
           {"Keine_Al", kAssignments, "", {"Abbruch(5): Messstellentabelle leer!"}},
           {"Stand___", kAssignments, "", {"Abbruch(6): Messstellentabelle fehlerhaft!"}},
           {Office(Point("11111111") + "1"), kAssignments, "", brokenEntry},
           {"Stand__Amt_123_" + Point("11111111") + "_x_", kAssignments, "", brokenEntry},
       }) {
    RecordedMessages messages;
    messages.answer = c.goOn;
    EXPECT_EQ(AttachAssignments(Packed(c.points), Packed(c.assignments), messages), Packed(c.linked));
    EXPECT_EQ(messages.texts, c.told) << c.points;
  }
}

}  // namespace
}  // namespace ox
