// Wake-up, frame and reply on the line to the loader, and the way into the loader.
#include "programming/loader_link.h"

#include "link/line_protocol.h"
#include "link/port_waits.h"
#include "programming/block_frame.h"

namespace ox {
namespace {

constexpr BytesView kLoaderSettings = "19200,n,8,1";  // kLoaderBaud and kLoaderCharacterBits

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
  const Difference rule{machine_.clock.SecondsSinceMidnight(), kAcknowledgementWait};
  return PiecesToCr(machine_, *Duep_, rule) == kUpdateAcknowledgement;
}

Bytes LoaderLink::SendBlock(const LoaderRequest& request, std::size_t address, BytesView data) {
  Duep_->Input();  // drops what arrived earlier, so that it is not taken for a reply
  Duep_->Output(kWakeUp);
  if (WaitForReply(kLoaderWakeUpWait) != kYes) {
    Duep_->Output(kNo);
    return {};
  }
  Duep_->Output(BuildBlockFrame(request.letter, address, data));
  return WaitForReply(request.seconds);
}

Bytes LoaderLink::WaitForReply(int seconds) {
  return FirstPiece(machine_, *Duep_, Until{seconds});
}

}  // namespace ox
