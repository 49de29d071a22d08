// What the updates have in common: how a run begins and ends, and the steps that they share.
#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "programming/block_transfer.h"
#include "programming/device_search.h"
#include "programming/loader_link.h"
#include "programming/update_observer.h"

namespace ox {

/// How a run ended; the observer has been told why.
enum class UpdateEnd { kSucceeded, kFailed };

/// The steps of one run. A step that fails tells the observer and returns false. The PC is kept awake until
/// the end is told, but not while its message waits for the user.
class UpdateRun {
 public:
  /// All of them outlive the run.
  UpdateRun(LoaderLink& link, const DeviceSearch& search, UpdateObserver& observer)
      : link_(link), search_(search), observer_(observer), awake_(std::in_place, link.Awake()) {}

  const SessionSettings& Session() const { return link_.Session(); }
  void Mark() { observer_.Mark(); }

  /// Tells why the run ends. Always false.
  bool Abort(std::string_view message);

  /// Opens the line, begins the row of marks and asks whether the device already runs its loader. Throws
  /// PortError.
  bool LoaderRuns();
  /// Closes the line and looks for a device; false after `message` when there is none.
  bool FindDevice(std::string_view message);
  /// Sends the device into its loader. Throws PortError when the line cannot be opened.
  bool EnterLoader(const Refusal& refusal);
  /// Whether the loader listens: "A" and "N" both prove it.
  bool Probe(const LoaderRequest& request, const Refusal& refusal);
  /// Whether a request is accepted. A line that breaks throws PortError.
  bool Accepts(const LoaderRequest& request) { return link_.Accepts(request); }
  /// A request that must be accepted. A line that breaks is no answer; where the refusal has no number it
  /// throws PortError instead.
  bool Demand(std::string_view step, const LoaderRequest& request, const Refusal& refusal);
  /// Sends an image, a multiple of 256 bytes, block by block, no block twice; ends at the first block that is
  /// not accepted.
  bool WriteBlocks(std::string_view step, BytesView image, const BlockTransfer& transfer);
  /// Sends the device back to its work once everything is verified, closes the line and tells `message`.
  /// Always true.
  bool Finish(std::string_view message);

  /// Tells `message` as the end of a rehearsal, which has written nothing. Always true.
  bool Conclude(std::string_view message);

  void Begin(std::string_view step, int longestSeconds) { observer_.Step(step, longestSeconds, 0); }

 private:
  /// The one place where a run tells its end; the user may take long to answer it.
  void End(std::string_view message);
  /// The loader's reply; empty, as after silence, when the line breaks.
  Bytes Reply(const LoaderRequest& request, std::size_t address = 0, BytesView data = {});

  LoaderLink& link_;
  const DeviceSearch& search_;
  UpdateObserver& observer_;
  std::optional<KeepAwake::Hold> awake_;
};

/// The one place where a run begins and ends: carries out the steps, which return whether all went well. A
/// line that cannot be opened, or a PortError that the steps let through, ends them with the port's message.
/// At every end, also by an exception, the line is closed.
UpdateEnd RunUpdate(LoaderLink& link, const DeviceSearch& search, UpdateObserver& observer,
                    const std::function<bool(UpdateRun& run)>& steps);

}  // namespace ox
