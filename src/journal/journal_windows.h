// A window system whose windows and messages stand in the support log.
#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "journal/journal.h"
#include "journal/journal_ports.h"
#include "ui/window_system.h"

namespace ox {

class JournalWindows : public WindowSystem {
 public:
  /// All outlive it.
  JournalWindows(WindowSystem& real, JournalPorts& ports, Journal& journal)
      : real_(real), ports_(ports), journal_(journal) {}

  void Yield() override { real_.Yield(); }
  /// Rests only when the log is handed over: the device has its turn then.
  void Rest() override;
  void ShowModal(Window& window) override;
  using WindowSystem::ShowMessage;
  Answer ShowMessage(std::string_view text, Buttons buttons) override;
  void AskWhereToSave(std::string_view name, const std::vector<FileKind>& kinds, SaveAnswer answer) override {
    real_.AskWhereToSave(name, kinds, std::move(answer));
  }
  /// A port may stay open, and the next event be far away.
  void CommandEnded() noexcept override;
  void EndProgram() override;

 private:
  WindowSystem& real_;
  JournalPorts& ports_;
  Journal& journal_;
};

}  // namespace ox
