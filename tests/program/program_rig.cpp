// What the user does in each window.
#include "program/program_rig.h"

#include <gtest/gtest.h>

#include <array>

#include "programming/demo_file.h"

namespace ox::test {
namespace {

/// Whether the user can reach the control while no command runs in its window.
bool UsableWhenIdle(Window& window, const Control& control) {
  if (const auto* exchange = dynamic_cast<Datenaustausch*>(&window)) return &control != &exchange->Abbruch;
  if (const auto* power = dynamic_cast<PowerMonitor*>(&window)) {
    return &control != &power->MonitorStop && &control != &power->PowerTimer;
  }
  if (const auto* tables = dynamic_cast<updatetab*>(&window); tables && &control == &tables->TabStart) {
    return tables->ChMes.Checked() && tables->ChPar.Checked() && tables->ChZuo.Checked();
  }
  const auto* update = dynamic_cast<ProgramUpdateWindow*>(&window);
  return update == nullptr || &control != &update->ProStart || update->ChPro.Checked();
}

}  // namespace

ProgramRig::Visit::Visit(ProgramRig& rig, Window& window) : rig_(rig), window_(window) {
  rig_.visited_ = &window;
}

ProgramRig::Visit::~Visit() {
  rig_.visited_ = nullptr;
  for (const Control* control : window_.Controls()) {
    EXPECT_EQ(control->Enabled(), UsableWhenIdle(window_, *control))
        << window_.Name() << '.' << control->Name();
  }
  if (window_.IsOpen()) rig_.Close(window_);
  EXPECT_FALSE(window_.IsOpen()) << window_.Name();
}

ProgramRig::ProgramRig() {
  for (const char* name : {"netz.mes", "netz.par", "netz.zuo", "ox2.pro", "ox3.pr3"}) {
    host.files.content["/arbeit/" + std::string(name)] = DemoFile(name);
  }
  host.files.content["OX3NEU.LDR"] = DemoFile("OX3NEU.LDR");
  host.files.content["OX.CFG"] = "\\M\\\r\nEDT\r\n";
  Connect({});
  host.windows.OpenMain(Main());
}

void ProgramRig::Connect(const sim::DeviceOptions& options) {
  device_ = std::make_unique<sim::Device>(options);
  host.ports.Connect(1, device_.get());
}

void ProgramRig::WillChoose(const std::string& file) {
  host.windows.OnShown("Dateiwahl", [this, file](Window& shown) {
    auto& chooser = dynamic_cast<Dateiwahl&>(shown);
    Type(chooser.Text2, file);
    Click(chooser.Command1);
    if (chooser.IsOpen()) Close(chooser);
  });
}

void ProgramRig::Choose(CheckBox& box, const std::string& file) {
  WillChoose(file);
  Click(box);
}

void ProgramRig::Choose(Button& button, const std::string& file) {
  WillChoose(file);
  Click(button);
}

void ProgramRig::UpdateTables() {
  In<updatetab>(Main().MenuUpTab, "updatetab", [this](updatetab& window) {
    Choose(window.ChMes, "netz");
    Choose(window.ChPar, "netz");
    Choose(window.ChZuo, "netz");
    Click(window.TabStart);
  });
}

void ProgramRig::UpdateProgram() {
  const auto update = [this](const char* file) {
    return [this, file](Window& shown) {
      const Visit visit(*this, shown);
      auto& window = dynamic_cast<ProgramUpdateWindow&>(shown);
      Choose(window.ChPro, file);
      Click(window.ProStart);
    };
  };
  host.windows.OnShown("updatepro", update("ox2"));
  host.windows.OnShown("UpdateproOx3", update("ox3"));
  Click(Main().MenUpPro);
}

void ProgramRig::Monitor(double seconds) {
  In<PowerMonitor>(Main().MenuPowerMonitor, "PowerMonitor", [=, this](PowerMonitor& window) {
    Click(window.MonitorStart);
    host.windows.Pass(seconds);
    if (window.IsOpen()) Click(window.MonitorStop);
    host.windows.Pass(1.5);
  });
}

void ProgramRig::TestModem() {
  In<Modem>(Main().MenuModem, "Modem", [this](Modem& window) {
    const std::array<std::pair<TextBox*, const char*>, 7> fields{{{&window.TAKZ, "123"},
                                                                  {&window.TDAT, "221126"},
                                                                  {&window.TUHR, "1200"},
                                                                  {&window.TMST, "12345678"},
                                                                  {&window.TPAR, "0012"},
                                                                  {&window.TBEW, "s"},
                                                                  {&window.TMEW, "12.3"}}};
    for (const auto& [box, text] : fields) Type(*box, text);
    for (Button* button : {&window.Command2, &window.Command3, &window.Command4}) Click(*button);
  });
}

void ProgramRig::PackFirmware() {
  In<FirmwareOX3Verpacken>(Main().MenueToolsFirmwareOX3, "FirmwareOX3Verpacken",
                           [this](FirmwareOX3Verpacken& window) {
                             Type(window.TextQuelle, "OX3NEU");
                             Type(window.TextZiel, "neu");
                             Click(window.CoStart);
                           });
}

}  // namespace ox::test
