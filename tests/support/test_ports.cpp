// What the virtual ports do with the five operations.
#include "support/test_ports.h"

#include <algorithm>

#include "simulator/line/crossing.h"
#include "support/side.h"

namespace ox::test {

class TestPort : public SerialPort {
 public:
  explicit TestPort(TestPorts& ports) : ports_(ports) {}
  ~TestPort() override { TestPort::Close(); }

  void SetSettings(std::string_view settings) override {
    const Shelter shelter;
    settings_ = settings;
  }

  void SetCommPort(int number) override {
    if (PortOpen()) throw PortError("open");
    number_ = number;
  }

  bool PortOpen() const override { return std::ranges::count(ports_.open_, this) > 0; }

  void Open() override {
    const Shelter shelter;
    if (PortOpen()) return;
    const bool taken = std::ranges::count(ports_.open_, number_, &TestPort::number_) > 0;
    const auto line = sim::ParseLineSettings(settings_);
    if (!line || ports_.broken_ || taken || !ports_.lines_.contains(number_))
      throw PortError("wrongly set, broken, taken or missing");
    line_ = *line;
    sim::Endpoint* const device = Device();
    if (device != nullptr && !ports_.keeps_) device->TakeOutput(ports_.clock_.Elapsed());
    ports_.open_.push_back(this);
    ports_.openings.push_back(std::to_string(number_) + ":" + settings_);
    if (device != nullptr) device->PortOpened(ports_.clock_.Elapsed());
  }

  void Close() noexcept override {
    const bool open = std::erase(ports_.open_, this) > 0;
    if (open && Device() != nullptr) Device()->PortClosed(ports_.clock_.Elapsed());
  }

  void Output(BytesView bytes) override {
    const Shelter shelter;
    Check();
    const BytesView passing = bytes.substr(0, ports_.sendable_);
    ports_.sent += passing;
    if (sim::Endpoint* device = Device())
      device->Receive(sim::MaskedTo(passing, line_.dataBits), line_, ports_.clock_.Elapsed());
    if (ports_.sendable_ != Bytes::npos) ports_.sendable_ -= passing.size();
    if (passing.size() < bytes.size()) ports_.broken_ = true;
    Check();
  }

  Bytes Input() override {
    const Shelter shelter;
    Check();
    sim::Endpoint* device = Device();
    if (device == nullptr) return {};
    const sim::LineSettings from = device->Line();
    return sim::CrossToPc(device->TakeSome(ports_.clock_.Elapsed(), kMostPerLook), from, line_);
  }

  void SetModemLine(bool on) override {
    const Shelter shelter;
    Check();
    ports_.modemLine.push_back(on);
  }

  sim::Endpoint* Device() const {
    const auto line = ports_.lines_.find(number_);
    return line != ports_.lines_.end() ? line->second : nullptr;
  }

 private:
  static constexpr std::size_t kMostPerLook = 65536;

  void Check() {
    if (PortOpen() && !ports_.broken_) return;
    Close();
    throw PortError("not open or broken");
  }

  TestPorts& ports_;
  std::string settings_;
  sim::LineSettings line_;
  int number_ = 1;
};

std::unique_ptr<SerialPort> TestPorts::Create() {
  const Shelter shelter;
  return std::make_unique<TestPort>(*this);
}

double TestPorts::NextInput() const {
  double next = kNever;
  for (const TestPort* port : open_)
    if (const auto* device = port->Device()) next = std::min(next, device->NextOutput().value_or(kNever));
  return broken_ && !open_.empty() ? clock_.Elapsed() : next;
}

}  // namespace ox::test
