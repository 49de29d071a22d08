// Passing everything on to the real port, and telling the tap of it.
#include "bench/tapped_ports.h"

#include <utility>

namespace ox::bench {
namespace {

class TappedPort : public SerialPort {
 public:
  TappedPort(std::unique_ptr<SerialPort> real, PortTap& tap) : real_(std::move(real)), tap_(tap) {}

  void SetSettings(std::string_view settings) override { real_->SetSettings(settings); }
  void SetCommPort(int number) override { real_->SetCommPort(number); }
  bool PortOpen() const override { return real_->PortOpen(); }
  void Open() override { real_->Open(); }
  void Close() noexcept override { real_->Close(); }
  void Output(BytesView bytes) override {
    tap_.BeforeOutput(bytes);
    real_->Output(bytes);
    tap_.AfterOutput(bytes);
  }
  Bytes Input() override {
    Bytes arrived = real_->Input();
    if (!arrived.empty()) tap_.AfterInput(arrived);
    return arrived;
  }
  void SetModemLine(bool on) override { real_->SetModemLine(on); }

 private:
  std::unique_ptr<SerialPort> real_;
  PortTap& tap_;
};

}  // namespace

std::unique_ptr<SerialPort> TappedPorts::Create() {
  return std::make_unique<TappedPort>(real_.Create(), tap_);
}

}  // namespace ox::bench
