#include "controller/model/civil_time.h"

#include <gtest/gtest.h>

namespace lamp::controller {
namespace {

Moment utc(const char* digits) {
  return Moment{parseDigits(digits)->time_since_epoch()};
}

struct ZoneCase {
  const char* zone;
  const char* utc;
  const char* civil;
};

TEST(CivilTime, FollowsTheZoneAndItsSummerTime) {
  const ZoneCase cases[] = {
      {"0", "20250101120000", "20250101130000"}, {"0", "20250330005959", "20250330015959"},
      {"0", "20250330010000", "20250330030000"}, {"0", "20251026005959", "20251026025959"},
      {"0", "20251026010000", "20251026020000"}, {"1", "20250701120000", "20250701130000"},
      {"2", "20250701120000", "20250701150000"}, {"3", "20250701120000", "20250701090000"},
      {"4", "20250101120000", "20250101090000"}, {"5", "20250701120000", "20250701070000"},
      {"6", "20250701120000", "20250701060000"}, {"?", "20250101120000", "20250101130000"},
  };
  for (const ZoneCase& each : cases) {
    const ZoneRule rule = zoneRuleOf(each.zone);
    EXPECT_EQ(formatDigits(toCivil(utc(each.utc), rule)), each.civil) << each.zone << each.utc;
  }
}

TEST(CivilTime, TheLetterDecidesTheHourThatHappensTwice) {
  const ZoneRule rule = zoneRuleOf("0");
  const CivilTime twice = *parseDigits("20251026023000");
  EXPECT_EQ(toMoment(twice, rule, true), utc("20251026003000"));
  EXPECT_EQ(toMoment(twice, rule, false), utc("20251026013000"));
}

TEST(CivilTime, TheLetterChangesNothingElsewhere) {
  const ZoneRule rule = zoneRuleOf("0");
  for (const bool summer : {false, true}) {
    EXPECT_EQ(toMoment(*parseDigits("20250715103000"), rule, summer), utc("20250715083000"));
    EXPECT_EQ(toMoment(*parseDigits("20250115103000"), rule, summer), utc("20250115093000"));
  }
  EXPECT_EQ(toMoment(*parseDigits("20250715103000"), zoneRuleOf("3"), true), utc("20250715133000"));
}

TEST(CivilTime, ATimeThatTheClockSkipsIsReadAsWinterTime) {
  EXPECT_EQ(toMoment(*parseDigits("20250330023000"), zoneRuleOf("0"), false),
            utc("20250330013000"));
}

TEST(CivilTime, ThereAndBackForEveryHourOfAYear) {
  for (const char* zone : {"0", "1", "2", "3", "5"}) {
    const ZoneRule rule = zoneRuleOf(zone);
    const Moment end = utc("20260101000000");
    for (Moment m = utc("20250101003000"); m < end; m += std::chrono::hours{1}) {
      ASSERT_EQ(toMoment(toCivil(m, rule), rule, isSummer(m, rule)), m) << zone;
    }
  }
}

TEST(CivilTime, TakesOnlyMomentsOfTheCalendar) {
  EXPECT_TRUE(parseStamp("20240229235959W"));
  EXPECT_TRUE(parseStamp("20240715103000S"));
  for (const char* text :
       {"", "20240715103000", "20240715103000X", "20240715103000s", "20250229000000W",
        "20241301000000W", "20240001000000W", "20240715240000S", "20240715106000S",
        "20240715103060S", "2024071510300S", "20240715103000SS", "2024071510 000S",
        "+0240715103000S"}) {
    EXPECT_FALSE(parseStamp(text)) << text;
  }
}

}  // namespace
}  // namespace lamp::controller
