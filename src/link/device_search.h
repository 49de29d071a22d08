// The search for a device: which line parameters it answers at, and what it is.
#pragma once

#include <string_view>

#include "platform/bytes.h"
#include "platform/machine.h"
#include "session/session_settings.h"

namespace ox {

/// Receives how a search goes on: a window, a console, a test. The search goes on when a call returns.
class SearchObserver {
 public:
  virtual ~SearchObserver() = default;

  /// The next probe is made with this pair: decimal digits, and "E" for even or "O" for odd.
  virtual void TryPair(BytesView baud, BytesView parity) = 0;

  /// What the user must know (UTF-8): the port cannot be opened. Once when the stored pair is tried, which
  /// ends the search; otherwise once for every further pair.
  virtual void Tell(std::string_view message) = 0;
};

/// Tries the pair of the settings first and then every other, at the settings' port, which must be closed and
/// is closed again afterwards. Returns whether a device was found. The result stands in the settings:
/// `Connected`, `BaudRate`, `Parity`, `DeviceIdent`; without a device the pair keeps its value, or the usual
/// one where it had a wrong one. Nine probes of half a second each when nobody answers, up to nine seconds
/// when somebody answers wrongly.
///
/// It needs no window: a command line passes an observer that prints, and an update whose DeviceSearch
/// (programming/device_search.h) is `[&] { return SearchDevice(machine, settings, observer); }`.
/// RunConnectionTest (link/verbindungstest.h) does the same behind a modal window.
bool SearchDevice(Machine& machine, SessionSettings& settings, SearchObserver& observer);

/// The same with the pair of the settings alone.
bool ProbeDevice(Machine& machine, SessionSettings& settings, SearchObserver& observer);

}  // namespace ox
