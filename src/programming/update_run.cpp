// The frame of an update, and its shared steps.
#include "programming/update_run.h"

#include <string>

#include "link/port_failure.h"
#include "programming/block_frame.h"
#include "programming/update_steps.h"

namespace ox {
namespace {

/// Closes the line on every way out of a run.
class LineEnd {
 public:
  explicit LineEnd(LoaderLink& link) : link_(link) {}
  LineEnd(const LineEnd&) = delete;
  LineEnd& operator=(const LineEnd&) = delete;
  ~LineEnd() { link_.Close(); }

 private:
  LoaderLink& link_;
};

}  // namespace

bool UpdateRun::Abort(std::string_view message) {
  End(message);
  return false;
}

bool UpdateRun::LoaderRuns() {
  Begin(step::kAskLoader, request::kProbe.seconds);
  link_.OpenForLoader();
  observer_.StartMarks();
  return Accepts(request::kProbe);
}

bool UpdateRun::FindDevice(std::string_view message) {
  Begin(step::kFindDevice, kLongestSearchSeconds);
  link_.Close();
  return search_() || Abort(message);
}

bool UpdateRun::EnterLoader(const Refusal& refusal) {
  Begin(step::kEnterLoader, kAcknowledgementWait);
  return link_.RequestUpdateMode() || Abort(refusal.Message());
}

bool UpdateRun::Probe(const LoaderRequest& request, const Refusal& refusal) {
  Begin(step::kAskLoader, request.seconds);
  const Bytes reply = Reply(request);
  return reply == kYes || reply == kNo || Abort(refusal.Message());
}

bool UpdateRun::Demand(std::string_view step, const LoaderRequest& request, const Refusal& refusal) {
  Begin(step, request.seconds);
  const Bytes reply = refusal.Numbered() ? Reply(request) : link_.SendBlock(request);
  return reply == kYes || Abort(refusal.Message());
}

bool UpdateRun::WriteBlocks(std::string_view step, BytesView image, const BlockTransfer& transfer) {
  const std::size_t blocks = image.size() / kBlockSize;
  observer_.Step(step, transfer.write.seconds, blocks);
  for (std::size_t block = 0; block < blocks; ++block) {
    if (block % transfer.markPeriod == transfer.markPhase) Mark();
    const std::size_t address = block * kBlockSize;
    if (Reply(transfer.write, address, image.substr(address, kBlockSize)) != kYes)
      return Abort(transfer.refusal.Message());
    observer_.BlockSent(block);
  }
  return true;
}

bool UpdateRun::Finish(std::string_view message) {
  Begin(step::kFinish, request::kTakeOver.seconds);
  // The device is complete by now, so its answers to these two requests change nothing.
  Reply(request::kTakeOver);
  Reply(request::kLeaveLoader);
  link_.Close();
  End(message);
  return true;
}

bool UpdateRun::Conclude(std::string_view message) {
  End(message);
  return true;
}

void UpdateRun::End(std::string_view message) {
  awake_.reset();
  observer_.Tell(message);
}

Bytes UpdateRun::Reply(const LoaderRequest& request, std::size_t address, BytesView data) {
  try {
    return link_.SendBlock(request, address, data);
  } catch (const PortError&) {
    return {};
  }
}

UpdateEnd RunUpdate(LoaderLink& link, const DeviceSearch& search, UpdateObserver& observer,
                    const std::function<bool(UpdateRun& run)>& steps) {
  const LineEnd end(link);
  UpdateRun run(link, search, observer);
  try {
    return steps(run) ? UpdateEnd::kSucceeded : UpdateEnd::kFailed;
  } catch (const PortError&) {
    run.Abort(PortFailure(link.Session(), PortNaming::kCom));
    return UpdateEnd::kFailed;
  }
}

}  // namespace ox
