// Starting oxsim and waiting for its port.
#include "bench/simulator_child.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <stdexcept>
#include <thread>

namespace ox::bench {
namespace {

constexpr char kPort[] = "COM1";
constexpr int kLooks = 100;
constexpr std::chrono::milliseconds kBetweenLooks{20};

[[noreturn]] void Exec(std::vector<std::string>& words) {
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
  execv(OX_SIMULATOR, arguments.data());
  _exit(EXIT_FAILURE);
}

}  // namespace

SimulatorChild::SimulatorChild(std::vector<std::string> options) {
  options.insert(options.begin(), {"oxsim", "--link", kPort});
  child_ = fork();
  if (child_ == 0) Exec(options);
  for (int look = 0; look < kLooks && !std::filesystem::exists(kPort); ++look) {
    std::this_thread::sleep_for(kBetweenLooks);
  }
  if (!std::filesystem::exists(kPort)) throw std::runtime_error("oxsim does not start");
}

SimulatorChild::~SimulatorChild() {
  kill(child_, SIGTERM);
  waitpid(child_, nullptr, 0);
}

}  // namespace ox::bench
