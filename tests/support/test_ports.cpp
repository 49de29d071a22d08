// What the virtual ports do with the five operations.
#include "support/test_ports.h"

#include <algorithm>

#include "support/side.h"

namespace ox::test {

/// One port control of a window.
class TestPort : public SerialPort {
 public:
  explicit TestPort(TestPorts& ports) : ports_(ports) {}
  TestPort(const TestPort&) = delete;
  TestPort& operator=(const TestPort&) = delete;
  ~TestPort() override { TestPort::Close(); }

  void SetSettings(std::string_view settings) override {
    const Shelter shelter;
    settings_ = settings;
    const auto line = sim::ParseLineSettings(settings_);
    if (!line) throw PortError("settings");
    line_ = *line;
  }

  void SetCommPort(int number) override {
    if (open_) throw PortError("open");
    number_ = number;
  }

  bool PortOpen() const override { return open_; }

  void Open() override {
    const Shelter shelter;
    const auto line = ports_.lines_.find(number_);
    if (ports_.broken_ || open_ || line == ports_.lines_.end()) throw PortError("missing");
    if (std::ranges::any_of(ports_.open_,
                            [this](const TestPort* other) { return other->number_ == number_; })) {
      throw PortError("taken");
    }
    DropOutput(line->second);
    open_ = true;
    ports_.open_.push_back(this);
    ports_.openings_.push_back(std::to_string(number_) + ":" + settings_);
  }

  void Close() noexcept override {
    const Shelter shelter;
    open_ = false;
    std::erase(ports_.open_, this);
  }

  void Output(BytesView bytes) override {
    const Shelter shelter;
    Check();
    const std::size_t passing = std::min(bytes.size(), ports_.sendable_.value_or(bytes.size()));
    ports_.sent_ += bytes.substr(0, passing);
    if (sim::Endpoint* device = Device()) {
      device->Receive(sim::MaskedTo(bytes.substr(0, passing), line_.dataBits), line_,
                      ports_.clock_.Elapsed());
    }
    if (!ports_.sendable_) return;
    *ports_.sendable_ -= passing;
    if (passing == bytes.size()) return;
    ports_.broken_ = true;
    throw PortError("broken");
  }

  Bytes Input() override {
    const Shelter shelter;
    Check();
    sim::Endpoint* device = Device();
    if (device == nullptr) return {};
    const Bytes arrived = device->TakeOutput(ports_.clock_.Elapsed());
    return sim::Fits(device->Line(), line_) ? sim::MaskedTo(arrived, line_.dataBits) : Bytes();
  }

  void SetModemLine(bool on) override {
    const Shelter shelter;
    Check();
    ports_.modemLine_.push_back(on);
  }

  sim::Endpoint* Device() const {
    const auto line = ports_.lines_.find(number_);
    return line == ports_.lines_.end() ? nullptr : line->second;
  }

 private:
  void Check() const {
    if (!open_ || ports_.broken_) throw PortError("not open or broken");
  }

  /// What came while nobody listened is gone.
  void DropOutput(sim::Endpoint* device) const {
    if (device != nullptr) device->TakeOutput(ports_.clock_.Elapsed());
  }

  TestPorts& ports_;
  std::string settings_;
  sim::LineSettings line_;
  int number_ = 0;
  bool open_ = false;
};

std::unique_ptr<SerialPort> TestPorts::Create() {
  const Shelter shelter;
  return std::make_unique<TestPort>(*this);
}

void TestPorts::Mend() {
  broken_ = false;
  sendable_.reset();
}

std::optional<double> TestPorts::NextInput() const {
  std::optional<double> next;
  for (const TestPort* port : open_) {
    const sim::Endpoint* device = port->Device();
    const auto due = device != nullptr ? device->NextOutput() : std::nullopt;
    if (due && (!next || *due < *next)) next = due;
  }
  return next;
}

bool TestPorts::InputWaiting() const {
  const auto next = NextInput();
  return (broken_ && !open_.empty()) || (next && *next <= clock_.Elapsed());
}

}  // namespace ox::test
