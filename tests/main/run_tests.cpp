#include "tests/main/run_tests.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace support {
namespace {

// The process whose end is looked at; 0 once all tests ran. Its children may end as they like.
pid_t running = 0;

void refuseEarlyEnd() {
  if (running != ::getpid()) return;
  std::fprintf(stderr, "FAULT: a test ended the program\n");
  ::_exit(1);
}

}  // namespace

int runTests(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  std::atexit(refuseEarlyEnd);
  running = ::getpid();
  const int status = RUN_ALL_TESTS();
  running = 0;
  const bool lists = GTEST_FLAG_GET(list_tests);
  if (lists || testing::UnitTest::GetInstance()->test_to_run_count() > 0) return status;
  std::fprintf(stderr, "FAULT: no test has that name\n");
  return 1;
}

}  // namespace support
