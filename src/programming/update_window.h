// What the three update windows have in common: how a run begins and ends, and the steps they share.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "programming/loader_link.h"
#include "session/session_settings.h"
#include "ui/controls.h"
#include "ui/host.h"
#include "ui/window.h"

namespace ox {

/// "Abbruch der Programmierung(3): OX antwortet nicht oder falsch!"
std::string WrongAnswer(int number);

/// How the blocks of an image are sent. Before block r, counted from 0, the status line grows by a mark when
/// r modulo `markPeriod` is `markPhase`.
struct BlockTransfer {
  LoaderRequest write;
  std::size_t markPeriod;
  std::size_t markPhase;
};

/// Base of the update windows. A run is a sequence of steps; a step that fails tells the user and returns
/// false, and the run ends. Closing never cuts a run off: nothing in it looks for the wish. The window goes
/// when the run has succeeded; after any other end it stays, since the device waits in its loader for
/// another attempt.
class UpdateWindow : public Window {
 public:
  /// The status line: a loading message, or the marks of a run.
  Label Go{*this, "Go"};

 protected:
  UpdateWindow(Host& host, SessionSettings& settings, std::string_view name, std::string_view caption);

  void OnFailure() override;

  /// Carries out the steps, which return whether they succeeded, with all controls locked. A port that cannot
  /// be opened, or breaks where no step makes a missing reply of it, ends them with its message. At the end,
  /// however it came about, the port is closed and the controls can be used again. The focus returns to the
  /// button that started the run.
  void RunUpdate(Button& start, const std::function<bool()>& steps);

  void Mark() { Go.Append(">"); }

  /// Tells the user why the run ends. Always false.
  bool Abort(std::string_view message);

  /// Opens the line, shows the first mark and asks whether the device already runs its loader.
  bool LoaderRuns();
  /// Closes the line and runs the connection test; false after `message` when it found no device.
  bool FindDevice(std::string_view message);
  /// Sends the device into its loader; false after `message`.
  bool EnterLoader(std::string_view message);
  /// The loader's reply; empty, as after silence, when the port breaks.
  Bytes Reply(const LoaderRequest& request, std::size_t address = 0, BytesView data = {});
  /// False after `message` when neither "A" nor "N" came: either proves that the loader listens.
  bool Probe(const LoaderRequest& request, std::string_view message);
  /// False after `message` when anything but "A" came.
  bool Demand(const LoaderRequest& request, std::string_view message);
  /// Sends an image, a multiple of 256 bytes, block by block, no block twice; false after `message` at the
  /// first block that is not accepted.
  bool WriteBlocks(BytesView image, const BlockTransfer& transfer, std::string_view message);
  /// Sends the device back to its work once everything is verified, closes the line and tells the user.
  /// Always true.
  bool Finish(std::string_view message);

  Host& host_;
  SessionSettings& settings_;
  LoaderLink link_;

 private:
  void EnableCommands(bool enabled);
  /// The end of a run: all can be used again.
  void Reset();

  bool running_ = false;
};

}  // namespace ox
