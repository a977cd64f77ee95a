#pragma once

#include <string>
#include <vector>

#include "controller/http/fault_plan.h"
#include "controller/model/street_generator.h"

namespace lamp::controller {

/// What the command line asks for.
struct Options {
  int port = 8080;
  std::string listen = "127.0.0.1";
  std::vector<std::string> hostNames;  ///< by which browsers may know it
  std::string id;                      ///< empty: made from the seed
  std::string state;                   ///< file or folder; empty: nothing is kept
  std::string calendar;                ///< calendar file; empty: none
  StreetPlan street;
  double speed = 1;            ///< seconds of the controller per second
  bool deliver = false;        ///< send reports and ask the time server
  std::string authorities;     ///< file of certificates that delivery trusts; empty: the system's
  std::string token;           ///< empty: made at random
  std::string tokenFile;       ///< file that holds the token; empty: none
  bool tokenIsSecret = false;  ///< it came from a file and is printed nowhere
  std::vector<Fault> faults;
  bool help = false;
  std::vector<std::string> arguments;  ///< as they were given
};

/// Reads the arguments (without the program's name) into `options`. Returns what is wrong with them
/// and what to do, or an empty text.
std::string parseOptions(const std::vector<std::string>& arguments, Options& options);

/// Takes the token from the file that the options name or, where they name neither a file nor a
/// token, from "control-token" in the folder of the system's credentials (`credentials`, may be
/// null). The file must be its owner's alone. `secret` tells that the token came from there and is
/// to be printed nowhere. Returns what is wrong, or an empty text.
std::string readToken(Options& options, const char* credentials, bool& secret);

/// What "--help" prints.
std::string helpText();

}  // namespace lamp::controller
