#include "pages/firmware_page.h"

#include <gtest/gtest.h>

#include "host/services/identity.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/edited_page.h"
#include "tests/support/faulty_files.h"
#include "tests/support/lamp_manager.h"
#include "tests/support/odd_file.h"
#include "tests/support/temp_folder.h"
#include "tests/support/xml_compare.h"

namespace {

using support::TopKind;

class FirmwarePage : public testing::Test {
 protected:
  void open() {
    driver.show<CDlgE03CfgZelLampManager>(&manager.driver, nullptr);
    ASSERT_EQ(driver.top(), TopKind::dialog);
  }
  void load(const std::filesystem::path& file) {
    driver.click("load");
    driver.pick(file);
  }
  void expectSent(const std::string& base64, const std::string& path, const std::string& stamp) {
    ASSERT_EQ(driver.channel().count(), 1U);
    EXPECT_EQ(driver.channel().last().command, 52);
    EXPECT_EQ(driver.channel().last().kind, host::CommandKind::put);
    EXPECT_XML_EQ("<deviceCfg><firmwareFile>" + base64 + "</firmwareFile><E03 Firmware=\"" + path +
                      "\" ActDate=\"" + stamp + "\"/></deviceCfg>",
                  driver.channel().last().request);
  }
  void expectRefusedDate() {
    ASSERT_EQ(driver.top(), TopKind::message);
    EXPECT_EQ(driver.message().text, "[38408]");
    driver.answer(host::MessageAnswer::ok);
    EXPECT_EQ(driver.focus(), "activation");
    EXPECT_EQ(driver.selectedCharacters("activation"),
              (std::pair<std::size_t, std::size_t>{0, 19}));
    EXPECT_EQ(driver.channel().count(), 0U);
  }

