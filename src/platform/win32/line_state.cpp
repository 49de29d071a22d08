// The parameters of a serial line, applied to a port.
#include "platform/win32/line_state.h"

#include "platform/port_errors.h"
#include "platform/win32/windows_api.h"

namespace ox {
namespace {

constexpr DWORD kInputQueue = 65536;  // bytes; what arrives while the program is busy elsewhere
constexpr DWORD kOutputQueue = 4096;  // bytes
// Never sent nor obeyed here, but some drivers refuse a state in which both are the same.
constexpr char kXon = 0x11;
constexpr char kXoff = 0x13;
constexpr LineSettings kAnother{19200, LineParity::kNone, 8, 1};

BYTE ParityCode(LineParity parity) {
  if (parity == LineParity::kOdd) return ODDPARITY;
  return parity == LineParity::kEven ? EVENPARITY : NOPARITY;
}

/// What is not told here stays as it was.
DCB StateOf(const LineSettings& settings, const DCB& before) {
  const bool checked = settings.parity != LineParity::kNone;
  DCB state = before;
  state.DCBlength = sizeof state;
  state.BaudRate = settings.baud;
  state.ByteSize = static_cast<BYTE>(settings.dataBits);
  state.Parity = ParityCode(settings.parity);
  state.StopBits = settings.stopBits == 2 ? TWOSTOPBITS : ONESTOPBIT;
  state.fBinary = TRUE;
  state.fParity = checked ? TRUE : FALSE;
  state.fErrorChar = checked ? TRUE : FALSE;
  state.ErrorChar = '\0';
  state.fNull = FALSE;          // a NUL is a character like others
  state.fAbortOnError = FALSE;  // else the port would stand still after one damaged character
  state.fOutxCtsFlow = FALSE;
  state.fOutxDsrFlow = FALSE;
  state.fDsrSensitivity = FALSE;
  state.fOutX = FALSE;
  state.fInX = FALSE;
  state.XonChar = kXon;
  state.XoffChar = kXoff;
  state.fDtrControl = DTR_CONTROL_ENABLE;
  state.fRtsControl = RTS_CONTROL_ENABLE;
  return state;
}

bool Set(HANDLE port, const LineSettings& settings, const DCB& before) {
  DCB state = StateOf(settings, before);
  return SetCommState(port, &state) != 0;
}

}  // namespace

void ApplyLineSettings(const LineSettings& settings, void* port) {
  DCB before{};
  before.DCBlength = sizeof before;
  if (GetCommState(port, &before) == 0) throw NotSerial();
  SetupComm(port, kInputQueue, kOutputQueue);  // a wish, which drivers may leave alone
  // A virtual line without a frame reports an error when nothing changes, so it gets a second chance from
  // another state. A driver that cannot do it refuses again.
  const bool set =
      Set(port, settings, before) || (Set(port, kAnother, before) && Set(port, settings, before));
  COMMTIMEOUTS none{};
  if (!set || SetCommTimeouts(port, &none) == 0) throw RefusesSettings();
  // Mistakes of the line from before the opening would keep some drivers from reading.
  DWORD mistakes = 0;
  ClearCommError(port, &mistakes, nullptr);
}

}  // namespace ox
