#include "workbench/system_services.h"

#include <gtest/gtest.h>

#include <set>

#include "workbench/program_paths.h"

namespace {

using workbench::SystemClock;

TEST(SystemClock, StandsStillWhereItIsFixed) {
  SystemClock clock;
  EXPECT_TRUE(clock.now().isValidDate());
  clock.fix(XCDateTime(2025, 3, 15, 10, 0, 0));
  EXPECT_EQ(clock.now(), XCDateTime(2025, 3, 15, 10, 0, 0));
}

TEST(SystemClock, ReadsDatesOfOneFormOnly) {
  EXPECT_EQ(SystemClock::parse("2025-03-15T10:20:30"), XCDateTime(2025, 3, 15, 10, 20, 30));
  EXPECT_EQ(SystemClock::parse("2024-02-29T23:59:59"), XCDateTime(2024, 2, 29, 23, 59, 59));
  for (const char* wrong : {"", "2025-03-15", "2025-03-15 10:20:30", "2025-02-29T00:00:00",
                            "2025-03-15T24:00:00", "2025-03-15T10:20:30Z", "0000-01-01T00:00:00",
                            "2025-3-15T10:20:300", "2025-03-15T10:20:6O"})
    EXPECT_EQ(SystemClock::parse(wrong), std::nullopt) << wrong;
}

TEST(RandomIds, AreNeverTheSame) {
  workbench::RandomIds ids;
  std::set<std::array<std::uint8_t, 16>> seen;
  for (int i = 0; i < 100; ++i) EXPECT_TRUE(seen.insert(ids.next()).second);
}

TEST(VerificationSettings, TellNewAndExistingDevicesApart) {
  workbench::VerificationSettings settings;
  settings.created = false;
  EXPECT_FALSE(settings.verifyConnection(false));
  EXPECT_TRUE(settings.verifyConnection(true));
}

TEST(ProgramPaths, StandBesideTheProgramsFolder) {
  const auto paths = workbench::ProgramPaths::ofFolder("/opt/lamp/bin");
  EXPECT_EQ(paths.texts, "/opt/lamp/share/texts");
  EXPECT_EQ(paths.images, "/opt/lamp/share/images");
  EXPECT_EQ(paths.plugin, "/opt/lamp/lib/zellampmanager.so");
  EXPECT_TRUE(workbench::ProgramPaths::ofThisProgram().texts.is_absolute());
}

}  // namespace
