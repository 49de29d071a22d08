// The files in which device programs are delivered: ".pro" for generation II, ".pr3" for generation III;
// their layout stands in docs/device-formats.md.
#pragma once

#include <cstddef>
#include <string>

#include "platform/bytes.h"

namespace ox {

/// The program bytes of one record of a file, which go to the device as one block.
constexpr std::size_t kProgramPageSize = 256;
/// A record: its number, its program bytes, a check byte.
constexpr std::size_t kProgramRecordSize = 1 + kProgramPageSize + 1;

/// What tells the two formats apart. The last two bytes of a program are its check word, by which the device
/// knows a whole program.
struct ProgramFormat {
  std::size_t records;
  unsigned checkWordStart;  // that the sum of the program's bytes begins with
  bool checkWordMissing;    // from the file: it has to be put in when the file is loaded

  constexpr std::size_t FileSize() const { return records * kProgramRecordSize; }
  constexpr std::size_t ProgramSize() const { return records * kProgramPageSize; }
};

constexpr ProgramFormat kProgramFormat2{.records = 128, .checkWordStart = 1, .checkWordMissing = true};
constexpr ProgramFormat kProgramFormat3{.records = 256, .checkWordStart = 2, .checkWordMissing = false};

enum class ProgramFileStatus { kGood, kWrongSize, kChecksumError };

/// The program as it lies in the device from address 0 on; empty unless the status is kGood.
struct LoadedProgram {
  ProgramFileStatus status;
  Bytes program;
};

/// Checks a file's content and takes its program, with its check word, out of it.
LoadedProgram ReadProgramFile(BytesView file, const ProgramFormat& format);

/// The size and the check word of a program that was read: "32768 Bytes, Prüfwort 3F2A hex", UTF-8.
std::string DescribeProgram(BytesView program);

// What a file is made of, for those who look for its faults.

/// Record `record`, from 0, of a file that has it, in plain bytes.
Bytes PlainProgramRecord(BytesView file, std::size_t record);

/// The sum of all bytes.
unsigned ByteSum(BytesView bytes);

/// The check word that a program has.
unsigned CheckWordIn(BytesView program);

/// What is told of the file `path` (UTF-8) when it is not good.
std::string ProgramFileFault(ProgramFileStatus status, const std::string& path);

/// The content of the file for a program, a multiple of 256 bytes and at most 65536; the check word is taken
/// as it stands.
Bytes BuildProgramFile(BytesView program);

/// Puts the check word into the last two bytes of a program of the format's size, low byte first: the 16-bit
/// sum of all bytes before it.
void InsertCheckWord(Bytes& program, const ProgramFormat& format);

}  // namespace ox
