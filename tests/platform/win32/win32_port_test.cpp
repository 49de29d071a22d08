// Serial ports on a null modem: what goes over them, how soon, a line that stands still or is pulled out; and
// how ports are named.
#include "platform/win32/win32_port_list.h"
// After the contracts, which have functions with the names of its macros.
#include <gtest/gtest.h>

#include <future>

#include "platform/win32/adapter_name.h"
#include "platform/win32/null_modem.h"
#include "platform/win32/opening_fault.h"
#include "platform/win32/windows_api.h"
// After it: the first makes the second define the class of ports.
#include <initguid.h>
// clang-format off: the third needs the types of the second.
#include <devguid.h>
#include <setupapi.h>
// clang-format on

namespace ox::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

class Win32Port : public testing::Test {
 protected:
  void Open(std::string_view settings) {
    port_->Close();
    port_->SetSettings(settings);
    port_->SetCommPort(NullModem::kNear);
    testing::internal::CaptureStderr();  // which adapter it is
    port_->Open();
    testing::internal::GetCapturedStderr();
  }
  Bytes There(std::size_t count) { return NullModem::Arriving(modem_.Far(), count); }
  /// Whether Rest would return within the time.
  bool Ready(milliseconds time) {
    const auto event = reinterpret_cast<HANDLE>(openPorts_.Handles().at(0));
    return WaitForSingleObject(event, static_cast<DWORD>(time.count())) == WAIT_OBJECT_0;
  }
  static milliseconds Since(steady_clock::time_point start) {
    return std::chrono::duration_cast<milliseconds>(steady_clock::now() - start);
  }

  NullModem modem_;
  OpenPorts openPorts_;
  std::unique_ptr<SerialPort> port_ = Win32SerialPorts(openPorts_).Create();
};

TEST_F(Win32Port, BringsTheLineToItsSettings) {
  const std::pair<const char*, const char*> rows[] = {
      {"2400,O,7,1", "2400 1 1"}, {"19200,n,8,1", "19200 0 0"}, {"4800,E,7,1", "4800 0 1"}};
  for (const auto& [settings, seen] : rows) {
    Open(settings);
    EXPECT_EQ(modem_.NearSettings(), seen);
  }
}

TEST_F(Win32Port, IsReadyAsSoonAsSomethingHasArrivedAndNoLonger) {
  constexpr int kTurns = 100;
  constexpr milliseconds kAtOnce{50};  // Rest alone would sleep as long; on average
  Open("9600,O,7,1");
  EXPECT_FALSE(Ready(milliseconds(100)));
  milliseconds waited{0};
  for (int turn = 0; turn < kTurns; ++turn) {
    const auto start = steady_clock::now();
    modem_.Far().Output(
        "\xC1"
        "BC");
    ASSERT_TRUE(Ready(milliseconds(5000)));
    waited += Since(start);
    EXPECT_EQ(NullModem::Arriving(*port_, 3), "ABC");
    ASSERT_FALSE(Ready(milliseconds(0)));
  }
  EXPECT_LT(waited / kTurns, kAtOnce);
  RecordProperty("mean_turn_around_in_ms", static_cast<int>((waited / kTurns).count()));
}

TEST_F(Win32Port, ClosingSendsWhatWasWrittenInTheTimeThatTheLineNeeds) {
  Bytes all(4096, '\0');
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = ByteOf(static_cast<unsigned>(i & 0xFFU));
  Open("115200,O,8,1");  // 11 bits a character
  const auto start = steady_clock::now();
  port_->Output(all);
  port_->Close();
  EXPECT_GE(Since(start), milliseconds(391));
  EXPECT_TRUE(There(all.size()) == all);
  Open("19200,n,8,1");
  modem_.Far().Output(all);
  EXPECT_TRUE(NullModem::Arriving(*port_, all.size()) == all);
}

TEST_F(Win32Port, MoreThanTheDriverHoldsIsSentWholeUnlessTheReaderStalls) {
  const Bytes much(100000, 'x');
  Open("921600,n,8,1");
  std::promise<void> read;  // before that the writer must not go: the system would take its write back
  std::future<void> writing = std::async(std::launch::async, [&] {
    port_->Output(much);
    read.get_future().wait();
  });
  EXPECT_TRUE(There(much.size()) == much);
  read.set_value();
  writing.get();
  const auto start = steady_clock::now();
  EXPECT_THROW(port_->Output(much), PortError);
  EXPECT_LT(Since(start), milliseconds(4000));
  EXPECT_TRUE(openPorts_.Handles().empty()) << "a dead line would keep Rest awake";
}

