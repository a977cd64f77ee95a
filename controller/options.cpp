#include "controller/options.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <functional>

namespace lamp::controller {
namespace {

constexpr std::size_t kMostNodes = 1000000;
constexpr std::size_t kLongestId = 16;
constexpr std::size_t kShortestToken = 8;
constexpr double kFastest = 86400;

// Takes an option's value and says what is wrong with it, or nothing.
using Taker = std::string (*)(const std::string& value, Options& options);

struct OptionRule {
  const char* name;
  const char* value;  // null where the option takes none
  const char* help;
  Taker take;
};

template <class Number>
bool readNumber(const std::string& text, Number low, Number high, Number& number) {
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number);
  return result.ec == std::errc() && result.ptr == end && number >= low && number <= high;
}

std::string takePort(const std::string& value, Options& options) {
  return readNumber(value, 0, 65535, options.port) ? "" : "a number from 0 to 65535";
}

std::string takeListen(const std::string& value, Options& options) {
  options.listen = value;
  return value.empty() ? "an address of this machine" : "";
}

std::string takeHostName(const std::string& value, Options& options) {
  options.hostNames.push_back(value);
  return !value.empty() && value.find_first_of(":/ ") == std::string::npos
             ? ""
             : "a name without port, as it stands in an address";
}

std::string takeId(const std::string& value, Options& options) {
  const bool plain = std::all_of(value.begin(), value.end(), [](char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-' ||
           c == '_' || c == '.';
  });
  options.id = value;
  return !value.empty() && value.size() <= kLongestId && plain
             ? ""
             : "1 to 16 letters, digits, \"-\", \"_\" or \".\"";
}

std::string takeNodes(const std::string& value, Options& options) {
  return readNumber(value, std::size_t{0}, kMostNodes, options.street.nodes)
             ? ""
             : "a number from 0 to 1000000";
}

std::string takeSeed(const std::string& value, Options& options) {
  return readNumber(value, std::uint64_t{0}, ~std::uint64_t{0}, options.street.seed)
             ? ""
             : "a number that is not negative";
}

std::string takeState(const std::string& value, Options& options) {
  options.state = value;
  return value.empty() ? "the name of a file or folder" : "";
}

std::string takeCalendar(const std::string& value, Options& options) {
  options.calendar = value;
  return value.empty() ? "the name of a calendar file" : "";
}

std::string takeWithInputs(const std::string&, Options& options) {
  options.street.withInputs = true;
  return "";
}

std::string takeSpeed(const std::string& value, Options& options) {
  const char* end = value.data() + value.size();
  const auto result = std::from_chars(value.data(), end, options.speed);
  const bool fits = result.ec == std::errc() && result.ptr == end && options.speed >= 0 &&
                    options.speed <= kFastest;
  return fits ? "" : "a number from 0 to 86400";
}

std::string takeFault(const std::string& value, Options& options) {
  Fault fault;
  const std::string wrong = parseFault(value, fault);
  if (wrong.empty()) options.faults.push_back(std::move(fault));
  return wrong.empty() ? "" : "a fault: " + wrong;
}

std::string takeToken(const std::string& value, Options& options) {
  options.token = value;
  const bool plain = std::all_of(value.begin(), value.end(), [](char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
  });
  return value.size() >= kShortestToken && plain ? "" : "at least 8 letters and digits";
}

std::string takeTokenFile(const std::string& value, Options& options) {
  options.tokenFile = value;
  return value.empty() ? "the name of a file that holds the token" : "";
}

std::string takeDeliver(const std::string&, Options& options) {
  options.deliver = true;
  return "";
}

std::string takeAuthorities(const std::string& value, Options& options) {
  options.authorities = value;
  return value.empty() ? "the name of a file of certificates" : "";
}

std::string takeHelp(const std::string&, Options& options) {
  options.help = true;
  return "";
}

constexpr std::array kRules = {
    OptionRule{"--port", "N", "port to serve; 0 takes a free one (8080)", takePort},
    OptionRule{"--listen", "ADDRESS", "address to serve (127.0.0.1)", takeListen},
    OptionRule{"--host-name", "NAME", "a name that it is known by; may be given several times",
               takeHostName},
    OptionRule{"--id", "TEXT", "the controller's identifier (made from the seed)", takeId},
    OptionRule{"--nodes", "N", "how many lamp nodes a new street has (200)", takeNodes},
    OptionRule{"--seed", "N", "which street is generated (7)", takeSeed},
    OptionRule{"--with-inputs", nullptr, "the controller reports its inputs", takeWithInputs},
    OptionRule{"--state", "FILE|FOLDER", "keep the state here and go on with it", takeState},
    OptionRule{"--calendar", "FILE", "burn by the day types of a calendar file", takeCalendar},
    OptionRule{"--speed", "N", "seconds of the controller per second (1)", takeSpeed},
    OptionRule{"--fault", "NAME[:ARG]", "misbehave; may be given several times", takeFault},
    OptionRule{"--token", "TEXT", "token for /control/ (made at random)", takeToken},
    OptionRule{"--token-file", "FILE", "file (0600) that holds the token; it is not printed then",
               takeTokenFile},
    OptionRule{"--deliver", nullptr, "send reports by FTP and mail, ask the time server",
               takeDeliver},
    OptionRule{"--authorities", "FILE", "certificates that --deliver trusts (the system's)",
               takeAuthorities},
    OptionRule{"--help", nullptr, "show this and end", takeHelp},
};

const OptionRule* findRule(const std::string& name) {
  const auto found = std::find_if(kRules.begin(), kRules.end(),
                                  [&](const OptionRule& rule) { return name == rule.name; });
  return found == kRules.end() ? nullptr : found;
}

}  // namespace

