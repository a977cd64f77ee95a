#include "tests/automation/script_process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

extern char** environ;

namespace test {

using nlohmann::json;

ScriptProcess::ScriptProcess(const std::vector<std::string>& arguments) {
  std::signal(SIGPIPE, SIG_IGN);
  int in[2];
  int out[2];
  int err[2];
  if (::pipe2(in, O_CLOEXEC) != 0 || ::pipe2(out, O_CLOEXEC) != 0 || ::pipe2(err, O_CLOEXEC) != 0)
    throw std::runtime_error("no pipes");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, in[0], 0);
  posix_spawn_file_actions_adddup2(&actions, out[1], 1);
  posix_spawn_file_actions_adddup2(&actions, err[1], 2);
  std::vector<std::string> words = {LAMP_SCRIPT};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);
  const int failed = ::posix_spawn(&process_, LAMP_SCRIPT, &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  for (const int descriptor : {in[0], out[1], err[1]}) ::close(descriptor);
  input_ = in[1];
  output_ = out[0];
  error_ = err[0];
  if (failed != 0) throw std::runtime_error("can't start " LAMP_SCRIPT);
}

ScriptProcess::~ScriptProcess() {
  end();
}

std::string ScriptProcess::readLine() {
  std::size_t end = 0;
  while ((end = buffer_.find('\n')) == std::string::npos) {
    char block[64 * 1024];
    const ssize_t count = ::read(output_, block, sizeof block);
    if (count <= 0) {
      ADD_FAILURE() << "lamp-script ended: " << buffer_;
      return R"({"ok":false,"error":"ended","top":{"kind":"none"}})";
    }
    buffer_.append(block, static_cast<std::size_t>(count));
  }
  const std::string line = buffer_.substr(0, end);
  buffer_.erase(0, end + 1);
  return line;
}

json ScriptProcess::line(const std::string& text) {
  const std::string bytes = text + "\n";
  EXPECT_EQ(::write(input_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  return json::parse(readLine());
}

json ScriptProcess::ok(const json& command) {
  json answer = (*this)(command);
  EXPECT_TRUE(answer.at("ok").get<bool>()) << command << " -> " << answer;
  return answer;
}

std::string ScriptProcess::refused(const json& command) {
  const json answer = (*this)(command);
  EXPECT_FALSE(answer.at("ok").get<bool>()) << command << " -> " << answer;
  return answer.value("error", "");
}

json ScriptProcess::control(const std::string& name) {
  const json answer = ok({{"do", "look"}});
  for (const json& control : answer.at("controls"))
    if (control.at("name") == name) return control;
  ADD_FAILURE() << "there is no control " << name;
  return {};
}

std::string ScriptProcess::readAll(int descriptor) {
  std::string text;
  char block[64 * 1024];
  for (ssize_t count = 0; (count = ::read(descriptor, block, sizeof block)) > 0;)
    text.append(block, static_cast<std::size_t>(count));
  ::close(descriptor);
  return text;
}

void ScriptProcess::kill() {
  ::kill(process_, SIGKILL);
  end();
}

int ScriptProcess::end() {
  if (process_ < 0) return status_;
  ::close(input_);
  rest_ = buffer_ + readAll(output_);
  errors_ = readAll(error_);
  int status = 0;
  ::waitpid(process_, &status, 0);
  process_ = -1;
  status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
  return status_;
}

}  // namespace test
