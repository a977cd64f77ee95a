#include "workbench/sha256.h"

#include <gtest/gtest.h>

#include "host/services/identity.h"
#include "workbench/base64.h"

namespace {

struct Vector {
  std::string text;
  const char* digest;
};

// The examples of the standard, and lengths around the end of a block.
TEST(Sha256, GivesTheDigestsOfTheStandard) {
  for (const Vector& vector :
       {Vector{"", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
        {"abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
        {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
         "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
        {std::string(55, 'a'), "9f4390f8d30c2dd92ec9f095b65e2b9ae9b0a925a5258e241c9f1e910f734318"},
        {std::string(64, 'a'), "ffe054fe7ae0cb6dc65c3af9b61d5209f439851db43d0ba5997337df154668eb"},
        {std::string(1'000'000, 'a'),
         "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"}})
    EXPECT_EQ(workbench::sha256Text(vector.text), vector.digest) << vector.text.size();
}

TEST(Base64, GivesBackWhatTheHostEncodes) {
  std::string bytes;
  for (int length = 0; length < 300; ++length) {
    EXPECT_EQ(workbench::decodeBase64(EncodeBase64(bytes)), bytes) << length;
    bytes += static_cast<char>(length * 7);
  }
  EXPECT_EQ(workbench::decodeBase64("YWJj\nZGVm\r\n"), "abcdef");
  EXPECT_EQ(workbench::decodeBase64("YWJj*ZGVm"), "abc");
}

}  // namespace
