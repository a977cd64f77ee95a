#include "workbench/command_address.h"

#include <gtest/gtest.h>

namespace {

using workbench::commandAddress;
using workbench::CommandAddress;

struct Case {
  const char* parameters;
  const char* url;  // of command 1 without parameters; empty for an address that can't be used
};

class CommandAddresses : public testing::TestWithParam<Case> {};

TEST_P(CommandAddresses, LeadWhereTheySay) {
  const CommandAddress address = commandAddress(GetParam().parameters);
  EXPECT_EQ(address.usable ? address.url(1, "") : "", GetParam().url);
}

INSTANTIATE_TEST_SUITE_P(
    CommandAddress, CommandAddresses,
    testing::Values(
        Case{"address=10.0.0.1&socket=8080", "http://10.0.0.1:8080/lampmanager/command/1?"},
        Case{"a=b&socket=1&address=lamp-1.example&x=",
             "http://lamp-1.example:1/lampmanager/command/1?"},
        Case{"address=http%3A%2F%2Fhost&socket=80", "http://host:80/lampmanager/command/1?"},
        Case{"address=https%3A%2F%2Fhost%2F&socket=443", "https://host:443/lampmanager/command/1?"},
        Case{"address=HTTPS%3a%2f%2fhost&socket=65535",
             "https://host:65535/lampmanager/command/1?"},
        Case{"address=%3A%3A1&socket=80", "http://[::1]:80/lampmanager/command/1?"},
        Case{"address=%5B2001%3Adb8%3A%3A7%5D&socket=80",
             "http://[2001:db8::7]:80/lampmanager/command/1?"},
        Case{"address=fe80%3A%3A1%25eth0&socket=80",
             "http://[fe80::1%25eth0]:80/lampmanager/command/1?"},
        Case{"address=l%C3%A1mpara&socket=80", "http://l\xC3\xA1mpara:80/lampmanager/command/1?"},
        // no address
        Case{"socket=80", ""}, Case{"address=&socket=80", ""},
        Case{"address=http%3A%2F%2F&socket=80", ""},
        // more than a host
        Case{"address=host%3A80&socket=80", ""}, Case{"address=host%2Fpath&socket=80", ""},
        Case{"address=user%40host&socket=80", ""}, Case{"address=a%20b&socket=80", ""},
        Case{"address=a%0D%0Ab&socket=80", ""}, Case{"address=host%3Fx&socket=80", ""},
        Case{"address=ftp%3A%2F%2Fhost&socket=80", ""}, Case{"address=%5B%3A%3A1&socket=80", ""},
        Case{"address=fe80%3A%3A1%25&socket=80", ""}, Case{"address=a%3Ab%3Axyz&socket=80", ""},
        // no port
        Case{"address=host", ""}, Case{"address=host&socket=", ""},
        Case{"address=host&socket=0", ""}, Case{"address=host&socket=65536", ""},
        Case{"address=host&socket=80a", ""}, Case{"address=host&socket=-1", ""},
        Case{"address=host&socket=%2B80", ""},
        Case{"address=host&socket=99999999999999999999", ""}));

TEST(CommandAddress, WhatWouldEndTheRequestsLineIsEncoded) {
  const CommandAddress address = commandAddress("address=h&socket=1");
  EXPECT_EQ(address.url(2, "a=b c\r\nd#\xC3\xA9"),
            "http://h:1/lampmanager/command/2?a=b%20c%0D%0Ad%23%C3%A9");
}

}  // namespace
