// Starting oxsim, signalling to it and ending it.
#include "day/sim_process.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <thread>

#include "platform/posix/descriptor.h"
#include "platform/scratch_folder.h"

namespace ox::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kDumpFolder = "speicher";
constexpr std::chrono::seconds kPatience{20};
constexpr std::chrono::milliseconds kBetweenLooks{1};

/// Reads one line; what came of it when the other end closes first.
std::string ReadLine(int descriptor) {
  std::string line;
  for (char character = 0; read(descriptor, &character, 1) == 1 && character != '\n';) line += character;
  return line;
}

pid_t Spawn(std::vector<std::string>& arguments, int output) {
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  const pid_t process = fork();
  if (process != 0) return process;
  prctl(PR_SET_PDEATHSIG, SIGTERM);  // a test that breaks off leaves nothing behind
  dup2(output, STDOUT_FILENO);
  execv(OX_SIMULATOR, pointers.data());
  _exit(EXIT_FAILURE);
}

}  // namespace

SimProcess::SimProcess(std::vector<std::string> options) {
  fs::create_directory(kDumpFolder);
  options.insert(options.begin(), {"oxsim", "--unpaced", "--dump", kDumpFolder});
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  const Descriptor reader(ends[0]);
  Descriptor writer(ends[1]);
  process_ = Spawn(options, writer.Number());
  writer.Close();
  // It says so when its line is there, and nothing when it ends instead.
  if (!ReadLine(reader.Number()).empty()) return;
  waitpid(process_, nullptr, 0);
  throw std::runtime_error("oxsim has ended at once");
}

SimProcess::~SimProcess() {
  kill(process_, SIGTERM);
  waitpid(process_, nullptr, 0);
}

SimProcess::Memory SimProcess::Dump() const {
  const fs::path tables = fs::path(kDumpFolder) / "tables.bin";
  const fs::path program = fs::path(kDumpFolder) / "program.bin";
  fs::remove(tables);
  fs::remove(program);
  kill(process_, SIGUSR1);
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!fs::exists(tables) || !fs::exists(program)) {
    if (std::chrono::steady_clock::now() > end) throw std::runtime_error("oxsim writes no memory");
    std::this_thread::sleep_for(kBetweenLooks);
  }
  return {ReadFile(tables), ReadFile(program)};
}

void SimProcess::SendHeld() const {
  kill(process_, SIGUSR2);
}

}  // namespace ox::test
