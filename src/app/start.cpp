// The main window's commands and messages.
#include "app/start.h"

#include <string>
#include <utility>

#include "app/settings_file.h"
#include "session/connection_report.h"
#include "session/messages.h"

namespace ox {
namespace {

constexpr std::string_view kCaption = "Orvanexe Service";

std::string Information(const SessionSettings& settings) {
  return "Information zu diesem Programm:" + settings.CR + settings.LF + settings.LF +
         "Versionsnummer: 4.00" + settings.CRLF + "Versionsdatum:  30.10.2006";
}

}  // namespace

Start::Start(Host& host, SessionSettings& settings, StartCommands commands)
    : Window(host.windows, "Start", kCaption),
      host_(host),
      settings_(settings),
      commands_(std::move(commands)) {
  MenueTools.SetVisible(false);
  MenuModem.SetVisible(false);
  ConnectMenu();
}

void Start::ConnectMenu() {
  MenuDateiEnde.onClick = [this] { host_.windows.EndProgram(); };
  MenuUpTab.onClick = [this] { RunCommand(&StartCommands::tableUpdate); };
  MenUpPro.onClick = [this] { UpdateProgram(); };
  MenuVerb.onClick = [this] { TestConnection(); };
  MenuDaten.onClick = [this] { RunGuarded(&StartCommands::dataExchange); };
  MenueToolsFirmwareOX3.onClick = [this] { RunCommand(&StartCommands::firmwarePacker); };
  MenuPowerMonitor.onClick = [this] { RunGuarded(&StartCommands::powerMonitor); };
  MenuModem.onClick = [this] { RunCommand(&StartCommands::modem); };
  MenuInfo.onClick = [this] { ShowInformation(); };
  MenueCOM.onShow = [this] { DescribePorts(); };
  std::size_t number = 0;
  for (MenuEntry* entry : ComEntries()) {
    ++number;
    entry->onClick = [this, number] { ChooseCom(number); };
  }
}

void Start::OnLoad() {
  settingsLoaded_ = false;
  LoadSettings(host_.files, settings_, {MenueTools, MenuModem});
  settingsLoaded_ = true;
  const int number = settings_.PortNumber();
  if (number >= 1 && number <= 4) ChooseCom(static_cast<std::size_t>(number));
}

void Start::OnUnload() {
  // When reading the settings was broken off, the file must keep what it holds.
  if (settingsLoaded_) SaveSettings(host_.files, settings_, {MenueTools, MenuModem});
}

void Start::ChooseCom(std::size_t number) {
  settings_.ComPort = std::to_string(number);
  std::size_t entryNumber = 0;
  for (MenuEntry* entry : ComEntries()) {
    ++entryNumber;
    entry->SetText("COM" + std::to_string(entryNumber) + (entryNumber == number ? ": <" : ":"));
  }
}

void Start::DescribePorts() {
  int number = 0;
  for (MenuEntry* entry : ComEntries()) {
    ++number;
    entry->SetHint(Description(number, host_.portList.Look(number)));
  }
}

void Start::TestConnection() {
  if (FindDevice()) host_.windows.ShowMessage(ConnectionReport(settings_));
}

void Start::UpdateProgram() {
  if (host_.windows.ShowMessage(kUpdateWarning, Buttons::kOkCancel) == Answer::kCancel) return;
  RunGuarded(&StartCommands::programUpdate);
}

void Start::ShowInformation() {
  host_.windows.ShowMessage(Information(settings_));
}

void Start::RunGuarded(Command command) {
  if (FindDevice()) RunCommand(command);
}

void Start::RunCommand(Command command) const {
  // A notice from before says nothing of this command's port.
  host_.notices.Withdraw(Notices::From::kPort);
  const auto& run = commands_.*command;
  if (run) run();
}

bool Start::FindDevice() {
  RunCommand(&StartCommands::connectionTest);
  if (!settings_.Connected) host_.windows.ShowMessage(kConnectionMessage);
  return settings_.Connected;
}

}  // namespace ox
