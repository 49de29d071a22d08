// Loading the names: what the window looks like when it goes well, and when it does not.
#include "exchange/exchange_window.h"

namespace ox::test {
namespace {

using Strings = std::vector<std::string>;

class TableLoading : public ExchangeWindow {
 protected:
  /// A table of one point, in UTF-8.
  static Bytes Table(const std::string& name) {
    return "Kopf\n/S/\"1\"\n/A/\"Süd\"/Z/\"123\"\n/N/\"12345678\"/D/\" 0012\"/M/\"-0003\"/T/\"" + name +
           "\"\n/B/ Ende\n/E/";
  }
  void Load(const std::string& path) {
    WillChoose(path);
    window_.duemstwal.Click();
  }
  /// What one polled record looks like.
  std::string Polled() {
    device_.Expect("S", "A").Expect("T", "012345678: 0012 s   12.3\r").Expect("A");
    window_.Zeitabruf.Click();
    return window_.mewanz.Text();
  }
  const std::string number_ = "12345678: 0012 s   12.3|";
};

TEST_F(TableLoading, NamesReplaceNumbersUntilAnotherTableComes) {
  host_.files.content["/arbeit/eins.mes"] = Table("Brück");
  host_.files.content["/arbeit/leer.mes"] = "/S/\"1\"/E/";
  EXPECT_EQ(Polled(), number_);
  std::string during;
  host_.windows.In(0, [&] { during = Buttons() + window_.datanz.Text(); });
  Load("eins");
  EXPECT_EQ(during, "zsvyceaMessstellentabelle wird geladen ...");
  EXPECT_EQ(window_.datanz.Text(), "");
  EXPECT_EQ(window_.mewanz.Text(), number_);  // not shown anew
  EXPECT_EQ(Buttons(), kIdle);
  EXPECT_EQ(window_.Focused(), &window_.AKZ);
  EXPECT_EQ(Polled(), "   Brück: 0012 s   12.3|");
  Load("");
  EXPECT_EQ(Polled(), "   Brück: 0012 s   12.3|");
  Load("leer");
  EXPECT_EQ(Polled(), number_);
  EXPECT_TRUE(Messages().empty());
}

TEST_F(TableLoading, AFileThatCannotBeReadLeavesTheButtonsLocked) {
  host_.files.content["/arbeit/eins.mes"] = Table("Pegel");
  Load("eins");
  Load("/fort.mes");
  EXPECT_EQ(Messages(), Strings{"Fehler beim Lesen der Datei: /fort.mes!"});
  EXPECT_EQ(Buttons(), kLocked);
  EXPECT_EQ(window_.datanz.Text(), "Messstellentabelle wird geladen ...");
  window_.Verlassen.Click();
  EXPECT_TRUE(window_.IsOpen());
  Load("");  // a cancel changes nothing
  EXPECT_EQ(Buttons(), kLocked);
  Load("eins");
  EXPECT_EQ(Buttons(), kIdle);
  EXPECT_EQ(Polled(), "   Pegel: 0012 s   12.3|");
  Load("/fort.mes");
  window_.RequestClose();
  EXPECT_FALSE(window_.IsOpen());
}

TEST_F(TableLoading, ErrorsInTheTableLeaveNumbersInPlaceOfNames) {
  host_.files.content["/gut.mes"] = Table("Pegel");
  host_.files.content["/schlecht.mes"] = Table("Pegel1");
  Load("/gut.mes");
  Load("/schlecht.mes");
  EXPECT_EQ(Messages(), Strings{"Fehler in Zeile 4, Messstellenbezeichnung zu lang (max. 5 Zeichen)!\r\r"
                                "/N/\"12345678\"/D/\" 0012\"/M/\"-0003\"/T/\"Pegel1\""});
  EXPECT_EQ(Buttons(), kIdle);
  EXPECT_EQ(Polled(), number_);
}

}  // namespace
}  // namespace ox::test
