// The local time of this host.
#include "platform/win32/win32_clock.h"

#include "platform/win32/windows_api.h"

namespace ox {
namespace {

constexpr double kMillisecond = 1e-3;

double Counter(BOOL(WINAPI* read)(LARGE_INTEGER*)) {
  LARGE_INTEGER value{};
  read(&value);
  return static_cast<double>(value.QuadPart);
}

CivilTime Civil(const SYSTEMTIME& time) {
  return {time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond};
}

}  // namespace

Win32Clock::Win32Clock() : second_(Counter(QueryPerformanceFrequency)) {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  Start(Civil(now), now.wMilliseconds * kMillisecond);
}

double Win32Clock::Running() const {
  return Counter(QueryPerformanceCounter) / second_;
}

CivilTime Win32Clock::Now() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  return Civil(now);
}

}  // namespace ox
