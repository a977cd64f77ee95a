#include <unistd.h>

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "automation/line_channel.h"
#include "automation/options.h"
#include "automation/session.h"
#include "host/services/files.h"
#include "workbench/process_guard.h"

namespace {

constexpr int StartFailed = 2;

int fail(const std::string& error) {
  std::fprintf(stderr, "lamp-script: %s\n", error.c_str());
  return StartFailed;
}

// What to do about a configuration that could not be read, where there is a way out.
std::string adviceFor(const workbench::Workspace& workspace) {
  if (!workspace.isConfigurationRefused() || !workspace.store().keptCopyOpens()) return {};
  const auto kept = host::keptCopy(workspace.store().file()).string();
  return "\n" + XCBasicString::Format(XCLoadString(host::TextId::KeptCopyAdvice),
                                      XCBasicString::FromUtf8(kept))
                    .ToUtf8();
}

int run(int argc, char** argv) {
  automation::Options options;
  std::string error;
  if (!automation::readOptions({argv + 1, argv + argc}, options, error))
    return fail(error + "\nTry lamp-script --help.");
  if (options.help) {
    std::fputs(automation::helpText().c_str(), stdout);
    return 0;
  }
  automation::LineChannel lines(STDIN_FILENO, STDOUT_FILENO);
  automation::Session session(lines);
  workbench::Workspace workspace(workbench::ProgramPaths::ofThisProgram(), options.workspace);
  if (!workspace.open(session, error)) return fail(error + adviceFor(workspace));
  if (workspace.store().isReadOnly())
    std::fprintf(stderr, "lamp-script: %s\n", workspace.store().readOnlyReason().c_str());
  if (const std::string loss = workspace.store().lossOfNextSave(); !loss.empty())
    std::fprintf(stderr, "lamp-script: %s\n", loss.c_str());
  session.run(workspace);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (!workbench::guardProcess()) return StartFailed;
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    return fail(error.what());
  }
}
