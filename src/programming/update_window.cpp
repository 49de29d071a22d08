// The frame of an update run and its shared steps.
#include "programming/update_window.h"

#include "link/link_messages.h"
#include "link/verbindungstest.h"
#include "platform/text.h"
#include "programming/block_frame.h"

namespace ox {

std::string WrongAnswer(int number) {
  return "Abbruch der Programmierung(" + std::to_string(number) + "): OX antwortet nicht oder falsch!";
}

UpdateWindow::UpdateWindow(Host& host, SessionSettings& settings, std::string_view name,
                           std::string_view caption)
    : Window(host.windows, name, caption), host_(host), settings_(settings), link_(host, settings) {}

void UpdateWindow::OnFailure() {
  if (running_) ForgetCloseRequest();
  Reset();
}

void UpdateWindow::RunUpdate(Button& start, const std::function<bool()>& steps) {
  EnableCommands(false);
  running_ = true;
  bool succeeded = false;
  try {
    succeeded = steps();
  } catch (const PortError&) {
    Abort("COM" + ToText(settings_.ComPort) + std::string(kPortFailure));
  }
  if (!succeeded) ForgetCloseRequest();
  Reset();
  start.SetFocus();
}

void UpdateWindow::EnableCommands(bool enabled) {
  for (Control* control : Controls()) {
    if (control != &Go) control->SetEnabled(enabled);
  }
}

void UpdateWindow::Reset() {
  running_ = false;
  EnableCommands(true);
  link_.Close();
}

bool UpdateWindow::Abort(std::string_view message) {
  host_.windows.ShowMessage(message);
  return false;
}

bool UpdateWindow::LoaderRuns() {
  link_.OpenForLoader();
  Go.SetText(">");
  return link_.Accepts(request::kProbe);
}

bool UpdateWindow::FindDevice(std::string_view message) {
  link_.Close();
  RunConnectionTest(host_, settings_);
  return settings_.Connected || Abort(message);
}

bool UpdateWindow::EnterLoader(std::string_view message) {
  return link_.RequestUpdateMode() || Abort(message);
}

Bytes UpdateWindow::Reply(const LoaderRequest& request, std::size_t address, BytesView data) {
  try {
    return link_.SendBlock(request, address, data);
  } catch (const PortError&) {
    return {};
  }
}

bool UpdateWindow::Probe(const LoaderRequest& request, std::string_view message) {
  const Bytes reply = Reply(request);
  return reply == LoaderLink::kAccepted || reply == LoaderLink::kRefused || Abort(message);
}

bool UpdateWindow::Demand(const LoaderRequest& request, std::string_view message) {
  return Reply(request) == LoaderLink::kAccepted || Abort(message);
}

bool UpdateWindow::WriteBlocks(BytesView image, const BlockTransfer& transfer, std::string_view message) {
  for (std::size_t address = 0; address < image.size(); address += kBlockSize) {
    if (address / kBlockSize % transfer.markPeriod == transfer.markPhase) Mark();
    if (Reply(transfer.write, address, image.substr(address, kBlockSize)) != LoaderLink::kAccepted)
      return Abort(message);
  }
  return true;
}

bool UpdateWindow::Finish(std::string_view message) {
  // The device is right by now: what it says to these two changes nothing.
  Reply(request::kTakeOver);
  Reply(request::kLeaveLoader);
  link_.Close();
  host_.windows.ShowMessage(message);
  return true;
}

}  // namespace ox
