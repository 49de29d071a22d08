// Reasons and advice, in words.
#include "platform/win32/opening_fault.h"

#include <array>

#include "platform/port_errors.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows_api.h"

namespace ox {
namespace {

constexpr DWORD kNoSuchDevice = 433;  // ERROR_NO_SUCH_DEVICE, which the compiler's headers lack

/// The system's sentence about an error, without its full stop.
std::string SystemsWords(DWORD error) {
  constexpr DWORD kNoInserts = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
  std::array<wchar_t, 512> buffer{};
  const DWORD length = FormatMessageW(kNoInserts, nullptr, error, 0, buffer.data(),
                                      static_cast<DWORD>(buffer.size()), nullptr);
  std::string text = Narrow({buffer.data(), length}).value_or("");
  text.erase(text.find_last_not_of("\r\n. ") + 1);
  return text.empty() ? "Fehler " + std::to_string(error) : text;
}

}  // namespace

PortError OpeningFault(unsigned long error) {
  switch (error) {
    case ERROR_ACCESS_DENIED:  // there is no right of its own for a port: another program holds it
    case ERROR_SHARING_VIOLATION:
    case ERROR_BUSY:
      return Taken();
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_DEV_NOT_EXIST:
    case kNoSuchDevice:
    case ERROR_DEVICE_NOT_CONNECTED:
    case ERROR_GEN_FAILURE:  // what some drivers say of an adapter that was just pulled out
    case ERROR_NOT_READY:
      return NoSuchPort();
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_INVALID_FUNCTION:
      return NotSerial();
    default:
      return PortError(SystemsWords(error));
  }
}

}  // namespace ox
