#include "workbench/upload_digest.h"

#include <gtest/gtest.h>

#include "host/services/identity.h"
#include "workbench/sha256.h"

namespace {

workbench::JournalEntry::Upload digestOf(const std::string& base64) {
  XmlDocument document;
  document.Create("file").SetText(XCBasicString::FromUtf8(base64));
  return workbench::uploadDigest(document.Root()->text());
}

// Of all lengths around the pieces in which it is taken.
TEST(UploadDigest, IsThatOfTheFileThatIsSent) {
  for (const std::size_t length : {0U, 1U, 2U, 3U, 4U, 49'151U, 49'152U, 49'153U, 200'000U}) {
    std::string bytes;
    for (std::size_t i = 0; i < length; ++i) bytes += static_cast<char>(i * 7 + i / 256);
    const auto upload = digestOf(EncodeBase64(bytes));
    EXPECT_EQ(upload.bytes, length);
    EXPECT_EQ(upload.sha256, workbench::sha256Text(bytes)) << length;
  }
}

TEST(UploadDigest, LineBreaksArePassedOver) {
  EXPECT_EQ(digestOf("YWJj\nZGVm\r\n").sha256, workbench::sha256Text("abcdef"));
}

TEST(UploadDigest, ATextThatIsNoBase64HasNone) {
  for (const char* text : {"YWJj*ZGVm", "YWJj\u00e9ZGVm", "YWJjZ"})
    EXPECT_EQ(digestOf(text).sha256, "") << text;
}

}  // namespace
