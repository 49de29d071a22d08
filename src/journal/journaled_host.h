// A host whose ports and windows stand in the support log.
#pragma once

#include "journal/journal.h"
#include "journal/journal_ports.h"
#include "journal/journal_windows.h"
#include "ui/host.h"

namespace ox {

/// The plain host and the journal outlive it, and it outlives what works on `host`.
struct JournaledHost {
  JournaledHost(Host& plain, Journal& journal)
      : ports(plain.ports, plain.portList, journal),
        windows(plain.windows, ports, journal),
        host{{windows, plain.clock, ports, plain.files, plain.random, plain.awake, plain.portList},
             windows,
             plain.notices} {}

  JournalPorts ports;
  JournalWindows windows;
  Host host;
};

}  // namespace ox
