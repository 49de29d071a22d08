// The test host behind a border: what it does for the program counts as the test's.
#pragma once

#include <memory>
#include <utility>

#include "program/heap_meter.h"
#include "support/test_host.h"

namespace ox::test {

class ShelteredPort : public SerialPort {
 public:
  explicit ShelteredPort(std::unique_ptr<SerialPort> port) : port_(std::move(port)) {}

  void SetSettings(std::string_view settings) override {
    const Shelter shelter;
    port_->SetSettings(settings);
  }
  void SetCommPort(int number) override {
    const Shelter shelter;
    port_->SetCommPort(number);
  }
  bool PortOpen() const override { return port_->PortOpen(); }
  void Open() override {
    const Shelter shelter;
    port_->Open();
  }
  void Close() noexcept override {
    const Shelter shelter;
    port_->Close();
  }
  void Output(BytesView bytes) override {
    const Shelter shelter;
    port_->Output(bytes);
  }
  Bytes Input() override {
    const Shelter shelter;
    return port_->Input();
  }
  void SetModemLine(bool on) override {
    const Shelter shelter;
    port_->SetModemLine(on);
  }

 private:
  std::unique_ptr<SerialPort> port_;
};

class ShelteredPorts : public SerialPorts {
 public:
  explicit ShelteredPorts(SerialPorts& ports) : ports_(ports) {}
  std::unique_ptr<SerialPort> Create() override {
    const Shelter shelter;
    return std::make_unique<ShelteredPort>(ports_.Create());
  }

 private:
  SerialPorts& ports_;
};

class ShelteredWindows : public WindowSystem {
 public:
  explicit ShelteredWindows(WindowSystem& windows) : windows_(windows) {}
  void Yield() override {
    const Shelter shelter;
    windows_.Yield();
  }
  void Rest() override {
    const Shelter shelter;
    windows_.Rest();
  }
  void ShowModal(Window& window) override {
    const Shelter shelter;
    windows_.ShowModal(window);
  }
  Answer ShowMessage(std::string_view text, Buttons buttons) override {
    const Shelter shelter;
    return windows_.ShowMessage(text, buttons);
  }
  void EndProgram() override { windows_.EndProgram(); }

 private:
  WindowSystem& windows_;
};

class ShelteredAppendFile : public AppendFile {
 public:
  explicit ShelteredAppendFile(std::unique_ptr<AppendFile> file) : file_(std::move(file)) {}
  bool Append(BytesView bytes) override {
    const Shelter shelter;
    return file_->Append(bytes);
  }

 private:
  std::unique_ptr<AppendFile> file_;
};

class ShelteredFiles : public Files {
 public:
  explicit ShelteredFiles(Files& files) : files_(files) {}
  using Files::Read;
  std::optional<Bytes> Read(const std::string& path, std::size_t limit) override {
    const Shelter shelter;
    return files_.Read(path, limit);
  }
  bool Replace(const std::string& path, BytesView content) override {
    const Shelter shelter;
    return files_.Replace(path, content);
  }
  std::unique_ptr<AppendFile> OpenForAppending(const std::string& path) override {
    const Shelter shelter;
    auto file = files_.OpenForAppending(path);
    return file ? std::make_unique<ShelteredAppendFile>(std::move(file)) : nullptr;
  }
  PathStyle Style() const override { return files_.Style(); }
  std::string WorkingFolder() override {
    const Shelter shelter;
    return files_.WorkingFolder();
  }
  std::vector<std::string> Drives() override {
    const Shelter shelter;
    return files_.Drives();
  }
  std::optional<std::vector<std::string>> FoldersIn(const std::string& folder) override {
    const Shelter shelter;
    return files_.FoldersIn(folder);
  }
  std::optional<std::vector<std::string>> FilesIn(const std::string& folder) override {
    const Shelter shelter;
    return files_.FilesIn(folder);
  }

 private:
  Files& files_;
};

/// A whole test host whose own allocations never fail and are not counted.
struct ShelteredHost {
  explicit ShelteredHost(TestHost& test)
      : windows(test.windows),
        ports(test.ports),
        files(test.files),
        host{windows, test.clock, ports, files, test.random} {
    test.windows.CallProgramThrough([](const std::function<void()>& call) {
      const Exposure exposure;
      call();
    });
  }

  ShelteredWindows windows;
  ShelteredPorts ports;
  ShelteredFiles files;
  Host host;
};

}  // namespace ox::test
