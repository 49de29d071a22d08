// Waiting on the pseudo-terminal, to the microsecond.
#include "simulator/pty/line_host.h"

#include <poll.h>
#include <sys/prctl.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <ctime>
#include <utility>

namespace ox::sim {
namespace {

Seconds MonotonicTime() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

timespec ToTimespec(Seconds span) {
  constexpr double kNanosecondsPerSecond = 1e9;
  const double whole = std::floor(span);
  return {static_cast<time_t>(whole), static_cast<long>((span - whole) * kNanosecondsPerSecond)};
}

std::optional<Seconds> Earlier(std::optional<Seconds> one, std::optional<Seconds> other) {
  if (!one || !other) return one ? one : other;
  return std::min(*one, *other);
}

}  // namespace

LineHost::LineHost(Endpoint& end, HostOptions options)
    : end_(end),
      options_(std::move(options)),
      claim_(options_.link),
      start_(MonotonicTime()),
      paced_(end, options_.paced) {
  // By default the host puts wake-ups together, which delays each by some 50 microseconds.
  constexpr unsigned long kPreciseNanoseconds = 1;
  prctl(PR_SET_TIMERSLACK, kPreciseNanoseconds);
  plug_.emplace(options_);
}

Seconds LineHost::Now() const {
  return MonotonicTime() - start_;
}

std::string LineHost::Path() const {
  return plug_ ? plug_->line.Path() : "";
}

void LineHost::Count(std::size_t characters) {
  passed_ += characters;
  if (!options_.unplugAfter || passed_ < *options_.unplugAfter) return;
  options_.unplugAfter.reset();
  Unplug();
}

void LineHost::Unplug() {
  plug_.reset();
  replugAt_ = Now() + kUnplugged;
  end_.Unplugged(Now());
}

// What the PC's end is set to; nothing while nobody has it open.
std::optional<LineSettings> LineHost::PcEnd() {
  if (!plug_) return std::nullopt;
  // A port that is closed forgets what was not read.
  plug_->openings.Look();
  const bool wasOpen = std::exchange(plug_->open, plug_->openings.Any());
  const bool left = plug_->openings.TakeLeft();
  if (left && !wasOpen) end_.PortOpened(Now());
  if (left) {
    plug_->adapter.Drop();
    plug_->line.DropUnread();
    end_.PortClosed(Now());
  }
  if (!plug_->open) return std::nullopt;
  if (left || !wasOpen) end_.PortOpened(Now());
  return plug_->line.PcSettings();
}

// Whether the PC must read before anything more can happen on an unpaced line.
bool LineHost::Held() const {
  return !options_.paced && plug_ && plug_->line.Waiting();
}

std::optional<Seconds> LineHost::NextWakeUp() const {
  const auto atThePort = plug_ ? Earlier(plug_->adapter.Next(), end_.NextUnplugging()) : replugAt_;
  return Held() ? std::nullopt : Earlier(paced_.NextEvent(), atThePort);
}

void LineHost::Work() {
  if (!plug_ && Now() >= replugAt_) plug_.emplace(options_);
  const auto pulled = end_.NextUnplugging();
  if (plug_ && pulled && *pulled <= Now()) Unplug();
  const auto pc = PcEnd();
  if (Held()) return;
  const Seconds now = Now();
  const Bytes crossed = paced_.Advance(now, pc);
  if (!plug_) return;
  plug_->adapter.Receive(crossed, now);
  const Bytes arrived = plug_->adapter.Take(now);
  if (arrived.empty()) return;
  if (!plug_->line.Waiting()) plug_->line.Write(arrived);
  Count(arrived.size());
}

void LineHost::Wait(const sigset_t& awaited) {
  timespec timeout{};
  const timespec* limit = nullptr;
  if (const auto next = NextWakeUp()) {
    timeout = ToTimespec(std::max(0.0, *next - Now()));
    limit = &timeout;
  }
  const bool waiting = plug_ && plug_->line.Waiting();
  const bool room = paced_.Room() > 0;
  std::array<pollfd, 2> watched{{{plug_ ? plug_->line.Descriptor() : -1,
                                  static_cast<short>((room ? POLLIN : 0) | (waiting ? POLLOUT : 0)), 0},
                                 {plug_ ? plug_->openings.Descriptor() : -1, POLLIN, 0}}};
  if (ppoll(watched.data(), watched.size(), limit, &awaited) <= 0 || !plug_) return;
  if ((watched[0].revents & POLLOUT) != 0) plug_->line.Flush();
  if ((watched[0].revents & POLLIN) != 0) TakeFromPc();
}

void LineHost::TakeFromPc() {
  // The settings are taken first, since they belong to what was sent before.
  LineSettings pc = plug_->line.PcSettings();
  const Seconds now = Now();
  const Bytes sent = plug_->line.Read(paced_.Room());
  // On a busy machine the program may have closed the port and set it anew before we come to read. Nobody
  // knows the settings any more then, and those of the end are likely: the line was late, not the program.
  plug_->openings.Look();
  if (plug_->openings.TakeWrittenBefore()) pc = end_.Line();
  paced_.FromPc(sent, pc, now);
  Count(sent.size());
}

}  // namespace ox::sim
