#pragma once

#include <sys/types.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace test {

/// A running lamp-script, talked to through pipes.
class ScriptProcess {
 public:
  /// Starts it with these arguments behind the program's name.
  explicit ScriptProcess(const std::vector<std::string>& arguments);
  ScriptProcess(const ScriptProcess&) = delete;
  ScriptProcess& operator=(const ScriptProcess&) = delete;
  /// Ends the input and waits for the end.
  ~ScriptProcess();

  /// Sends a command and waits for its answer. Fails the test when the program ends before.
  nlohmann::json operator()(const nlohmann::json& command) { return line(command.dump()); }
  /// Sends a line as it stands.
  nlohmann::json line(const std::string& text);
  /// As operator(), and the answer must be ok:true.
  nlohmann::json ok(const nlohmann::json& command);
  /// As operator(), and the answer must be ok:false; gives the error.
  std::string refused(const nlohmann::json& command);

  /// A control of the dialog in front, by its name; a test failure when there is none.
  nlohmann::json control(const std::string& name);

  /// Kills the program where it stands.
  void kill();
  /// Ends the input, reads what is still written, and gives the exit status.
  int end();
  /// What was written between the last answer and the end.
  const std::string& rest() const { return rest_; }
  /// What stood on standard error. After end().
  const std::string& errors() const { return errors_; }

 private:
  std::string readLine();
  static std::string readAll(int descriptor);

  pid_t process_ = -1;
  int input_ = -1;
  int output_ = -1;
  int error_ = -1;
  std::string buffer_;
  std::string rest_;
  std::string errors_;
  int status_ = -1;
};

}  // namespace test
