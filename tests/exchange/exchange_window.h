// The data-exchange window on the virtual host, with what its tests look at.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "chooser/dateiwahl.h"
#include "chooser/file_chooser.h"
#include "exchange/datenaustausch.h"
#include "support/scripted_device.h"
#include "support/test_host.h"

namespace ox::test {

class ExchangeWindow : public testing::Test {
 protected:
  ExchangeWindow() {
    host_.ports.Connect(1, &device_);
    host_.windows.OpenMain(window_);
  }

  /// One letter for each button, in the order of their locking, capital when it can be used: "ZSVYCE" and "a"
  /// for the abort.
  std::string Buttons() const {
    std::string letters;
    const auto add = [&](const Button& button, const char* usable, const char* locked) {
      letters += button.Enabled() ? usable : locked;
    };
    add(window_.Zeitabruf, "Z", "z");
    add(window_.Sammelabruf, "S", "s");
    add(window_.Verlassen, "V", "v");
    add(window_.Abruf_Y, "Y", "y");
    add(window_.Zyklischer_Abruf, "C", "c");
    add(window_.Einzelabruf, "E", "e");
    add(window_.Abbruch, "A", "a");
    return letters;
  }
  static constexpr const char* kIdle = "ZSVYCEa";
  static constexpr const char* kLocked = "zsvycea";
  static constexpr const char* kCyclic = "zsvyceA";

  void Type(const std::string& office, const std::string& point, const std::string& parameter) {
    window_.AKZ.Edit(office);
    window_.MST.Edit(point);
    window_.Par.Edit(parameter);
  }

  /// The user's choice the next times that the chooser is shown; nothing for cancel.
  void WillChoose(const std::string& path) {
    host_.windows.OnShown("Dateiwahl", [path](Window& shown) {
      auto& chooser = dynamic_cast<Dateiwahl&>(shown);
      EXPECT_EQ(chooser.Text1.Text(), "*.mes");
      chooser.Text2.Edit(path);
      chooser.Command1.Click();
    });
  }

  std::vector<std::string> Messages() { return host_.windows.TakeMessages(); }

  TestHost host_;
  Subs subs_;
  FileChooser chooser_{host_.host, subs_};
  Datenaustausch window_{host_.host, subs_, chooser_};
  ScriptedDevice device_;
};

inline const std::string kWrongAnswer = "Orvanexe antwortet nicht oder falsch: Prozedur abgebrochen!";

}  // namespace ox::test
