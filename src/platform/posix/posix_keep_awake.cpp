// Keeping this host awake: a lock at its login manager.
#include "platform/posix/posix_keep_awake.h"

#include <fcntl.h>
#include <systemd/sd-bus.h>

#include <cerrno>

namespace ox {
namespace {

using std::chrono::microseconds;
using std::chrono::steady_clock;

constexpr const char* kService = "org.freedesktop.login1";
constexpr const char* kObject = "/org/freedesktop/login1";
constexpr const char* kInterface = "org.freedesktop.login1.Manager";
constexpr const char* kWhat = "sleep:shutdown:idle:handle-lid-switch";
constexpr const char* kWho = "Orvanexe Service";
constexpr const char* kWhy = "Ein Gerät wird programmiert";
constexpr const char* kMode = "block";

/// What came of the request.
struct Inquiry {
  bool answered = false;
  Descriptor lock = Descriptor();  // none when it was refused
};

int TakeAnswer(sd_bus_message* answer, void* userData, sd_bus_error* /*error*/) {
  auto& inquiry = *static_cast<Inquiry*>(userData);
  inquiry.answered = true;
  int lock = Descriptor::kNone;  // the message's own
  if (sd_bus_message_read(answer, "h", &lock) > 0) {
    inquiry.lock = Descriptor(fcntl(lock, F_DUPFD_CLOEXEC, 0));
  }
  return 0;
}

/// Turns the bus until the answer is there. False when it came and was no, or when the bus is gone.
bool AwaitAnswer(sd_bus* bus, const Inquiry& inquiry, std::chrono::milliseconds patience) {
  const auto end = steady_clock::now() + patience;
  while (!inquiry.answered) {
    const int turned = sd_bus_process(bus, nullptr);
    if (turned < 0) return false;
    if (turned > 0) continue;
    const auto left = std::chrono::duration_cast<microseconds>(end - steady_clock::now());
    if (left.count() <= 0) return true;
    const int waited = sd_bus_wait(bus, static_cast<std::uint64_t>(left.count()));
    if (waited < 0 && waited != -EINTR) return false;
  }
  return inquiry.lock.Valid();
}

}  // namespace

void PosixKeepAwake::CloseBus::operator()(sd_bus* bus) const {
  sd_bus_close_unref(bus);
}

void PosixKeepAwake::Take() noexcept {
  sd_bus* opened = nullptr;
  if (sd_bus_open_system(&opened) < 0) return;
  bus_.reset(opened);
  Inquiry inquiry;
  sd_bus_slot* asked = nullptr;
  if (sd_bus_call_method_async(opened, &asked, kService, kObject, kInterface, "Inhibit", TakeAnswer, &inquiry,
                               "ssss", kWhat, kWho, kWhy, kMode) < 0 ||
      !AwaitAnswer(opened, inquiry, patience_)) {
    bus_.reset();
  }
  sd_bus_slot_unref(asked);  // nobody listens from here on
  lock_ = std::move(inquiry.lock);
}

void PosixKeepAwake::Release() noexcept {
  lock_.Close();
  bus_.reset();
}

}  // namespace ox
