// A port behind which every failure is noted and passed on.
#include "link/port_notices.h"

#include <type_traits>
#include <utility>

namespace ox {
namespace {

class PortWithNotices : public SerialPort {
 public:
  PortWithNotices(std::unique_ptr<SerialPort> port, Notices& notices)
      : port_(std::move(port)), notices_(notices) {}

  void SetSettings(std::string_view settings) override {
    Noted([&] { port_->SetSettings(settings); });
  }
  void SetCommPort(int number) override {
    number_ = number;
    Noted([&] { port_->SetCommPort(number); });
  }
  bool PortOpen() const override { return port_->PortOpen(); }
  void Open() override {
    Noted([&] { port_->Open(); });
    notices_.Withdraw(Notices::From::kPort);
  }
  void Close() noexcept override { port_->Close(); }
  void Output(BytesView bytes) override {
    Noted([&] { port_->Output(bytes); });
  }
  Bytes Input() override {
    return Noted([&] { return port_->Input(); });
  }
  void SetModemLine(bool on) override {
    Noted([&] { port_->SetModemLine(on); });
  }

 private:
  template <class Operation>
  std::invoke_result_t<Operation> Noted(Operation operation) {
    try {
      return operation();
    } catch (const PortError& error) {
      notices_.Say(Notices::From::kPort, Sentences(number_, error.Fault()));
      throw;
    }
  }

  std::unique_ptr<SerialPort> port_;
  Notices& notices_;
  int number_ = 0;
};

}  // namespace

std::unique_ptr<SerialPort> PortsWithNotices::Create() {
  return std::make_unique<PortWithNotices>(ports_.Create(), notices_);
}

}  // namespace ox
