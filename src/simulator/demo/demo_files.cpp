// Writing program files and loader hex files.
#include "simulator/demo/demo_files.h"

#include <algorithm>
#include <string_view>

#include "simulator/device/program_layout.h"
#include "simulator/device/sample_program.h"

namespace ox::sim {
namespace {

// A program file: per 256 program bytes a record with its number before and a check byte behind them. All
// records but the first are scrambled.
constexpr std::size_t kBlockSize = 256;
constexpr unsigned kScramble = 0x3C;

// A loader hex line: count, address high byte first, type, data, check byte.
constexpr std::size_t kHexDataSize = 32;
constexpr unsigned kDataType = 0;
constexpr std::string_view kHexDigits = "0123456789ABCDEF";
constexpr std::string_view kHexEnd = ":00000001FF\r\n";
constexpr unsigned kByteBits = 8;
constexpr unsigned kDigitBits = 4;
constexpr unsigned kDigitMask = 0x0F;

constexpr std::string_view kVersion2 = "V4.20 22.11.2026";
constexpr std::string_view kVersion3 = "V5.10 22.11.2026";
constexpr std::string_view kVersion3New = "V5.20 22.11.2026";
constexpr unsigned kSeed2 = 0x4200;
constexpr unsigned kSeed3 = 0x5100;
constexpr unsigned kSeed3New = 0x5200;

// What the loader file brings besides its code: a piece across two pages, and one beyond what is packed.
constexpr std::size_t kCodeSize = 0x1000;
constexpr std::size_t kPieceAt = 0x40F0;
constexpr std::size_t kUpperAt = 0x8000;
constexpr std::size_t kPieceSize = 0x40;

/// The byte that brings the sum of all to 0 modulo 256.
char CheckByte(BytesView bytes) {
  unsigned sum = 0;
  for (const char byte : bytes) sum += ByteValue(byte);
  return ByteOf(0U - sum);
}

char Scrambled(char byte) {
  return ByteOf((0xFFU - ByteValue(byte)) ^ kScramble);
}

Bytes HexLine(std::size_t address, BytesView data) {
  Bytes record;
  record += ByteOf(static_cast<unsigned>(data.size()));
  record += ByteOf(static_cast<unsigned>(address >> kByteBits));
  record += ByteOf(static_cast<unsigned>(address));
  record += ByteOf(kDataType);
  record += data;
  record += CheckByte(record);
  Bytes line = ":";
  for (const char byte : record) {
    line += kHexDigits[ByteValue(byte) >> kDigitBits];
    line += kHexDigits[ByteValue(byte) & kDigitMask];
  }
  return line + "\r\n";
}

}  // namespace

Bytes ProgramFile(BytesView program) {
  Bytes file;
  for (std::size_t block = 0; block * kBlockSize < program.size(); ++block) {
    Bytes record(1, ByteOf(static_cast<unsigned>(block)));
    record += program.substr(block * kBlockSize, kBlockSize);
    record += CheckByte(record);
    if (block > 0) std::transform(record.begin(), record.end(), record.begin(), Scrambled);
    file += record;
  }
  return file;
}

Bytes HexLines(std::size_t address, BytesView bytes) {
  Bytes lines;
  for (std::size_t at = 0; at < bytes.size(); at += kHexDataSize) {
    lines += HexLine(address + at, bytes.substr(at, kHexDataSize));
  }
  return lines;
}

Bytes DemoProgram2() {
  // The check word stays open: it is put in when the file is loaded.
  Bytes program = SampleProgram(kSmallProgram, kVersion2, kSeed2);
  program.replace(kSmallProgram.size - 2, 2, 2, '\0');
  return ProgramFile(program);
}

Bytes DemoProgram3() {
  return ProgramFile(SampleProgram(kLargeProgram, kVersion3, kSeed3));
}

Bytes DemoLoaderHex() {
  Bytes code = CodeLikeBytes(kCodeSize, kSeed3New);
  PutVersion(code, kVersion3New);
  const Bytes piece = CodeLikeBytes(kPieceSize, kSeed3New + 1);
  return HexLines(0, code) + HexLines(kPieceAt, piece) + HexLines(kUpperAt, piece) + Bytes(kHexEnd);
}

}  // namespace ox::sim
