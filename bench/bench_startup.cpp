// bench_startup NAME PROGRAM: from the start of a program to its window on the screen, the median of ten.
#include <X11/Xlib.h>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <vector>

#include "bench/figures.h"

namespace {

using ox::bench::Now;

constexpr int kStarts = 10;
constexpr double kMillisecondsPerSecond = 1000;

pid_t Start(const char* program) {
  const pid_t child = fork();
  if (child != 0) return child;
  const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
  dup2(nowhere, STDOUT_FILENO);
  dup2(nowhere, STDERR_FILENO);
  execlp(program, program, nullptr);
  _exit(EXIT_FAILURE);
}

/// Whether a window is one to work in: no menu, no hint, no helper of a few dots.
bool IsMainWindow(Display* display, const XMapEvent& mapped) {
  constexpr int kSmallest = 50;  // dots
  XWindowAttributes attributes;
  return mapped.override_redirect == 0 && XGetWindowAttributes(display, mapped.window, &attributes) != 0 &&
         attributes.width >= kSmallest && attributes.height >= kSmallest;
}

void AwaitMainWindow(Display* display) {
  XEvent event;
  do {
    XNextEvent(display, &event);
  } while (event.type != MapNotify || !IsMainWindow(display, event.xmap));
}

/// Seconds from the start to the window; the program is ended again.
double TimeStart(Display* display, const char* program) {
  const double start = Now();
  const pid_t child = Start(program);
  AwaitMainWindow(display);
  const double time = Now() - start;
  kill(child, SIGTERM);
  waitpid(child, nullptr, 0);
  XSync(display, 1);
  return time;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  Display* display = XOpenDisplay(nullptr);
  if (argumentCount != 3 || display == nullptr) {
    std::fprintf(stderr, "bench_startup NAME PROGRAM, with a DISPLAY of its own\n");
    return EXIT_FAILURE;
  }
  XSelectInput(display, DefaultRootWindow(display), SubstructureNotifyMask);
  XSync(display, 0);
  constexpr unsigned kPatienceSeconds = 60;
  alarm(kPatienceSeconds);  // ends the figures when a program shows no window

  TimeStart(display, arguments[2]);  // the first start warms the caches
  std::vector<double> times;
  times.reserve(kStarts);
  for (int start = 0; start < kStarts; ++start) {
    times.push_back(TimeStart(display, arguments[2]) * kMillisecondsPerSecond);
  }
  ox::bench::Figures::Print(arguments[1], ox::bench::Percentile(times, 0.5), "ms");
  XCloseDisplay(display);
  return 0;
}
