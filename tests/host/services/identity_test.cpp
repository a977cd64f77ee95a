#include "host/services/identity.h"

#include <gtest/gtest.h>

#include "tests/support/dialog_driver.h"
#include "tests/support/xml_compare.h"

namespace {

TEST(Guid, IsBracedUpperCaseWithVersionAndVariant) {
  support::DialogDriver driver;
  EXPECT_EQ(guidtow(NewGUID()), u"{00000000-0000-4000-8000-000000000001}");
  EXPECT_EQ(guidtow(NewGUID()), u"{00000000-0000-4000-8000-000000000002}");
  XCGuid guid;
  for (std::size_t i = 0; i < 16; ++i) guid.bytes[i] = static_cast<std::uint8_t>(0x11 * i);
  EXPECT_EQ(guidtow(guid), u"{00112233-4455-6677-8899-AABBCCDDEEFF}");
}

TEST(Guid, AllBitsOfTheSourceButSixAreKept) {
  class Ones : public host::IdSource {
   public:
    std::array<std::uint8_t, 16> next() override {
      std::array<std::uint8_t, 16> bytes{};
      bytes.fill(0xFF);
      return bytes;
    }
  } ones;
  support::DialogDriver driver;
  host::Services services = host::services();
  services.idService = &ones;
  host::installServices(services);
  EXPECT_EQ(guidtow(NewGUID()), u"{FFFFFFFF-FFFF-4FFF-BFFF-FFFFFFFFFFFF}");
}

TEST(Base64, EncodesTheVectorsOfTheStandard) {
  struct Row {
    const char* bytes;
    const char* text;
  };
  const Row rows[] = {{"", ""},
                      {"f", "Zg=="},
                      {"fo", "Zm8="},
                      {"foo", "Zm9v"},
                      {"foob", "Zm9vYg=="},
                      {"fooba", "Zm9vYmE="},
                      {"foobar", "Zm9vYmFy"}};
  for (const Row& row : rows) EXPECT_EQ(EncodeBase64(row.bytes), row.text);
}

TEST(Base64, EncodesEveryByteWithoutLineBreaks) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  const std::string text = EncodeBase64(bytes);
  EXPECT_EQ(text.substr(0, 16), "AAECAwQFBgcICQoL");
  EXPECT_EQ(text.substr(text.size() - 8), "/P3+/w==");
  EXPECT_EQ(text.size(), 344U);
  EXPECT_EQ(text.find_first_of("\r\n"), std::string::npos);
  EXPECT_EQ(EncodeBase64(std::string_view("\0", 1)), "AA==");
}

TEST(Utf16ToUtf8, ReplacesUnpairedSurrogates) {
  EXPECT_EQ(Utf16ToUtf8(u"a\u00F1\U0001F4A1"), "a\xC3\xB1\xF0\x9F\x92\xA1");
  EXPECT_EQ(Utf16ToUtf8(std::u16string(1, char16_t(0xDC00))), "\xEF\xBF\xBD");
}

std::u16string times(std::size_t count, const char16_t* text) {
  std::u16string out;
  for (std::size_t i = 0; i < count; ++i) out += text;
  return out;
}

TEST(IsValidId, TellsWhatMayNameAFile) {
  struct Row {
    std::u16string text;
    bool valid;
  };
  const Row rows[] = {
      {u"", false},
      {u"a", true},
      {u"Z9", true},
      {u"0", true},
      {u"_", true},
      {u"-", true},
      {u"a.b", true},
      {u".a", true},
      {u".", false},
      {u"..", false},
      {u"....", false},
      {u".-.", true},
      {u"a b", true},
      {u"a  b", true},
      {u" a", false},
      {u"a ", false},
      {u" ", false},
      {u". .", true},
      {times(64, u"x"), true},
      {times(65, u"x"), false},
      {times(64, u"ñ"), true},
      {times(64, u"\U00020000"), true},  // 64 characters in 128 units
      {times(65, u"\U00020000"), false},
      {u"Straße", true},
      {u"Ελλάδα", true},
      {u"Кириллица", true},
      {u"日本語", true},
      {u"עברית", true},
      {u"العربية", true},
      {u"\u0663", true},  // a digit of another script
      {u"a/b", false},
      {u"a\\b", false},
      {u"a:b", false},
      {u"a*b", false},
      {u"a?b", false},
      {u"a\"b", false},
      {u"a<b", false},
      {u"a|b", false},
      {u"a,b", false},
      {u"a;b", false},
      {u"a'b", false},
      {u"a+b", false},
      {u"a\tb", false},
      {u"a\nb", false},
      {std::u16string(u"a\0b", 3), false},
      {u"a\u007Fb", false},
      {u"a\u0085b", false},
      {u"a\u00A0b", false},  // only the plain blank is one
      {u"a\u200Bb", false},
      {u"a\u202Eb", false},
      {u"a\u2215b", false},
      {u"\U0001F4A1", false},
      {u"€", false},
      {std::u16string(1, char16_t(0xD83D)), false},
      {std::u16string(1, char16_t(0xDCA1)), false},
  };
  for (const Row& row : rows)
    EXPECT_EQ(IsValidId(row.text, true), row.valid) << XCBasicString(row.text).ToUtf8();
}

TEST(IsValidId, BlanksAreTakenOnlyWhenAllowed) {
  EXPECT_TRUE(IsValidId(u"a b", true));
  EXPECT_FALSE(IsValidId(u"a b", false));
  EXPECT_TRUE(IsValidId(u"ab", false));
}

class Names : public testing::Test {
 protected:
  XmlDocument document = support::parsedXml(
      "<commSystem><device><name>North</name></device><device><name>Süd</name></device>"
      "<device/></commSystem>");
  const XmlDocument::XmlNode* commSystem = document.Root();
};

TEST_F(Names, AreComparedWithoutCase) {
  EXPECT_FALSE(IsNameAllowed(u"North", commSystem));
  EXPECT_FALSE(IsNameAllowed(u"NORTH", commSystem));
  EXPECT_FALSE(IsNameAllowed(u"SÜD", commSystem));
  EXPECT_TRUE(IsNameAllowed(u"Nort", commSystem));
  EXPECT_TRUE(IsNameAllowed(u"North2", commSystem));
  EXPECT_TRUE(IsNameAllowed(u"Sud", commSystem));
}

TEST_F(Names, WithoutDevicesEveryNameIsFree) {
  EXPECT_TRUE(IsNameAllowed(u"North", nullptr));
  const XmlDocument empty("commSystem");
  EXPECT_TRUE(IsNameAllowed(u"North", empty.Root()));
}

TEST_F(Names, TheDeviceBeingEditedDoesNotCount) {
  const XmlDocument::XmlNode* north = commSystem->FirstChild();
  {
    const EditedDevice edited(north);
    EXPECT_TRUE(IsNameAllowed(u"NORTH", commSystem));
    EXPECT_FALSE(IsNameAllowed(u"süd", commSystem));
    {
      const EditedDevice inner(north->NextSibling());
      EXPECT_FALSE(IsNameAllowed(u"north", commSystem));
      EXPECT_TRUE(IsNameAllowed(u"süd", commSystem));
    }
    EXPECT_TRUE(IsNameAllowed(u"NORTH", commSystem)) << "the outer one again";
  }
  EXPECT_FALSE(IsNameAllowed(u"NORTH", commSystem));
}

}  // namespace
