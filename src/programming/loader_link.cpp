// Wake-up, frame and reply on the line to the loader, and the way into the loader.
#include "programming/loader_link.h"

#include <cmath>

#include "link/line_waits.h"
#include "platform/line_ends.h"
#include "programming/block_frame.h"

namespace ox {
namespace {

constexpr BytesView kLoaderSettings = "19200,n,8,1";

constexpr BytesView kWakeUp = "S";
constexpr BytesView kNotAwake = "N";
constexpr int kWakeUpSeconds = 1;

constexpr BytesView kUpdateRequest = "S@UPDATEREQ\r";
constexpr BytesView kUpdateAcknowledgement = "@UPDATEACK\r";

}  // namespace

LoaderLink::LoaderLink(Machine& machine, const SessionSettings& settings)
    : machine_(machine), settings_(settings), Duep_(machine.ports.Create()) {}

void LoaderLink::Open(BytesView lineSettings) {
  Duep_->Close();
  Duep_->SetSettings(lineSettings);
  Duep_->SetCommPort(settings_.PortNumber());
  Duep_->Open();
}

void LoaderLink::OpenForLoader() {
  Open(kLoaderSettings);
}

bool LoaderLink::RequestUpdateMode() {
  Open(settings_.DialogueSettings());
  Duep_->Output(kUpdateRequest);
  OpenForLoader();
  try {
    return AwaitAcknowledgement();
  } catch (const PortError&) {
    return false;
  }
}

bool LoaderLink::AwaitAcknowledgement() {
  const float start = machine_.clock.SecondsSinceMidnight();
  Bytes reply;
  do {
    machine_.events.Rest();
    reply += Duep_->Input();
  } while (!reply.ends_with(kCr) && reply.size() <= LineWaits::kLongestReply &&
           std::abs(start - machine_.clock.SecondsSinceMidnight()) <
               static_cast<float>(kAcknowledgementSeconds));
  return reply == kUpdateAcknowledgement;
}

Bytes LoaderLink::SendBlock(const LoaderRequest& request, std::size_t address, BytesView data) {
  Duep_->Input();  // what is left over from before must not pass for a reply
  Duep_->Output(kWakeUp);
  if (WaitForReply(kWakeUpSeconds) != kAccepted) {
    Duep_->Output(kNotAwake);
    return {};
  }
  Duep_->Output(BuildBlockFrame(request.letter, address, data));
  return WaitForReply(request.seconds);
}

Bytes LoaderLink::WaitForReply(int seconds) {
  const float end = machine_.clock.SecondsSinceMidnight() + static_cast<float>(seconds);
  Bytes reply;
  do {
    machine_.events.Rest();
    reply = Duep_->Input();
  } while (reply.empty() && machine_.clock.SecondsSinceMidnight() <= end);
  return reply;
}

}  // namespace ox
