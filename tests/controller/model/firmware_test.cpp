#include "controller/model/firmware.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "controller/model/base64.h"
#include "controller/model/tar_archive.h"
#include "tests/controller/support/tar_maker.h"

namespace lamp::controller {
namespace {

using test::makeTar;

TEST(Base64, DecodesTheVectorsOfItsStandard) {
  const std::pair<const char*, const char*> vectors[] = {{"", ""},
                                                         {"Zg==", "f"},
                                                         {"Zm8=", "fo"},
                                                         {"Zm9v", "foo"},
                                                         {"Zm9vYg==", "foob"},
                                                         {"Zm9vYmE=", "fooba"},
                                                         {"Zm9v\nYmFy", "foobar"}};
  for (const auto& [text, bytes] : vectors) EXPECT_EQ(decodeBase64(text), bytes) << text;
}

TEST(Base64, TakesBackWhatWasEncoded) {
  std::string bytes;
  for (int i = 0; i < 1000; ++i) {
    const std::string text = test::encodeBase64(bytes);
    EXPECT_EQ(decodeBase64(text), bytes);
    EXPECT_EQ(
        decodeBase64(text.substr(0, text.size() / 2) + " \r\n" + text.substr(text.size() / 2)),
        bytes);
    bytes += static_cast<char>(i * 37 + i / 7);
  }
}

TEST(Base64, RefusesOtherTexts) {
  for (const char* text :
       {"Z", "Zg", "Zg=", "Zg===", "====", "Z===", "Zm9v!", "Zg==Zg==", "Zm-_"}) {
    EXPECT_FALSE(decodeBase64(text)) << text;
  }
}

TEST(TarArchive, ListsItsMembers) {
  const std::string archive =
      makeTar({{"a/one.bin", std::string(513, 'x')}, {"version", "1.2.3\n"}});
  const TarListing listing = listTar(archive);
  EXPECT_EQ(listing.fault, "");
  ASSERT_EQ(listing.members.size(), 2U);
  EXPECT_EQ(listing.members[0].name, "a/one.bin");
  EXPECT_EQ(listing.members[0].bytes.size(), 513U);
  EXPECT_EQ(listing.members[1].bytes, "1.2.3\n");
}

TEST(TarArchive, RefusesWhatIsNone) {
  std::string spoiled = makeTar({{"one", "x"}});
  spoiled[0] = 'X';
  const std::string cut = makeTar({{"one", std::string(2000, 'x')}}).substr(0, 1024);
  EXPECT_NE(listTar("").fault.find("empty"), std::string::npos);
  EXPECT_NE(listTar("no tar at all").fault.find("no tar"), std::string::npos);
  EXPECT_NE(listTar(std::string(2048, '\0')).fault.find("no member"), std::string::npos);
  EXPECT_NE(listTar(std::string(2048, 'x')).fault.find("ustar"), std::string::npos);
  EXPECT_NE(listTar(spoiled).fault.find("checksum"), std::string::npos);
  EXPECT_NE(listTar(cut).fault.find("cut off"), std::string::npos);
}

TEST(Firmware, TakesItsVersionFromTheMemberThenFromTheNameThenCountsOn) {
  const std::string plain = makeTar({{"image.bin", "x"}});
  const std::string marked = makeTar({{"fw/version", "3.1.0-rc1\nmore"}});
  EXPECT_EQ(inspectFirmware(marked, "C:\\fw\\lamp-2.0.tar", "1.9.9").version, "3.1.0-rc1");
  EXPECT_EQ(inspectFirmware(plain, "C:\\fw 7.7\\lamp-2.5.1.tar", "1.9.9").version, "2.5.1");
  EXPECT_EQ(inspectFirmware(plain, "/home/x/lamp.tar", "1.9.9").version, "1.9.10");
  EXPECT_EQ(inspectFirmware(plain, "lm3-4.5.tar", "1").version, "4.5");
  EXPECT_EQ(inspectFirmware(plain, "lamp 7..8.tar", "1").version, "2");
}

TEST(Firmware, IsKeptUnderAPlainNameInsideItsFolder) {
  const std::string plain = makeTar({{"image.bin", "x"}});
  EXPECT_EQ(inspectFirmware(plain, "C:\\a\\new lamp.tar", "1").fileName, "new_lamp.tar");
  EXPECT_EQ(inspectFirmware(plain, "/a/..", "1").fileName, "firmware.tar");
  EXPECT_EQ(inspectFirmware(plain, "", "1").fileName, "firmware.tar");
  EXPECT_EQ(inspectFirmware(plain, "new.tar.part", "1").fileName, "new.tar.part_");
}

}  // namespace
}  // namespace lamp::controller
