// A dialogue with the device whose failures are told on the console.
#pragma once

#include <utility>

#include "link/dialogue.h"
#include "tool/device_session.h"

namespace ox::tool {

class DialogueOnConsole : private DialogueObserver {
 public:
  /// Both outlive it.
  DialogueOnConsole(const Console& console, DeviceSession& session)
      : session_(session), dialogue_(console.machine, session.Settings(), *this) {}

  /// See Dialogue::Exchange.
  Bytes Exchange(const Bytes& request, bool multiRecord) { return dialogue_.Exchange(request, multiRecord); }

  /// Whether a dialogue has failed since the last call.
  bool TakeFailure() { return std::exchange(failed_, false); }

 private:
  void Write(BytesView /*entry*/) override {}
  void Tell(std::string_view message) override {
    session_.Say(message);
    failed_ = true;
  }

  DeviceSession& session_;
  bool failed_ = false;
  Dialogue dialogue_;
};

}  // namespace ox::tool
