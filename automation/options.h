#pragma once

#include <string>
#include <vector>

#include "workbench/workspace.h"

namespace automation {

/// What the command line asks for.
struct Options {
  bool help = false;
  workbench::WorkspaceOptions workspace;
};

/// Reads the arguments behind the program's name. False, with what is wrong in @p error, for
/// arguments that are not understood.
bool readOptions(const std::vector<std::string>& arguments, Options& options, std::string& error);

/// The text for --help.
std::string helpText();

}  // namespace automation
