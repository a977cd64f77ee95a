#include "tests/controller/support/program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

extern char** environ;

namespace lamp::controller::test {

Program::Program(const std::vector<std::string>& command) {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
  std::vector<std::string> copies = command;
  std::vector<char*> arguments;
  for (std::string& argument : copies) arguments.push_back(argument.data());
  arguments.push_back(nullptr);
  const int result =
      ::posix_spawn(&process_, arguments[0], &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  ::close(ends[1]);
  output_ = ends[0];
  if (result != 0) throw std::runtime_error("can't start " + command[0]);
}

Program::~Program() {
  if (process_ > 0) {
    ::kill(process_, SIGKILL);
    wait();
  }
  ::close(output_);
}

std::string Program::readLine() {
  std::string line;
  char c = 0;
  while (::read(output_, &c, 1) == 1 && c != '\n') line += c;
  return line;
}

std::string Program::readRest() {
  std::string text;
  char buffer[4096];
  for (ssize_t count = 0; (count = ::read(output_, buffer, sizeof buffer)) > 0;) {
    text.append(buffer, static_cast<std::size_t>(count));
  }
  return text;
}

std::string Program::waitForAddress() {
  const std::string mark = "listening on ";
  for (std::string line = readLine(); !line.empty(); line = readLine()) {
    if (line.starts_with(mark)) return line.substr(mark.size());
  }
  return "";
}

void Program::signal(int number) const {
  ::kill(process_, number);
}

int Program::wait() {
  int status = 0;
  ::waitpid(process_, &status, 0);
  process_ = -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace lamp::controller::test
