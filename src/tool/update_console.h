// An update of a device on a console.
#pragma once

#include <functional>

#include "command_line/new_option.h"
#include "programming/loader_link.h"
#include "programming/update_run.h"
#include "tool/device_session.h"

namespace ox::tool {

/// What is done to the device.
using UpdateProcedure =
    std::function<UpdateEnd(LoaderLink& link, const DeviceSearch& search, UpdateObserver& observer)>;

/// Carries the procedure out: its messages are said word for word, a terminal shows how far it is. With
/// `writes` a request that the program end, such as Ctrl+C, does not cut it off, since the device would be
/// left without its tables or its program. `search` is the connection test.
ExitStatus RunOnConsole(const Console& console, DeviceSession& session, bool writes,
                        const DeviceSearch& search, const UpdateProcedure& procedure);

/// Adds --yes and --dry-run.
struct UpdateOptions {
  bool yes = false;
  bool dryRun = false;
};
void DefineUpdateOptions(CLI::App& app, UpdateOptions& options);

}  // namespace ox::tool
