// The parameters of a serial line: read from their text, applied to a terminal.
#include "platform/posix/line_settings.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include "platform/posix/pseudo_terminal.h"
#include "platform/serial_port.h"

namespace ox {
namespace {

struct Speed {
  std::string_view text;
  unsigned baud;
  speed_t code;
};

constexpr std::array kSpeeds = {
    Speed{"300", 300, B300},          Speed{"600", 600, B600},          Speed{"1200", 1200, B1200},
    Speed{"2400", 2400, B2400},       Speed{"4800", 4800, B4800},       Speed{"9600", 9600, B9600},
    Speed{"19200", 19200, B19200},    Speed{"38400", 38400, B38400},    Speed{"57600", 57600, B57600},
    Speed{"115200", 115200, B115200}, Speed{"230400", 230400, B230400}, Speed{"921600", 921600, B921600}};

constexpr tcflag_t kFrameFlags = CSIZE | CSTOPB | PARENB | PARODD;

std::optional<LineParity> ParityOf(std::string_view text) {
  if (text == "N" || text == "n") return LineParity::kNone;
  if (text == "O" || text == "o") return LineParity::kOdd;
  if (text == "E" || text == "e") return LineParity::kEven;
  return std::nullopt;
}

/// A number of bits: one digit out of the two that are allowed.
std::optional<int> BitsOf(std::string_view text, char smaller, char larger) {
  if (text.size() != 1 || (text[0] != smaller && text[0] != larger)) return std::nullopt;
  return text[0] - '0';
}

/// Takes the text up to the next comma off its front.
std::string_view TakeValue(std::string_view& text) {
  const std::size_t comma = text.find(',');
  const std::string_view value = text.substr(0, comma);
  text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
  return value;
}

tcflag_t FrameOf(const LineSettings& settings) {
  tcflag_t frame = settings.dataBits == 7 ? CS7 : CS8;
  if (settings.stopBits == 2) frame |= CSTOPB;
  if (settings.parity != LineParity::kNone) frame |= PARENB;
  if (settings.parity == LineParity::kOdd) frame |= PARODD;
  return frame;
}

}  // namespace

std::chrono::nanoseconds LineSettings::CharacterTime() const {
  constexpr int kStartBits = 1;
  const int bits = kStartBits + dataBits + (parity == LineParity::kNone ? 0 : 1) + stopBits;
  return std::chrono::nanoseconds(std::chrono::seconds(bits)) / baud;
}

LineSettings ParseLineSettings(std::string_view text) {
  std::string_view rest = text;
  const std::string_view baud = TakeValue(rest);
  const auto* const speed =
      std::find_if(kSpeeds.begin(), kSpeeds.end(), [&](const Speed& each) { return each.text == baud; });
  const std::optional<LineParity> parity = ParityOf(TakeValue(rest));
  const std::optional<int> dataBits = BitsOf(TakeValue(rest), '7', '8');
  // What is left is the last value and, if anything, what is too much.
  const std::optional<int> stopBits = BitsOf(rest, '1', '2');
  if (speed == kSpeeds.end() || !parity || !dataBits || !stopBits) {
    throw PortError("Schnittstellenparameter \"" + std::string(text) + "\" gibt es nicht",
                    "Ein Verbindungstest setzt sie zurecht");
  }
  return {speed->baud, speed->code, *parity, *dataBits, *stopBits};
}

void ApplyLineSettings(const LineSettings& settings, int terminal) {
  termios wanted{};
  if (tcgetattr(terminal, &wanted) != 0) throw PortError("ist keine serielle Schnittstelle");
  cfmakeraw(&wanted);  // one character makes a read return, so that a read of nothing means a hang-up
  // cfmakeraw leaves these flags as the last user of the terminal set them.
  wanted.c_iflag &= ~tcflag_t{INPCK | IXOFF | IXANY};
  wanted.c_iflag |= IGNBRK;
  if (settings.parity != LineParity::kNone) wanted.c_iflag |= INPCK;  // a damaged character reads as NUL
  wanted.c_cflag &= ~(kFrameFlags | CRTSCTS);
  wanted.c_cflag |= FrameOf(settings) | CLOCAL | CREAD;
  cfsetispeed(&wanted, settings.speed);
  cfsetospeed(&wanted, settings.speed);

  // The result of this call is not enough: a success may be partial, and a pseudo-terminal reports an error
  // although it took what it can. So the settings are read back.
  tcsetattr(terminal, TCSANOW, &wanted);
  termios taken{};
  const bool readBack = tcgetattr(terminal, &taken) == 0;
  // A pseudo-terminal has no frame, so it does not keep character size and parity.
  const bool speedFits = readBack && cfgetospeed(&taken) == settings.speed;
  const bool frameFits = ((taken.c_cflag ^ wanted.c_cflag) & kFrameFlags) == 0 || IsPseudoTerminal(terminal);
  if (!speedFits || !frameFits)
    throw PortError("nimmt die Schnittstellenparameter nicht an", "Einen anderen Adapter nehmen");
}

}  // namespace ox