std::string parseOptions(const std::vector<std::string>& arguments, Options& options) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::size_t equals = arguments[i].find('=');
    const std::string name = arguments[i].substr(0, equals);
    const OptionRule* rule = findRule(name);
    if (rule == nullptr) return "\"" + arguments[i] + "\" is no option; --help lists them";
    std::string value;
    if (rule->value == nullptr) {
      if (equals != std::string::npos) return name + " takes no value";
    } else if (equals != std::string::npos) {
      value = arguments[i].substr(equals + 1);
    } else if (++i < arguments.size()) {
      value = arguments[i];
    } else {
      return name + " needs a value: " + rule->value;
    }
    const std::string expected = rule->take(value, options);
    if (!expected.empty()) return name + " is \"" + value + "\"; it must be " + expected;
  }
  return "";
}

std::string readToken(Options& options, const char* credentials, bool& secret) {
  secret = false;
  std::string file = options.tokenFile;
  if (file.empty() && options.token.empty() && credentials != nullptr) {
    file = std::string(credentials) + "/control-token";
    if (::access(file.c_str(), F_OK) != 0) return "";
  }
  if (file.empty()) return "";
  if (!options.token.empty()) return "--token and --token-file exclude each other";
  // Nothing that may wait, such as a pipe, and no file that others may read.
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
    return "the token's file " + file + " can't be read";
  if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0)
    return "the token's file " + file + " can be used by others; chmod 600 it";
  std::ifstream lines(file);
  std::string token;
  std::getline(lines, token);
  const std::string expected = takeToken(token, options);
  if (!expected.empty()) {
    options.token.clear();
    return "the token in " + file + " must be " + expected;
  }
  secret = true;
  return "";
}

std::string helpText() {
  std::string text =
      "lamp-controller: a street-lighting controller to talk to over HTTP\n\n"
      "Usage: lamp-controller [options]\n\n";
  for (const OptionRule& rule : kRules) {
    std::string left = std::string("  ") + rule.name;
    if (rule.value != nullptr) left += std::string(" ") + rule.value;
    left.resize(std::max<std::size_t>(left.size() + 1, 26), ' ');
    text += left + rule.help + "\n";
  }
  return text +
         "\nThe options of the street count only when there is no state yet.\n"
         "A fault is NAME[:ARG][@COMMAND][#COUNT]: only this command, only so many times. Faults:\n"
         "no-answer, delay:SECONDS, close-mid-reply, truncated-xml, garbage, wrong-section,\n"
         "no-section, empty, refuse:TEXT, refuse-every-second-write, apply-lose-reply,\n"
         "restart-mid-command, clock-jump:SECONDS, oversize:SIZE, deep:DEPTH, dtd.\n"
         "The program ends on SIGINT and SIGTERM.\n";
}

}  // namespace lamp::controller
