#pragma once

#include <QtCore/QStringList>
#include <filesystem>
#include <optional>
#include <string>

#include "workbench/workspace.h"

namespace editor {

/// What the command line asks for.
struct Options {
  workbench::WorkspaceOptions workspace;  ///< its language is empty when none was given
  std::filesystem::path tour;             ///< the folder for a tour's screenshots, empty for none
  std::string tourAddress;                ///< "host:port" of the controller to tour, or empty
};

/// Reads the arguments behind the program's name. False, with what is wrong in @p error, for
/// arguments that are not understood.
bool readOptions(const QStringList& arguments, Options& options, QString& error);

/// The text for --help.
QString helpText();

}  // namespace editor
