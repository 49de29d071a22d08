// Start: the main window, which consists of its menu bar.
#pragma once

#include <array>
#include <functional>

#include "session/session_settings.h"
#include "ui/controls.h"
#include "ui/host.h"
#include "ui/window.h"

namespace ox {

/// What the menu opens; each runs until its window is closed. One that is not connected does nothing.
struct StartCommands {
  std::function<void()> connectionTest;  // leaves its result in the session settings
  std::function<void()> dataExchange;
  std::function<void()> tableUpdate;
  std::function<void()> programUpdate;  // of the device that the connection test found
  std::function<void()> firmwarePacker;
  std::function<void()> powerMonitor;
  std::function<void()> modem;
};

/// Loads the settings when it is loaded and saves them when the user closes it.
class Start : public Window {
 public:
  Start(Host& host, SessionSettings& settings, StartCommands commands);

  MenuEntry MenuDatei{*this, "MenuDatei", "&Datei"};
  MenuEntry MenuDateiEnde{*this, "MenuDateiEnde", "&Ende"};
  MenuEntry MenuUpdate{*this, "MenuUpdate", "Update"};
  MenuEntry MenuUpTab{*this, "MenuUpTab", "Update Tabellen"};
  MenuEntry MenUpPro{*this, "MenUpPro", "Update Programm Orvanexe II + III"};
  MenuEntry MenuVerb{*this, "MenuVerb", "Verbindungstest"};
  MenuEntry MenuDaten{*this, "MenuDaten", "Datenaustausch"};
  MenuEntry MenueCOM{*this, "MenueCOM", "COM:"};
  MenuEntry MenuCOM1{*this, "MenuCOM1", "COM1: <"};
  MenuEntry MenuCOM2{*this, "MenuCOM2", "COM2:"};
  MenuEntry MenuCOM3{*this, "MenuCOM3", "COM3:"};
  MenuEntry MenuCOM4{*this, "MenuCOM4", "COM4:"};
  MenuEntry MenueTools{*this, "MenueTools", "Tools"};
  MenuEntry MenueToolsFirmwareOX3{*this, "MenueToolsFirmwareOX3", "Firmware OX3 verpacken"};
  MenuEntry MenuPowerMonitor{*this, "MenuPowerMonitor", "Stromversorgungsmonitor OX III"};
  MenuEntry MenuModem{*this, "MenuModem", "Modem"};
  MenuEntry MenuInfo{*this, "MenuInfo", "&?"};

 protected:
  void OnLoad() override;
  void OnUnload() override;

 private:
  using Command = std::function<void()> StartCommands::*;

  void ConnectMenu();
  std::array<MenuEntry*, 4> ComEntries() { return {&MenuCOM1, &MenuCOM2, &MenuCOM3, &MenuCOM4}; }
  /// `number` from 1 to 4.
  void ChooseCom(std::size_t number);
  /// Says beside each port's entry what the port is now.
  void DescribePorts();
  void TestConnection();
  void UpdateProgram();
  void ShowInformation();
  /// Runs the connection test, then the command; without a device the connection message instead.
  void RunGuarded(Command command);
  void RunCommand(Command command) const;
  /// Runs a fresh connection test; false, after the connection message, when no device was found.
  bool FindDevice();

  Host& host_;
  SessionSettings& settings_;
  StartCommands commands_;
  bool settingsLoaded_ = false;
};

}  // namespace ox