  support::LampManager manager;
  support::TempFolder folder;
  support::DialogDriver driver;
};

TEST_F(FirmwarePage, OpensWithoutAskingTheControllerForAnything) {
  open();
  EXPECT_EQ(driver.title(), "[38003]");
  EXPECT_EQ(driver.text("fileGroup"), "[38003]");
  EXPECT_EQ(driver.text("fileLabel"), "[32378]");
  EXPECT_EQ(driver.text("activationLabel"), "[32055]");
  EXPECT_EQ(driver.text("load"), "[35651]");
  EXPECT_EQ(driver.text("ok"), "[36777]");
  EXPECT_EQ(driver.text("cancel"), "[312]");
  EXPECT_EQ(driver.text("file"), "");
  EXPECT_EQ(driver.text("activation"), "15/03/2025 10:00:00");
  driver.click("cancel");
  EXPECT_EQ(driver.result(), IDCANCEL);
  EXPECT_EQ(driver.channel().count(), 0U);
}

TEST_F(FirmwarePage, TheFileIsChosenAndNotTyped) {
  open();
  EXPECT_FALSE(driver.tryType("file", "/tmp/x.tar").done);
  driver.click("load");
  ASSERT_EQ(driver.top(), TopKind::file);
  ASSERT_EQ(driver.fileRequest().filters.size(), 1U);
  EXPECT_EQ(driver.fileRequest().filters[0].description, u"[38414]");
  EXPECT_EQ(driver.fileRequest().filters[0].pattern, "*.tar");
  EXPECT_EQ(driver.fileRequest().parent, &driver.dialog());
  const auto file = folder.write("lamp.tar", "x");
  driver.pick(file);
  EXPECT_EQ(driver.text("file"), file.string());
}

TEST_F(FirmwarePage, ACancelledChoiceKeepsThePreviousOne) {
  open();
  const auto file = folder.write("lamp.tar", "abc");
  load(file);
  load({});
  EXPECT_EQ(driver.text("file"), file.string());
  driver.click("ok");
  expectSent("YWJj", file.string(), "20250315100000W");
}

TEST_F(FirmwarePage, AnotherChoiceReplacesThePreviousOne) {
  open();
  load(folder.write("old.tar", "old"));
  const auto file = folder.write("new.tar", "new");
  load(file);
  driver.click("ok");
  expectSent("bmV3", file.string(), "20250315100000W");
}

TEST_F(FirmwarePage, SendsTheBytesTheFullPathAndTheDate) {
  const std::pair<const char*, const char*> dates[] = {
      {"01/07/2024 12:00:00", "20240701120000S"}, {"01/01/2025 00:00:00", "20250101000000W"},
      {"31/03/2024 02:59:59", "20240331025959W"}, {"31/03/2024 03:00:00", "20240331030000S"},
      {"27/10/2024 01:59:59", "20241027015959S"}, {"27/10/2024 02:00:00", "20241027020000W"}};
  const auto file = folder.write("lamp.tar", std::string("\0\xFF\x80<", 4));
  for (const auto& [typed, stamp] : dates) {
    open();
    load(file);
    driver.type("activation", typed);
    driver.click("ok");
    expectSent("AP+APA==", file.string(), stamp);
    EXPECT_EQ(driver.result(), IDOK);
    EXPECT_EQ(driver.top(), TopKind::none);
    driver.channel().forget();
  }
}

TEST_F(FirmwarePage, ARelativePathIsShownAndSentAsTheFullOne) {
  const auto file = folder.write("lamp.tar", "abc");
  open();
  load(std::filesystem::relative(file));
  EXPECT_EQ(driver.text("file"), file.string());
  driver.click("ok");
  expectSent("YWJj", file.string(), "20250315100000W");
}

TEST_F(FirmwarePage, APathGoesAsItStands) {
  const auto file = folder.write("año & <nuevo>.tar", "abc");
  open();
  load(file);
  driver.click("ok");
  expectSent("YWJj", (folder / "").string() + "año &amp; &lt;nuevo>.tar", "20250315100000W");
}

TEST_F(FirmwarePage, AFileWhoseNameIsNoTextIsReadAllTheSame) {
  const auto file = folder.write("caf\xE9.tar", "abc");
  open();
  load(file);
  driver.click("ok");
  expectSent("YWJj", (folder / "").string() + "caf\uFFFD.tar", "20250315100000W");
}

TEST_F(FirmwarePage, AnEmptyFileIsSentWithAnEmptyValue) {
  const auto file = folder.write("empty.tar", "");
  open();
  load(file);
  driver.click("ok");
  expectSent("", file.string(), "20250315100000W");
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(FirmwarePage, ALargeFileIsSentWhole) {
  std::string bytes(3 * 1024 * 1024, '\0');
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 7 % 251);
  const auto file = folder.write("large.tar", bytes);
  open();
  load(file);
  driver.click("ok");
  ASSERT_EQ(driver.channel().count(), 1U);
  const XmlDocument sent = support::parsedXml(driver.channel().last().request);
  EXPECT_EQ(sent.Root()->Value("firmwareFile").ToUtf8(), EncodeBase64(bytes));
}

TEST_F(FirmwarePage, OkWithoutAFileOpensTheChoiceInsteadOfSending) {
  open();
  driver.click("ok");
  ASSERT_EQ(driver.top(), TopKind::file);
  const auto file = folder.write("lamp.tar", "abc");
  driver.pick(file);
  ASSERT_EQ(driver.top(), TopKind::dialog) << "the page stays open";
  EXPECT_EQ(driver.channel().count(), 0U);
  EXPECT_EQ(driver.text("file"), file.string());
  driver.click("ok");
  expectSent("YWJj", file.string(), "20250315100000W");
}

TEST_F(FirmwarePage, WhateverStandsInPlaceOfTheFileIsNotWaitedForAndNotChanged) {
  using support::Odd;
  for (const Odd odd : support::AllOdd) {
    SCOPED_TRACE(nameOf(odd));
    const support::TempFolder place;
    const support::OddFile thing(place / "lamp.tar", odd, "abcdef");
    const bool isFile = thing.refusal(host::NamedBy::person).empty();
    open();
    load(place / "lamp.tar");
    driver.click("ok");
    EXPECT_EQ(driver.top(), isFile ? TopKind::none : TopKind::file);
    EXPECT_EQ(driver.channel().count(), isFile ? 1U : 0U);
    EXPECT_TRUE(thing.isUntouched());
    if (!isFile) driver.pick({});
    if (!isFile) driver.click("cancel");
    driver.channel().forget();
  }
}

TEST_F(FirmwarePage, AnUnreadableFileOpensTheChoiceWithoutAMessage) {
  std::filesystem::create_directory(folder / "folder.tar");
  for (const char* name : {"missing.tar", "folder.tar"}) {
    open();
    load(folder / name);
    EXPECT_EQ(driver.text("file"), (folder / name).string());
    driver.click("ok");
    ASSERT_EQ(driver.top(), TopKind::file) << name;
    driver.pick({});
    EXPECT_EQ(driver.top(), TopKind::dialog);
    EXPECT_EQ(driver.text("file"), (folder / name).string());
    EXPECT_EQ(driver.channel().count(), 0U);
    driver.closeAll();
  }
}

TEST_F(FirmwarePage, AReadThatBreaksOffOpensTheChoice) {
  support::FaultyFiles files;
  open();
  load(folder.write("lamp.tar", "abc"));
  files.fail(support::FaultyFiles::Operation::read, "Input/output error");
  driver.click("ok");
  ASSERT_EQ(driver.top(), TopKind::file);
  driver.pick({});
  files.repair();
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(FirmwarePage, TheFileIsLookedAtBeforeTheDate) {
  open();
  driver.type("activation", "31/02/2024 00:00:00");
  driver.click("ok");
  ASSERT_EQ(driver.top(), TopKind::file) << "not the message about the date";
  driver.pick(folder.write("lamp.tar", "abc"));
  driver.click("ok");
  expectRefusedDate();
}

TEST_F(FirmwarePage, AnInvalidDateIsRefusedAfterTheFileWasRead) {
  support::FaultyFiles files;
  const auto file = folder.write("lamp.tar", "abc");
  open();
  load(file);
  driver.type("activation", "31/02/2024 00:00:00");
  driver.click("ok");
  expectRefusedDate();
  using Operation = support::FaultyFiles::Operation;
  EXPECT_EQ(files.calls(), std::vector<Operation>{Operation::read});
  driver.type("activation", "29/02/2024 00:00:00");
  driver.click("ok");
  expectSent("YWJj", file.string(), "20240229000000W");
}

TEST_F(FirmwarePage, TheFileIsReadAnewAtEachAttempt) {
  const auto file = folder.write("lamp.tar", "abc");
  open();
  load(file);
  driver.channel().failWith("Busy.");
  driver.click("ok");
  driver.answer(host::MessageAnswer::ok);
  folder.write("lamp.tar", "new");
  driver.channel().forget();
  driver.click("ok");
  expectSent("bmV3", file.string(), "20250315100000W");
}

TEST_F(FirmwarePage, ARefusalIsShownOnceWithOkAndThePageStays) {
  const std::pair<const char*, const char*> failures[] = {
      {"Not for this model.", "Not for this model.\r\n\r\n[329]"}, {"", "[329]"}};
  for (const auto& [error, text] : failures) {
    open();
    load(folder.write("lamp.tar", "abc"));
    driver.channel().failWith(error);
    driver.click("ok");
    ASSERT_EQ(driver.top(), TopKind::message);
    EXPECT_EQ(driver.message().text, text);
    EXPECT_EQ(driver.message().buttons, host::MessageButtons::ok);
    driver.answer(host::MessageAnswer::ok);
    ASSERT_EQ(driver.top(), TopKind::dialog);
    EXPECT_EQ(driver.channel().count(), 1U) << "there is no retry";
    driver.click("ok");
    EXPECT_EQ(driver.result(), IDOK);
    driver.channel().forget();
  }
}

TEST_F(FirmwarePage, AnUploadThatTheUserCancelledShowsNothingAndThePageStays) {
  open();
  load(folder.write("lamp.tar", "abc"));
  driver.channel().cancel();
  driver.click("ok");
  EXPECT_EQ(driver.top(), TopKind::dialog);
}

TEST_F(FirmwarePage, TheCursorWaitsWhileItSends) {
  open();
  load(folder.write("lamp.tar", "abc"));
  driver.clearLogs();
  driver.click("ok");
  EXPECT_EQ(driver.cursorLog(),
            (std::vector<host::CursorShape>{host::CursorShape::wait, host::CursorShape::arrow}));
}

TEST_F(FirmwarePage, TheFileIsItsOnlyChange) {
  using Texts = std::vector<std::string>;
  open();
  driver.type("activation", "31/02/2024 00:00:00");
  EXPECT_EQ(support::changesOn(driver.dialog()), Texts{});
  EXPECT_EQ(support::faultsOn(driver.dialog()), Texts{}) << "there is nothing to send";
  const auto file = folder.write("lamp.tar", "x");
  load(file);
  EXPECT_EQ(support::changesOn(driver.dialog()),
            Texts{"null Firmware [32378]: null -> " + file.string()});
  EXPECT_EQ(support::faultsOn(driver.dialog()), Texts{"null ActDate: [38408]"});
}

}  // namespace
