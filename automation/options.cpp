#include "automation/options.h"

#include <charconv>
#include <set>

#include "workbench/state_folder.h"

namespace automation {
namespace {

using Values = workbench::WorkspaceOptions;

bool setConfiguration(const std::string& value, Values& values) {
  values.configuration = value;
  return !value.empty();
}

bool setPlugin(const std::string& value, Values& values) {
  values.plugin = value;
  return !value.empty();
}

bool setState(const std::string& value, Values& values) {
  values.state = value;
  return !value.empty();
}

bool setNow(const std::string& value, Values& values) {
  values.now = workbench::SystemClock::parse(value);
  return values.now.has_value();
}

bool setLanguage(const std::string& value, Values& values) {
  values.language = value;
  return !value.empty();
}

bool setVerification(const std::string& value, Values& values) {
  values.verifyNew = value == "new" || value == "new,existing" || value == "existing,new";
  values.verifyExisting = value == "existing" || value == "new,existing" || value == "existing,new";
  return values.verifyNew || values.verifyExisting || value == "none";
}

bool setPatience(const std::string& value, Values& values) {
  constexpr int Longest = 3600;
  int seconds = 0;
  const char* end = value.data() + value.size();
  const auto result = std::from_chars(value.data(), end, seconds);
  values.answerWithin = std::chrono::seconds(seconds);
  return result.ec == std::errc() && result.ptr == end && seconds >= 1 && seconds <= Longest;
}

struct Option {
  const char* name;
  const char* form;  // what its value looks like, for messages
  bool (*set)(const std::string& value, Values& values);
};

constexpr Option All[] = {
    {"--config", "a folder", &setConfiguration},
    {"--plugin", "a file", &setPlugin},
    {"--state", "a folder", &setState},
    {"--now", "a date and time such as 2025-03-15T10:00:00", &setNow},
    {"--language", "a language such as en", &setLanguage},
    {"--answer-within", "a number of seconds from 1 to 3600", &setPatience},
    {"--verify-connection", "new, existing, new,existing or none", &setVerification},
};

const Option* findOption(const std::string& name) {
  for (const Option& option : All)
    if (name == option.name) return &option;
  return nullptr;
}

}  // namespace

bool readOptions(const std::vector<std::string>& arguments, Options& options, std::string& error) {
  options.workspace.program = "lamp-script";
  options.workspace.state = workbench::stateFolderOfUser();
  std::set<const Option*> given;
  for (std::size_t at = 0; at < arguments.size(); ++at) {
    const std::string& argument = arguments[at];
    if (argument == "--help") {
      options.help = true;
      return true;
    }
    const std::size_t equals = argument.find('=');
    const std::string name = argument.substr(0, equals);
    const Option* option = findOption(name);
    if (option == nullptr) {
      error = "\"" + argument + "\" is no option of this program";
      return false;
    }
    if (!given.insert(option).second) {
      error = name + " is given twice";
      return false;
    }
    if (equals == std::string::npos && at + 1 == arguments.size()) {
      error = name + " needs " + option->form;
      return false;
    }
    const std::string value =
        equals == std::string::npos ? arguments[++at] : argument.substr(equals + 1);
    if (!option->set(value, options.workspace)) {
      error = name + " needs " + option->form + ", not \"" + value + "\"";
      return false;
    }
  }
  if (!options.workspace.configuration.empty()) return true;
  error = "--config is missing: it names the folder of the configuration";
  return false;
}

std::string helpText() {
  return R"(lamp-script drives the dialogs of the lamp manager by lines of JSON.

Usage: lamp-script --config DIR [options]

  --config DIR               the folder that holds configuration.xml; made when it is missing
  --plugin FILE              the plug-in to load; by default the one beside this program
  --state DIR                where what is sent is put on record; by default
                             $XDG_STATE_HOME/lamp-manager or ~/.local/state/lamp-manager
  --now DATE                 stops the clock, at a moment such as 2025-03-15T10:00:00
  --language LANGUAGE        the language of the texts: en, es, or numbers (default en)
  --answer-within SECONDS    how long a controller may take to answer a command (default 30, and
                             300 for the upload of a firmware)
  --verify-connection WHICH  new, existing, new,existing or none: for which devices the
                             connection is verified when they are saved (default new,existing)
  --help                     shows this text

It reads one JSON object a line from standard input, such as {"do":"look"}, and answers each with
one line on standard output. End of input closes every open dialog as Cancel. The status is 0 then,
and 2 when the program could not start.
)";
}

}  // namespace automation
