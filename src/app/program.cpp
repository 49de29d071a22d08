// Connects the main menu with the windows that it opens.
#include "app/program.h"

#include "exchange/datenaustausch.h"
#include "link/verbindungstest.h"
#include "modem/modem.h"
#include "power/power_monitor.h"
#include "programming/device_kind.h"
#include "updates/firmware_packer.h"
#include "updates/program_update_window.h"
#include "updates/updatetab.h"

namespace ox {

Program::Program(Host& host) : host_(host), chooser_(host, subs_), start_(host, subs_.settings, Commands()) {}

StartCommands Program::Commands() {
  return {
      .connectionTest = [this] { RunConnectionTest(host_, subs_.settings); },
      .dataExchange = [this] { Show<Datenaustausch>(subs_.settings, chooser_); },
      .tableUpdate = [this] { Show<updatetab>(subs_, chooser_); },
      .programUpdate =
          [this] {
            Show<ProgramUpdateWindow>(ProgramWindowKind(subs_.settings.DeviceType()), subs_, chooser_);
          },
      .firmwarePacker = [this] { Show<FirmwareOX3Verpacken>(subs_.settings); },
      .powerMonitor = [this] { Show<PowerMonitor>(subs_.settings); },
      .modem = [this] { Show<Modem>(subs_.settings); },
  };
}

}  // namespace ox
