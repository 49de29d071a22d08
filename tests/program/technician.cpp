// What the user does in each window.
#include "program/technician.h"

#include <gtest/gtest.h>

#include "chooser/dateiwahl.h"
#include "exchange/datenaustausch.h"
#include "modem/modem.h"
#include "power/power_monitor.h"
#include "support/scratch_folder.h"
#include "updates/firmware_packer.h"
#include "updates/program_update_window.h"
#include "updates/updatetab.h"

namespace ox::test {
namespace {

std::vector<std::string> UsableControls(Window& window) {
  std::vector<std::string> names;
  for (const Control* control : window.Controls()) {
    if (control->Enabled()) names.push_back(control->Name());
  }
  return names;
}

}  // namespace

Technician::Technician() {
  for (const char* name : {"netz.mes", "netz.par", "netz.zuo", "ox2.pro", "ox3.pr3", "OX3NEU.LDR"})
    host.files.content["/arbeit/" + std::string(name)] = ReadFile(std::string(OX_DEMO_FOLDER "/") + name);
  host.files.content["OX.CFG"] = "\\M\\\r\nEDT\r\n";
  Connect({});
  host.windows.OpenMain(Main());
}

void Technician::Connect(const sim::DeviceOptions& options) {
  device_ = std::make_unique<sim::Device>(options);
  PlugIn(plugged_);
}

void Technician::PlugIn(bool plugged) {
  plugged_ = plugged;
  host.ports.Remove(1);
  if (plugged) host.ports.Connect(1, device_.get());
}

template <class Shown>
void Technician::WillUse(const std::string& name, const std::function<void(Shown&)>& action) {
  host.windows.OnShown(name, [this, action](Window& window) {
    const std::vector<std::string> usable = UsableControls(window);
    visited_ = &window;
    action(dynamic_cast<Shown&>(window));
    visited_ = nullptr;
    std::vector<std::string> usableAgain = UsableControls(window);
    // What the session made ready to start stays so.
    std::erase_if(usableAgain,
                  [](const auto& control) { return control == "TabStart" || control == "ProStart"; });
    EXPECT_EQ(usableAgain, usable);
    if (window.IsOpen()) Close(window);
    EXPECT_FALSE(window.IsOpen()) << window.Name();
  });
}

template <class Clicked>
void Technician::Choose(Clicked& control, const std::string& file) {
  host.windows.OnShown("Dateiwahl", [this, file](Window& window) {
    auto& chooser = dynamic_cast<Dateiwahl&>(window);
    Type(chooser.Text2, file);
    Click(chooser.Command1);
    if (chooser.IsOpen()) Close(chooser);
  });
  Click(control);
}

void Technician::Poll() {
  WillUse<Datenaustausch>("Datenaustausch", [this](Datenaustausch& window) {
    Choose(window.duemstwal, "netz");
    Type(window.MST, "10100100");
    for (Button* poll : {&window.Einzelabruf, &window.Sammelabruf, &window.Zeitabruf}) Click(*poll);
    shown = window.datanz.Text();
  });
  Click(Main().MenuDaten);
}

void Technician::PollCyclically() {
  WillUse<Datenaustausch>("Datenaustausch", [this](Datenaustausch& window) {
    host.windows.In(40, [this, &window] {
      if (visited_ == &window) Close(window);
    });
    Click(window.Zyklischer_Abruf);
  });
  Click(Main().MenuDaten);
}

void Technician::UpdateTables() {
  WillUse<updatetab>("updatetab", [this](updatetab& window) {
    for (CheckBox* table : {&window.ChMes, &window.ChPar, &window.ChZuo}) Choose(*table, "netz");
    Click(window.TabStart);
  });
  Click(Main().MenuUpTab);
}

void Technician::UpdateProgram() {
  const auto write = [this](const char* file) {
    return [this, file](ProgramUpdateWindow& window) {
      Choose(window.ChPro, file);
      Click(window.ProStart);
    };
  };
  WillUse<ProgramUpdateWindow>("updatepro", write("ox2"));
  WillUse<ProgramUpdateWindow>("UpdateproOx3", write("ox3"));
  Click(Main().MenUpPro);
}

void Technician::Monitor() {
  WillUse<PowerMonitor>("PowerMonitor", [this](PowerMonitor& window) {
    Click(window.MonitorStart);
    host.windows.Pass(2);
    shown = window.ChargeControllerState.Text();
    if (window.IsOpen()) Click(window.MonitorStop);
    host.windows.Pass(1.5);
  });
  Click(Main().MenuPowerMonitor);
}

void Technician::TestModem() {
  WillUse<Modem>("Modem", [this](Modem& window) {
    const std::pair<TextBox*, const char*> fields[] = {
        {&window.TAKZ, "123"},  {&window.TDAT, "221126"}, {&window.TUHR, "1200"}, {&window.TMST, "12345678"},
        {&window.TPAR, "0012"}, {&window.TBEW, "s"},      {&window.TMEW, "12.3"}};
    for (const auto& [box, text] : fields) Type(*box, text);
    for (Button* button : {&window.Command2, &window.Command3}) Click(*button);
    shown = window.Datanz.Text();
    Click(window.Command4);
  });
  sim::SimulatedModem modem({.line = *sim::ParseLineSettings(program_.Values().settings.DialogueSettings())});
  if (plugged_) host.ports.Connect(1, &modem);
  Click(Main().MenuModem);
  PlugIn(plugged_);
}

void Technician::PackFirmware() {
  WillUse<FirmwareOX3Verpacken>("FirmwareOX3Verpacken", [this](FirmwareOX3Verpacken& window) {
    Type(window.TextQuelle, "/arbeit/OX3NEU");
    Type(window.TextZiel, "neu");
    Click(window.CoStart);
  });
  Click(Main().MenueToolsFirmwareOX3);
}

void Technician::Restart() {
  Close(Main());
  EXPECT_FALSE(Main().IsOpen()) << "the user could never leave the program";
  host.windows.OpenMain(Main());
}

}  // namespace ox::test
