#include "controller/http/command_log.h"

#include <gtest/gtest.h>

namespace lamp::controller {
namespace {

TEST(CommandLog, MasksPasswordsWhereverTheyStand) {
  const std::pair<const char*, const char*> cases[] = {
      {"<E01 FTPPwd=\"s3cret\" name=\"x\"/>", "<E01 FTPPwd=\"***\" name=\"x\"/>"},
      {"<E01 mailPassword = 's3cret'/>", "<E01 mailPassword = '***'/>"},
      {"<E01 mailUser\n=\n\"s3cret\"/>", "<E01 mailUser\n=\n\"***\"/>"},
      {"<E01 FTPPwd=\"s3cret", "<E01 FTPPwd=\"***"},
      {"<a FTPPwd=\"s3cret\"/><b FTPPwd=\"s3cret\"/>", "<a FTPPwd=\"***\"/><b FTPPwd=\"***\"/>"},
      {"ftpUser=u&ftpPassword=s3cret&x=1", "ftpUser=u&ftpPassword=***&x=1"},
      {"ftpPassword=s3cret", "ftpPassword=***"},
      {"<FTPPwd/>", "<FTPPwd/>"},
  };
  for (const auto& [text, shown] : cases) EXPECT_EQ(ShownText(text).str(), shown);
}

TEST(CommandLog, ShowsAFirmwareAsItsLengthAndCutsLongDocuments) {
  const std::string firmware =
      "<d><firmwareFile>" + std::string(9000, 'A') + "</firmwareFile><E03/></d>";
  EXPECT_EQ(ShownText(firmware).str(),
            "<d><firmwareFile>(9000 characters)</firmwareFile><E03/></d>");
  const std::string cut = ShownText(std::string(3990, ' ') + "FTPPwd=\"s3cret\"").str();
  EXPECT_EQ(cut.find("s3c"), std::string::npos);
  EXPECT_TRUE(cut.ends_with(" ..."));
}

TEST(CommandLog, KeepsTheLastFifty) {
  CommandLog log;
  for (int i = 1; i <= 60; ++i) {
    LoggedCommand entry;
    entry.command = i;
    log.add(entry);
  }
  EXPECT_EQ(log.after(0).size(), 50U);
  EXPECT_EQ(log.after(0).front().command, 11);
  ASSERT_EQ(log.after(59).size(), 1U);
  EXPECT_EQ(log.after(59)[0].number, 60U);
  EXPECT_TRUE(log.after(60).empty());
}

}  // namespace
}  // namespace lamp::controller
