// The parameters of a serial line, applied to a terminal.
#include "platform/posix/terminal_settings.h"

#include <termios.h>

#include <algorithm>
#include <array>

#include "platform/port_errors.h"
#include "platform/posix/pseudo_terminal.h"

namespace ox {
namespace {

struct Speed {
  unsigned baud;
  speed_t code;
};

constexpr std::array kSpeeds = {Speed{300, B300},       Speed{600, B600},       Speed{1200, B1200},
                                Speed{2400, B2400},     Speed{4800, B4800},     Speed{9600, B9600},
                                Speed{19200, B19200},   Speed{38400, B38400},   Speed{57600, B57600},
                                Speed{115200, B115200}, Speed{230400, B230400}, Speed{921600, B921600}};

constexpr tcflag_t kFrameFlags = CSIZE | CSTOPB | PARENB | PARODD;

/// The host's code of a speed.
speed_t SpeedOf(const LineSettings& settings) {
  const auto* const speed = std::find_if(kSpeeds.begin(), kSpeeds.end(),
                                         [&](const Speed& each) { return each.baud == settings.baud; });
  if (speed == kSpeeds.end()) throw RefusesSettings();
  return speed->code;
}

tcflag_t FrameOf(const LineSettings& settings) {
  tcflag_t frame = settings.dataBits == 7 ? CS7 : CS8;
  if (settings.stopBits == 2) frame |= CSTOPB;
  if (settings.parity != LineParity::kNone) frame |= PARENB;
  if (settings.parity == LineParity::kOdd) frame |= PARODD;
  return frame;
}

}  // namespace

void SetLine(const LineSettings& settings, termios& wanted) {
  cfmakeraw(&wanted);  // one character makes a read return, so that a read of nothing means a hang-up
  // cfmakeraw leaves these flags as the last user of the terminal set them.
  wanted.c_iflag &= ~tcflag_t{INPCK | IXOFF | IXANY};
  wanted.c_iflag |= IGNBRK;
  if (settings.parity != LineParity::kNone) wanted.c_iflag |= INPCK;  // a damaged character reads as NUL
  wanted.c_cflag &= ~(kFrameFlags | CRTSCTS);
  wanted.c_cflag |= FrameOf(settings) | CLOCAL | CREAD;
  cfsetspeed(&wanted, SpeedOf(settings));
}

void ApplyLineSettings(const LineSettings& settings, int terminal) {
  termios wanted{};
  if (tcgetattr(terminal, &wanted) != 0) throw PortError("ist keine serielle Schnittstelle");
  SetLine(settings, wanted);
  // The result of this call is not enough: a success may be partial, and a pseudo-terminal reports an error
  // although it took what it can. So the settings are read back.
  tcsetattr(terminal, TCSANOW, &wanted);
  termios taken{};
  // A pseudo-terminal has no frame, so it does not keep character size and parity.
  if (tcgetattr(terminal, &taken) != 0 || !HasTaken(taken, wanted, !IsPseudoTerminal(terminal)))
    throw RefusesSettings();
}

bool HasTaken(const termios& taken, const termios& wanted, bool withFrame) {
  const bool speedFits = cfgetospeed(&taken) == cfgetospeed(&wanted);
  const bool frameFits = ((taken.c_cflag ^ wanted.c_cflag) & kFrameFlags) == 0;
  return speedFits && (frameFits || !withFrame);
}

}  // namespace ox
