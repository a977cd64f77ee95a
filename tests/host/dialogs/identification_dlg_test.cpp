#include "host/dialogs/identification_dlg.h"

#include <gtest/gtest.h>

#include "host/services/identity.h"
#include "tests/support/dialog_driver.h"

namespace {

using support::TopKind;

class IdentificationEntry : public testing::Test {
 protected:
  CDlgIntroduceIdentification& open(std::u16string_view proposed = {}) {
    return driver.show<CDlgIntroduceIdentification>(nullptr, u"Save as", u"Name", proposed);
  }
  support::DialogDriver driver;
};

TEST_F(IdentificationEntry, OpensWithTheProposedTextSelected) {
  open(u"Winter");
  EXPECT_EQ(driver.title(), "Save as");
  EXPECT_EQ(driver.text("label"), "Name");
  EXPECT_EQ(driver.text("identification"), "Winter");
  EXPECT_EQ(driver.focus(), "identification");
  EXPECT_EQ(driver.selectedCharacters("identification"), std::pair(std::size_t(0), std::size_t(6)));
}

TEST_F(IdentificationEntry, TakesWhatIsAnIdentification) {
  for (const std::string& text :
       {std::string("a"), std::string("Año 2025 - b_c.d"), std::string(64, 'x'),
        std::string("CONSOLE"), std::string("com0")}) {
    auto& dialog = open();
    driver.type("identification", text);
    driver.click("ok");
    EXPECT_EQ(driver.result(), IDOK) << text;
    EXPECT_EQ(dialog.Identification().ToUtf8(), text);
  }
}

TEST_F(IdentificationEntry, AnswersAnythingElseAndStaysOpen) {
  open();
  for (const std::string& text :
       {std::string(), std::string("."), std::string(".."), std::string("../a"), std::string("a/b"),
        std::string("a\\b"), std::string(" a"), std::string("a "), std::string("a*"),
        std::string(65, 'x'), std::string(300, 'x'), std::string("con"), std::string("LPT1.txt")}) {
    driver.type("identification", text);
    driver.click("ok");
    ASSERT_EQ(driver.top(), TopKind::message) << text;
    EXPECT_EQ(driver.message().text, "[32764]");
    driver.answer(host::MessageAnswer::ok);
    EXPECT_EQ(driver.focus(), "identification");
    EXPECT_EQ(driver.selectedCharacters("identification"), std::pair(std::size_t(0), text.size()));
    EXPECT_EQ(driver.result(), std::nullopt);
  }
  driver.click("cancel");
  EXPECT_EQ(driver.result(), IDCANCEL);
}

TEST_F(IdentificationEntry, EnterConfirms) {
  open(u"Winter");
  driver.press("identification", host::Key::enter);
  EXPECT_EQ(driver.result(), IDOK);
}

TEST(DeviceNames, AreKnownInAnyCaseAndWithAnyEnding) {
  for (const char16_t* name : {u"con", u"PRN", u"Aux", u"nul", u"NUL.txt", u"nul.tar.gz", u"com1",
                               u"COM9", u"lpt1", u"LPT9.a", u"con ", u"con .txt"})
    EXPECT_TRUE(host::isDeviceName(name)) << XCBasicString(name).ToUtf8();
  for (const char16_t* name : {u"", u"cons", u"co", u"com", u"com0", u"com10", u"comx", u"lpt",
                               u"a.con", u"my nul", u".con"})
    EXPECT_FALSE(host::isDeviceName(name)) << XCBasicString(name).ToUtf8();
}

}  // namespace
