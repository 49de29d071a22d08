// Passing everything on to the real port, and noting what became of it.
#include "journal/journal_ports.h"

#include <exception>
#include <string>
#include <utility>

namespace ox {
namespace {

using As = JournalPiece::As;

class JournalPort : public SerialPort {
 public:
  JournalPort(std::unique_ptr<SerialPort> real, JournalPorts& ports, Journal& journal)
      : real_(std::move(real)), ports_(ports), journal_(journal) {}
  ~JournalPort() override { JournalPort::Close(); }

  void SetSettings(std::string_view settings) override {
    settings_ = settings;
    real_->SetSettings(settings);
  }
  void SetCommPort(int number) override {
    real_->SetCommPort(number);
    number_ = number;
    name_ = PortName(number);
  }
  bool PortOpen() const override { return real_->PortOpen(); }

  void Open() override {
    if (PortOpen()) return;
    ports_.NoteIdentity(number_);
    try {
      real_->Open();
    } catch (const PortError& error) {
      const PortFault& fault = error.Fault();
      ports_.LookAgain();
      journal_.Note({{name_},
                     {" nicht geöffnet "},
                     {settings_, As::kBytes},
                     {" "},
                     {fault.device, As::kText},
                     {" "},
                     {fault.reason, As::kText}});
      throw;
    }
    journal_.NoteOpening(name_, settings_);
  }

  void Close() noexcept override {
    const bool open = PortOpen();
    real_->Close();
    if (!open) return;
    journal_.Note({{name_}, {" zu"}});
    journal_.WriteOut();
  }

  void Output(BytesView bytes) override {
    OnLine([&] { real_->Output(bytes); }, [&] { journal_.NoteSent(name_, bytes); });
  }

  Bytes Input() override {
    Bytes arrived;
    OnLine([&] { arrived = real_->Input(); }, [] {});
    if (!arrived.empty()) journal_.NoteReceived(name_, arrived);
    return arrived;
  }

  void SetModemLine(bool on) override {
    OnLine([&] { real_->SetModemLine(on); },
           [&] {
             journal_.Note({{name_}, {on ? " DTR an" : " DTR aus"}});
           });
  }

 private:
  /// Notes an operation when it is through, whatever became of it: the device waits for nothing.
  template <typename Operation, typename Noting>
  void OnLine(Operation operation, Noting note) {
    const bool open = PortOpen();
    try {
      operation();
    } catch (const PortError& error) {
      note();
      NoteFailure(open ? " abgerissen " : " Fehler ", error.Fault());
      throw;
    }
    note();
  }

  void NoteFailure(std::string_view what, const PortFault& fault) noexcept {
    ports_.LookAgain();
    journal_.Note({{name_}, {what}, {fault.device, As::kText}, {" "}, {fault.reason, As::kText}});
    journal_.WriteOut();
  }

  std::unique_ptr<SerialPort> real_;
  JournalPorts& ports_;
  Journal& journal_;
  std::string settings_;
  int number_ = 1;
  std::string name_ = PortName(number_);
};

}  // namespace

std::unique_ptr<SerialPort> JournalPorts::Create() {
  return std::make_unique<JournalPort>(real_.Create(), *this, journal_);
}

void JournalPorts::NoteIdentity(int number) noexcept {
  if (!journal_.On() || number == noted_) return;
  noted_ = number;
  try {
    const PortEntry entry = list_.Look(number);
    journal_.Note(
        {{PortName(number)}, {" ist "}, {entry.device, As::kText}, {" "}, {entry.product, As::kText}});
  } catch (const std::exception&) {
    // Without it the opening is noted all the same.
  }
}

}  // namespace ox
