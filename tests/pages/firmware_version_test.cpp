#include "pages/firmware_version.h"

#include <gtest/gtest.h>

#include "tests/support/printers.h"

namespace {

using lamp::compareVersions;
using lamp::VersionOrder;

struct Case {
  std::u16string_view first;
  std::u16string_view second;
  VersionOrder order;
};

constexpr VersionOrder Equal = VersionOrder::equal;
constexpr VersionOrder Older = VersionOrder::firstOlder;
constexpr VersionOrder Newer = VersionOrder::firstNewer;

constexpr Case Cases[] = {
    {u"", u"", Equal},
    {u"0.3.0", u"0.3.0", Equal},
    {u"0.2.9", u"0.3.0", Older},
    {u"0.10.0", u"0.3.0", Newer},
    {u"0.3.10", u"0.3.9", Newer},
    {u"1", u"0.3.0", Newer},
    {u"0", u"0.3.0", Older},
    {u"", u"0.3.0", Older},
    // The first component that differs decides, whatever follows.
    {u"0.2.99", u"0.3.0", Older},
    {u"1.0.0", u"0.99.99", Newer},
    // Components that one version lacks count as 0.
    {u"0.3", u"0.3.0", Equal},
    {u"0.3.0.0.0", u"0.3", Equal},
    {u"0.3.0.1", u"0.3.0", Newer},
    {u"0.3", u"0.3.0.1", Older},
    {u"", u"0", Equal},
    {u"", u"0.0.0", Equal},
    {u"", u"0.0.1", Older},
    {u".", u"", Equal},
    {u"0.3.", u"0.3.0", Equal},
    {u".3", u"0.3", Equal},
    {u"1..2", u"1.0.2", Equal},
    // A component is its leading decimal digits; without any it is 0.
    {u"0.3.0beta", u"0.3.0", Equal},
    {u"0.3b7.0", u"0.3.0", Equal},
    {u"v1.0", u"0.0", Equal},
    {u"-1", u"0", Equal},
    {u" 1", u"0", Equal},
    {u"0.+4", u"0.3.0", Older},
    {u"0.٤.0", u"0.3.0", Older},
    // Numbers, not texts: leading zeros don't count, and no number is too long.
    {u"0.03.00", u"0.3.0", Equal},
    {u"00000000000000000000.3", u"0.3.0", Equal},
    {u"4294967296", u"1", Newer},
    {u"99999999999999999999", u"99999999999999999998", Newer},
    {u"0.2147483648.0", u"0.3.0", Newer},
};

TEST(FirmwareVersion, ComparesComponentByComponent) {
  for (const Case& test : Cases)
    EXPECT_EQ(compareVersions(test.first, test.second), test.order)
        << XCBasicString(test.first).ToUtf8() << " and " << XCBasicString(test.second).ToUtf8();
}

TEST(FirmwareVersion, ComparesTheSameTheOtherWayRound) {
  for (const Case& test : Cases) {
    const VersionOrder turned = test.order == Older ? Newer : test.order == Newer ? Older : Equal;
    EXPECT_EQ(compareVersions(test.second, test.first), turned)
        << XCBasicString(test.second).ToUtf8() << " and " << XCBasicString(test.first).ToUtf8();
  }
}

}  // namespace
