// The frames and requests of the loader.
#include "simulator/device/loader.h"

#include <string_view>
#include <utility>

namespace ox::sim {
namespace {

// A block frame: 8 bytes of header, then the data.
constexpr std::size_t kLetterAt = 0;
constexpr std::size_t kFixedAt = 1;
constexpr std::size_t kAddressAt = 4;
constexpr std::size_t kLengthAt = 6;
constexpr std::size_t kHeaderSize = 8;
constexpr std::string_view kFixedBytes("\x13\x58\x00", 3);
constexpr std::size_t kBlockSize = 256;  // of a "P", whose length byte is 0 then
constexpr unsigned kByteBits = 8;
constexpr unsigned kByteMask = 0xFF;

constexpr char kWakeUp = 'S';
constexpr char kGiveUp = 'N';
constexpr char kAccepted = 'A';
constexpr char kRefused = 'N';

// The requests.
constexpr char kVerifyProgram = 'V';
constexpr char kVerifyTables = 'W';
constexpr char kUnlockProgram = '0';
constexpr char kEraseProgram = '1';
constexpr char kEraseTables = '2';
constexpr char kProgramKind = 'c';
constexpr char kWriteBlock = 'P';
constexpr char kTakeOver = 'L';
constexpr char kRestart = 'X';

bool HeaderSound(BytesView header) {
  unsigned sum = 0;
  for (const char byte : header) sum += ByteValue(byte);
  return (sum & kByteMask) == 0 && header.substr(kFixedAt, kFixedBytes.size()) == kFixedBytes;
}

std::size_t DataSize(BytesView header) {
  const std::size_t length = ByteValue(header[kLengthAt]);
  return header[kLetterAt] == kWriteBlock && length == 0 ? kBlockSize : length;
}

std::size_t Address(BytesView header) {
  return ByteValue(header[kAddressAt]) << kByteBits | ByteValue(header[kAddressAt + 1]);
}

void Append(std::vector<TimedReply>& replies, std::vector<TimedReply> more) {
  for (TimedReply& reply : more) replies.push_back(std::move(reply));
}

}  // namespace

Loader::Loader(LoaderModel model, DeviceMemory& memory, ReplyFaults& faults)
    : model_(std::move(model)), memory_(memory), faults_(faults) {}

void Loader::Start() {
  running_ = true;
  state_ = State::kIdle;
  Open(Area::kNone);
}

void Loader::Open(Area area) {
  area_ = area;
  programUnlocked_ = false;
  lastBlockWritten_ = false;
}

std::vector<TimedReply> Loader::Receive(BytesView bytes, Seconds now) {
  const bool withinFrame = state_ == State::kFrame || state_ == State::kSkipping;
  if (withinFrame && now - lastByte_ > kFrameSilence) state_ = State::kIdle;
  lastByte_ = now;
  std::vector<TimedReply> replies;
  while (running_ && !bytes.empty()) {
    const BytesView piece = bytes.substr(0, Missing());
    bytes.remove_prefix(piece.size());
    Take(piece, now, replies);
  }
  return replies;
}

std::size_t Loader::Missing() const {
  if (state_ == State::kSkipping) return toSkip_;
  if (state_ != State::kFrame) return 1;
  const std::size_t size = frame_.size() < kHeaderSize ? kHeaderSize : kHeaderSize + DataSize(frame_);
  return size - frame_.size();
}

// No piece is longer than what is missing.
void Loader::Take(BytesView piece, Seconds now, std::vector<TimedReply>& replies) {
  if (state_ == State::kFrame) {
    frame_ += piece;
    LookAtFrame(now, replies);
  } else if (state_ == State::kSkipping) {
    toSkip_ -= piece.size();
    if (toSkip_ == 0) state_ = State::kIdle;
  } else {
    TakeOutsideFrame(piece.front(), now, replies);
  }
}

void Loader::TakeOutsideFrame(char byte, Seconds now, std::vector<TimedReply>& replies) {
  if (byte == kWakeUp) {
    WakeUp(now, replies);
  } else if (state_ == State::kAwake && byte == kGiveUp) {
    state_ = State::kIdle;
  } else if (state_ == State::kAwake) {
    state_ = State::kFrame;
    frame_.assign(1, byte);
  }
}

void Loader::WakeUp(Seconds now, std::vector<TimedReply>& replies) {
  const auto fault = faults_.Next({ReplyStage::kLoaderWakeUp, '\0'});
  if (!fault || !fault->requestLost) state_ = State::kAwake;
  Append(replies, ReplyFaults::Spoil(fault, Bytes(1, kAccepted), now));
}

void Loader::LookAtFrame(Seconds now, std::vector<TimedReply>& replies) {
  if (frame_.size() < kHeaderSize) return;
  const BytesView header = BytesView(frame_).substr(0, kHeaderSize);
  const std::size_t data = DataSize(header);
  const bool complete = frame_.size() == kHeaderSize + data;
  if (frame_.size() > kHeaderSize && !complete) return;  // its header was looked at when it came
  if (!HeaderSound(header)) {
    // The data still come: they must not be taken for wake-ups.
    toSkip_ = data;
    state_ = data == 0 ? State::kIdle : State::kSkipping;
    Answer(false, now, replies);
  } else if (complete) {
    state_ = State::kIdle;
    Answer(true, now, replies);
  }
}

void Loader::Answer(bool headerSound, Seconds now, std::vector<TimedReply>& replies) {
  const auto fault = faults_.Next({ReplyStage::kLoaderReply, frame_[kLetterAt]});
  const bool lost = fault && fault->requestLost;
  const bool done = headerSound && !lost && CarryOut();
  Append(replies, ReplyFaults::Spoil(fault, Bytes(1, done ? kAccepted : kRefused), now));
}

bool Loader::CarryOut() {
  const char letter = frame_[kLetterAt];
  if (letter == kWriteBlock) return WriteBlock();
  if (frame_.size() > kHeaderSize || Address(frame_) != 0) return false;
  switch (letter) {
    case kVerifyProgram:
      return VerifyProgram();
    case kVerifyTables:
      return memory_.TablesSound();
    case kUnlockProgram:
    case kEraseProgram:
      return PrepareProgram(letter);
    case kEraseTables:
      return PrepareTables();
    case kTakeOver:
      return true;  // everything is written in its place already
    case kRestart:
      running_ = !memory_.ProgramSound();
      return !running_;
    default:
      return ConfirmKind(letter);
  }
}

bool Loader::VerifyProgram() {
  const bool complete = lastBlockWritten_;
  Open(Area::kNone);
  return !complete || memory_.ProgramSound();
}

bool Loader::ConfirmKind(char letter) {
  if (model_.kinds.find(letter) == Bytes::npos) return false;
  const bool opens = letter == kProgramKind && model_.programKey == LoaderModel::ProgramKey::kKind;
  Open(opens ? Area::kProgram : Area::kNone);
  return true;
}

bool Loader::PrepareProgram(char letter) {
  if (model_.programKey != LoaderModel::ProgramKey::kPreparation) return false;
  if (letter == kUnlockProgram) {
    Open(Area::kNone);
    programUnlocked_ = true;
    return true;
  }
  if (!programUnlocked_) return false;
  memory_.EraseProgram();
  Open(Area::kProgram);
  return true;
}

bool Loader::PrepareTables() {
  if (model_.programKey == LoaderModel::ProgramKey::kNone) return false;
  memory_.EraseTables();
  Open(Area::kTables);
  return true;
}

bool Loader::WriteBlock() {
  const std::size_t address = Address(frame_);
  const BytesView data = BytesView(frame_).substr(kHeaderSize);
  if (data.size() != kBlockSize || address % kBlockSize != 0) return false;
  switch (area_) {
    case Area::kTables:
      return memory_.WriteTables(address, data);
    case Area::kProgram:
      if (!memory_.WriteProgram(address, data)) return false;
      if (address + data.size() == memory_.Program().size()) lastBlockWritten_ = true;
      return true;
    case Area::kNone:
      break;
  }
  return false;
}

}  // namespace ox::sim
