// Which part of the device takes what arrives, and what it answers.
#include "simulator/device/device.h"

#include <cmath>
#include <utility>

#include "platform/line_ends.h"
#include "simulator/device/device_clock.h"
#include "simulator/device/image_reader.h"

namespace ox::sim {
namespace {

constexpr char kFraming = '0';
constexpr char kSeparator = ' ';
constexpr int kGenerationWithPowerSupply = 3;

constexpr char kUpdateAcknowledgement[] = "@UPDATEACK\r";
// From the end of the update request to the loader's first word, at the loader's settings: the PC closes its
// port and opens it again meanwhile.
constexpr Seconds kSwitchingTime = 0.08;

constexpr char kOlderKind = 'a';     // the kind query of devices that keep the older image
constexpr int kHighestPreset = 100;  // percent; any other character of a power request means none

LoaderModel ModelOf(const DeviceOptions& options) {
  LoaderModel model = options.generation == 1   ? kLoaderBefore30
                      : options.generation == 2 ? kLoaderGeneration2
                                                : kLoaderGeneration3;
  if (options.loaderKinds) model.kinds = *options.loaderKinds;
  return model;
}

const ProgramLayout& LayoutOf(const DeviceOptions& options) {
  return options.generation == 3 ? kLargeProgram : kSmallProgram;
}

}  // namespace

bool KeepsOlderImage(const DeviceOptions& options) {
  return ModelOf(options).kinds.find(kOlderKind) != Bytes::npos;
}

std::size_t MemorySize(const DeviceOptions& options) {
  return kTableImageSize + LayoutOf(options).size;
}

Device::Device(DeviceOptions options)
    : options_(std::move(options)),
      memory_(LayoutOf(options_), options_.version, options_.tables),
      loader_(std::in_place, ModelOf(options_), memory_, faults_),
      dialogue_([this](BytesView request, Seconds now) { return Answer(request, now); }, faults_, output_),
      polls_(options_.seed, options_.replies.flag),
      rubbish_(options_.seed) {
  memory_.Restore(options_.memory);
  SwitchOn();
  if (options_.startInLoader) loader_->Start();
}

LineSettings Device::Line() const {
  constexpr unsigned kDialogueBits = 7;
  return loader_->Running() || loaderHasLastWord_
             ? kLoaderLine
             : LineSettings{options_.baud, options_.parity, kDialogueBits};
}

std::optional<Seconds> Device::NextOutput() const {
  if (offUntil_) return std::nullopt;
  const auto output = output_.Next();
  const auto wakeUp = dialogue_.WakeUpDue();
  if (!output || (wakeUp && *wakeUp < *output)) return wakeUp;
  return output;
}

Bytes Device::TakeSome(Seconds now, std::size_t most) {
  if (offUntil_) return {};
  dialogue_.Settle(now);
  Bytes taken = output_.Take(now, most);
  if (!output_.Next()) loaderHasLastWord_ = false;
  return taken;
}

void Device::Receive(BytesView bytes, const LineSettings& pc, Seconds now) {
  if (offUntil_ && On(now)) SwitchOn();
  if (offUntil_) return;
  auto& left = options_.switchOffAfter;
  const BytesView heard = bytes.substr(0, left.value_or(Bytes::npos));
  Listen(heard, pc, now);
  if (!left) return;
  *left -= heard.size();
  if (*left > 0) return;
  left.reset();
  SwitchOff(now + kOff);
}

void Device::Listen(BytesView bytes, const LineSettings& pc, Seconds now) {
  dialogue_.Settle(now);
  while (!bytes.empty()) {
    // Asked for every piece, since any of them can switch the device over.
    const bool alike = pc == Line();
    const bool toLoader = alike && loader_->Running();
    const BytesView piece = bytes.substr(0, toLoader ? loader_->Missing() : 1);
    bytes.remove_prefix(piece.size());
    if (toLoader) {
      TakeLoader(piece, now);
    } else if (!alike && options_.rubbishWhenUnfit) {
      // One for one at most: a quick PC would pile them up for a slow device.
      const Bytes rubbish(1, ByteOf(static_cast<unsigned>(rubbish_())));
      if (!output_.Next()) output_.Add(now, rubbish);
    } else {
      for (const HeardCharacter& heard : Cross(piece.front(), pc, Line())) Hear(heard, now);
    }
  }
}

void Device::Hear(const HeardCharacter& heard, Seconds now) {
  if (loader_->Running()) {
    if (!heard.damaged) TakeLoader(BytesView(&heard.character, 1), now);
  } else if (heard.damaged) {
    dialogue_.TakeDamaged(now);
  } else if (dialogue_.Receive(heard.character, CharacterTime(Line()), now)) {
    EnterLoader(now);
  }
}

void Device::TakeLoader(BytesView piece, Seconds now) {
  for (const TimedReply& reply : loader_->Receive(piece, now)) output_.Add(reply.due, reply.bytes);
  if (loader_->Running()) return;
  loaderHasLastWord_ = output_.Next().has_value();
  TakeOverTables();
}

void Device::EnterLoader(Seconds now) {
  const auto fault = faults_.Next({ReplyStage::kUpdateAcknowledgement, '\0'});
  if (!fault || !fault->requestLost) {
    dialogue_.Sleep();
    loader_->Start();
  }
  for (const TimedReply& reply : ReplyFaults::Spoil(fault, kUpdateAcknowledgement, now + kSwitchingTime)) {
    output_.Add(reply.due, reply.bytes);
  }
}

void Device::TakeOverTables() {
  auto read =
      KeepsOlderImage(options_) ? ReadOlderImage(memory_.Tables()) : ReadGeneration3Image(memory_.Tables());
  stations_ = read ? std::move(*read) : StationData();
}

void Device::SwitchOff(Seconds until) {
  offUntil_ = until;
}

void Device::SwitchOn() {
  offUntil_.reset();
  output_.Clear();
  loaderHasLastWord_ = false;
  dialogue_.Sleep();
  loader_.emplace(ModelOf(options_), memory_, faults_);
  if (!memory_.ProgramSound()) loader_->Start();
  TakeOverTables();
}

ReplyLines Device::Answer(BytesView request, Seconds now) {
  switch (request.front()) {
    case 'K':
      return {Identification()};
    case '>':
      return AnswerPower(request, now);
    default:
      return Shaped(AnswerPoll(request, now), options_.replies);
  }
}

ReplyLines Device::AnswerPoll(BytesView request, Seconds now) {
  switch (request.front()) {
    case 'J':
      return polls_.AnswerJ(request, stations_);
    case 'Z':
      return polls_.AnswerZ(request, stations_);
    case 'P':
      return polls_.AnswerP(stations_, options_.replies.leastRecords);
    case 'T':
      return {kFraming + FormatDateAndTime(options_.clockStart + std::llround(std::floor(now))) + kCr};
    default:
      return {kRefused};
  }
}

Bytes Device::Identification() const {
  constexpr size_t kTypeSize = 4;
  Bytes type = options_.type.empty() ? "OX " + std::to_string(options_.generation) : options_.type;
  type.resize(kTypeSize, ' ');
  Bytes line = type + kSeparator + memory_.SoftwareVersion();
  if (options_.identificationCut) line.pop_back();
  return line + kCr;
}

ReplyLines Device::AnswerPower(BytesView request, Seconds now) {
  if (options_.generation < kGenerationWithPowerSupply || request.back() != kCr) return {kRefused};
  power_.Advance(now);
  const auto preset = static_cast<int>(ByteValue(request[1]));
  if (preset <= kHighestPreset) power_.Preset(preset);
  const Bytes& told = options_.powerStatus;
  return {kFraming + (told.empty() ? FormatPowerStatus(power_.Status()) : told) + kCr};
}

}  // namespace ox::sim
