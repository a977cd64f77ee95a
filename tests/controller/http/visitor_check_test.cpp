#include "controller/http/visitor_check.h"

#include <gtest/gtest.h>

namespace lamp::controller {
namespace {

struct Visit {
  const char* host;
  const char* origin;
};

const VisitorCheck& check() {
  static const VisitorCheck visitors({"Lamps.Town.example"});
  return visitors;
}

TEST(VisitorCheck, LetsInWhoCallsTheControllerByItsOwnName) {
  const Visit visits[] = {{"", ""},
                          {"127.0.0.1:8080", ""},
                          {"192.0.2.7", ""},
                          {"[::1]:8080", ""},
                          {"localhost", ""},
                          {"LOCALHOST:1", ""},
                          {"lamps.localhost:8080", ""},
                          {"lamps.town.example:80", ""},
                          {"127.0.0.1:8080", "http://127.0.0.1:8080"},
                          {"lamps.town.example", "https://lamps.town.example"}};
  for (const Visit& visit : visits) {
    EXPECT_EQ(check().faultOf(visit.host, visit.origin), "") << visit.host << " " << visit.origin;
  }
}

TEST(VisitorCheck, KeepsOutNamesThatWereMadeToPointHere) {
  for (const char* host : {"evil.example", "evil.example:8080", "127.0.0.1.evil.example",
                           "evillocalhost", "town.example", "[::1", "127.0.0.1x", ":8080",
                           "evil.example\r\n", "127.0.0.1@evil.example"}) {
    EXPECT_NE(check().faultOf(host, "").find("is none of this controller's"), std::string::npos)
        << host;
  }
}

TEST(VisitorCheck, KeepsOutPagesOfOtherSites) {
  const Visit visits[] = {{"127.0.0.1:8080", "http://evil.example"},
                          {"127.0.0.1:8080", "null"},
                          {"127.0.0.1:8080", "http://127.0.0.1:8081"},
                          {"127.0.0.1:8080", "http://127.0.0.1"},
                          {"127.0.0.1:8080", "http://localhost:8080"},
                          {"127.0.0.1:8080", "file://"},
                          {"", "http://"},
                          {"", "http://evil.example"}};
  for (const Visit& visit : visits) {
    EXPECT_NE(check().faultOf(visit.host, visit.origin).find("pages of other sites"),
              std::string::npos)
        << visit.host << " " << visit.origin;
  }
}

TEST(VisitorCheck, ShowsOnlyPlainCharactersOfWhatItRefuses) {
  EXPECT_EQ(check().faultOf("a\x01\xC3", "").substr(0, 14), "The Host \"a??\"");
}

}  // namespace
}  // namespace lamp::controller