TEST_F(Win32Port, APulledCableWakesRestOnceAndEndsTheClosing) {
  Open("9600,O,7,1");
  modem_.Pull();
  EXPECT_TRUE(Ready(milliseconds(5000)));
  try {
    port_->Input();
    FAIL() << "reads on";
  } catch (const PortError& error) {
    EXPECT_EQ(Sentences(NullModem::kNear, error.Fault()),
              "COM61: während der Arbeit abgezogen. Adapter wieder einstecken, dann den Befehl wiederholen.");
  }
  const NullModem again;
  Open("300,O,7,1");
  port_->Output(Bytes(2000, 'x'));  // more than a minute on the line
  modem_.Pull();
  const auto start = steady_clock::now();
  port_->Close();
  EXPECT_LT(Since(start), std::chrono::seconds(10));
}

constexpr int kPluggedIn = 99;

/// The system's entries for an adapter that is COM99.
class PluggedIn {
 public:
  PluggedIn(const std::wstring& maker, const std::wstring& name) {
    device_.cbSize = sizeof device_;
    SetupDiCreateDeviceInfoW(list_, L"ROOT\\OXTEST\\0000", &GUID_DEVCLASS_PORTS, nullptr, nullptr, 0,
                             &device_);
    SetProperty(SPDRP_MFG, maker);
    SetProperty(SPDRP_FRIENDLYNAME, name);
    SetupDiRegisterDeviceInfo(list_, &device_, 0, nullptr, nullptr, nullptr);
    const HKEY key =
        SetupDiCreateDevRegKeyW(list_, &device_, DICS_FLAG_GLOBAL, 0, DIREG_DEV, nullptr, nullptr);
    RegSetValueExW(key, L"PortName", 0, REG_SZ, reinterpret_cast<const BYTE*>(port_), sizeof port_);
    RegCloseKey(key);
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, kPresent, kDriver, REG_SZ, port_, sizeof port_);
  }
  ~PluggedIn() {
    RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, kPresent, kDriver);
    SetupDiRemoveDevice(list_, &device_);
    SetupDiDestroyDeviceInfoList(list_);
  }

 private:
  void SetProperty(DWORD which, const std::wstring& text) {
    SetupDiSetDeviceRegistryPropertyW(list_, &device_, which, reinterpret_cast<const BYTE*>(text.c_str()),
                                      static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
  }

  static constexpr const wchar_t* kPresent = L"HARDWARE\\DEVICEMAP\\SERIALCOMM";
  static constexpr const wchar_t* kDriver = L"\\Device\\OxTest";
  const wchar_t port_[6] = L"COM99";
  HDEVINFO list_ = SetupDiCreateDeviceInfoList(&GUID_DEVCLASS_PORTS, nullptr);
  SP_DEVINFO_DATA device_{};
};

TEST(Win32Ports, AreToldAsTheirUserKnowsThem) {
  const std::pair<DWORD, const char*> reasons[] = {{ERROR_ACCESS_DENIED, "von einem anderen Programm belegt"},
                                                   {ERROR_FILE_NOT_FOUND, "nicht vorhanden"},
                                                   {ERROR_INVALID_FUNCTION, "keine serielle Schnittstelle"}};
  for (const auto& [error, reason] : reasons) EXPECT_EQ(OpeningFault(error).Fault().reason, reason);
  EXPECT_EQ(AdapterName("FTDI", "USB Serial Port (COM3)", "COM3"), "FTDI USB Serial Port");
  EXPECT_EQ(AdapterName("Prolific", "Prolific USB-to-Serial Comm Port (COM12)", "COM12"),
            "Prolific USB-to-Serial Comm Port");
  EXPECT_EQ(AdapterName("(Standardanschlusstypen)", "Kommunikationsanschluss (COM1)", "COM1"),
            "Kommunikationsanschluss");
  Win32PortList list;
  const auto told = [&] { return Description(kPluggedIn, list.Look(kPluggedIn)); };
  EXPECT_EQ(told(), "COM99: nicht vorhanden");
  {
    const PluggedIn adapter(L"FTDI", L"USB Serial Port (COM99)");
    EXPECT_EQ(told(), "COM99 (FTDI USB Serial Port): vorhanden");
  }
  EXPECT_EQ(told(), "COM99: nicht vorhanden");
}

}  // namespace
}  // namespace ox::test
