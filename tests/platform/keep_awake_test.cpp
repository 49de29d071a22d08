// The lock at a login manager on a bus of the test's own, from one that grants it to none at all.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <systemd/sd-bus.h>

#include <csignal>
#include <future>

#include "platform/posix/descriptor.h"
#include "platform/posix/posix_keep_awake.h"
#include "support/scratch_folder.h"

namespace ox::test {
namespace {

enum Manner { kGrants, kGrantsLate, kRefuses, kBusIsSilent, kNoBus };

/// Makes the socket "bus" in the working folder the system bus and answers there, for one program, as a bus
/// and its login manager would.
class FakeLoginManager {
 public:
  explicit FakeLoginManager(Manner manner) : manner_(manner) {
    setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=bus", 1);
    unlink("bus");
    const sockaddr_un address{AF_UNIX, "bus"};
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) == 0) outside_ = Descriptor(ends[0]), lock_ = Descriptor(ends[1]);
    if (manner >= kBusIsSilent) lock_.Close();
    if (manner == kNoBus) return;
    bind(bus_.Number(), reinterpret_cast<const sockaddr*>(&address), sizeof address);
    listen(bus_.Number(), 1);
    if (manner != kBusIsSilent) serving_ = std::async(std::launch::async, [this] { Serve(); });
  }

  /// The request, once it is answered; empty where nobody answers.
  std::string Asked() { return manner_ < kBusIsSilent ? asked_.get_future().get() : ""; }

  /// Whether the program holds the lock; looks for a moment whether it comes back.
  bool LockIsOut() {
    pollfd end{outside_.Number(), 0, 0};
    return poll(&end, 1, 50) == 0;  // milliseconds
  }

 private:
  void Serve() {
    sd_bus* bus = nullptr;
    const int line = accept(bus_.Number(), nullptr, nullptr);  // the bus closes it
    sd_bus_new(&bus);
    sd_bus_set_fd(bus, line, line);
    sd_bus_set_server(bus, 1, {});
    sd_bus_negotiate_fds(bus, 1);
    sd_bus_add_filter(bus, nullptr, Answer, this);
    sd_bus_start(bus);
    for (int turned = 0; turned >= 0; turned = sd_bus_process(bus, nullptr))
      if (turned == 0) sd_bus_wait(bus, UINT64_MAX);
    sd_bus_unref(bus);
  }

  static int Answer(sd_bus_message* call, void* self, sd_bus_error*) {
    if (sd_bus_message_is_method_call(call, "org.freedesktop.DBus", "Hello") > 0)
      return sd_bus_reply_method_return(call, "s", ":1.1");
    if (sd_bus_message_is_method_call(call, "org.freedesktop.login1.Manager", "Inhibit") > 0)
      static_cast<FakeLoginManager*>(self)->AnswerRequest(call);
    return 1;
  }

  void AnswerRequest(sd_bus_message* call) {
    std::array<const char*, 4> texts{};
    sd_bus_message_read(call, "ssss", &texts[0], &texts[1], &texts[2], &texts[3]);
    std::string asked;
    for (const char* text : texts) asked.append(text).append("|");
    if (manner_ == kGrantsLate) poll(nullptr, 0, 350);  // milliseconds: later than a run waits
    if (manner_ == kRefuses) {
      sd_bus_reply_method_errorf(call, SD_BUS_ERROR_ACCESS_DENIED, "remote session");
    } else {
      sd_bus_reply_method_return(call, "h", lock_.Number());
    }
    lock_.Close();
    asked_.set_value(asked);
  }

  Manner manner_;
  Descriptor bus_{socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
  Descriptor outside_;  // hangs up when nobody holds the lock any more
  Descriptor lock_;     // until it is given away
  std::promise<std::string> asked_;
  std::future<void> serving_;
};

TEST(KeepAwakeTest, ARunTakesOneLockAndWaitsForNobody) {
  const ScratchFolder scratch;
  const std::string request =
      "sleep:shutdown:idle:handle-lid-switch|Orvanexe Service|Ein Gerät wird programmiert|block|";
  std::signal(SIGALRM, [](int) {});
  for (const Manner manner : {kGrants, kGrantsLate, kRefuses, kBusIsSilent, kNoBus}) {
    FakeLoginManager manager(manner);
    const bool answers = manner == kGrants || manner == kRefuses;
    PosixKeepAwake awake(answers ? std::chrono::seconds(15) : PosixKeepAwake::kPatience);
    const itimerval soon{{}, {0, 50000}};
    if (!answers) setitimer(ITIMER_REAL, &soon, nullptr);  // a signal ends no wait
    const auto start = std::chrono::steady_clock::now();
    std::optional<KeepAwake::Hold> run(std::in_place, awake);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(answers ? 10 : 1)) << manner;
    EXPECT_EQ(manager.Asked(), manner <= kRefuses ? request : "") << manner;
    EXPECT_EQ(manager.LockIsOut(), manner <= kGrantsLate) << manner;
    run.reset();
    EXPECT_FALSE(manager.LockIsOut()) << manner;
  }
}

}  // namespace
}  // namespace ox::test
