#pragma once

namespace support {

/// Runs the tests that the arguments choose and returns the program's status. It is a failure as
/// well when no test is chosen, and when a test ends the program: those behind it would not run.
int runTests(int argc, char** argv);

}  // namespace support
