#include "host/ui/user_input.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/host/support/sample_dialog.h"
#include "tests/support/dialog_driver.h"

using host::EditControl;
using host::Key;
using host::Outcome;
using sample::Id;
using support::DialogDriver;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class UserInputTest : public testing::Test {
 protected:
  void SetUp() override {
    dialog = &driver.show<sample::Dialog>();
    dialog->log.clear();
  }

  // Replaces the selected characters, as keys do.
  Outcome insert(const char* at, const char16_t* text) {
    return driver.perform([&](host::UserInput& input, XCBaseDlg&) {
      return input.insert(driver.as<EditControl>(at), text);
    });
  }
  Outcome erase(const char* at, bool forward) {
    return driver.perform([&](host::UserInput& input, XCBaseDlg&) {
      return input.erase(driver.as<EditControl>(at), forward);
    });
  }
  void select(const char* at, std::size_t from, std::size_t to) {
    driver.as<EditControl>(at).select(from, to);
  }

  sample::Module module;
  DialogDriver driver;
  sample::Dialog* dialog = nullptr;
};

// --- plain edits

TEST_F(UserInputTest, TypingReplacesTheWholeText) {
  driver.type("free", "one");
  driver.type("free", "two ñ");
  EXPECT_EQ(driver.text("free"), "two ñ");
  EXPECT_EQ(driver.focus(), "free");
  EXPECT_EQ(driver.selectedCharacters("free"), std::pair(std::size_t(5), std::size_t(5)));
  EXPECT_THAT(dialog->log, ElementsAre("change 6010", "change 6010"));
}

TEST_F(UserInputTest, TypingWhatIsThereTellsNobody) {
  driver.type("free", "one");
  driver.type("free", "one");
  driver.type("digits", "");
  driver.type("digits", "abc");
  EXPECT_THAT(dialog->log, ElementsAre("change 6010"));
}

TEST_F(UserInputTest, AnEmptyTextClears) {
  driver.type("free", "one");
  driver.type("free", "");
  EXPECT_EQ(driver.text("free"), "");
  EXPECT_THAT(dialog->log, ElementsAre("change 6010", "change 6010"));
}

TEST_F(UserInputTest, TheCharacterBeyondTheLimitIsDropped) {
  driver.type("limited", std::string(58, 'x'));
  EXPECT_EQ(driver.text("limited").size(), 58U);
  driver.type("limited", std::string(59, 'x'));
  EXPECT_EQ(driver.text("limited").size(), 59U);
  driver.type("limited", std::string(60, 'x'));
  EXPECT_EQ(driver.text("limited").size(), 59U);
  driver.type("limited", std::string(59, 'y') + "z");
  EXPECT_EQ(driver.text("limited"), std::string(59, 'y'));
}

TEST_F(UserInputTest, TheLimitNeverSplitsAPairOfSurrogates) {
  driver.type("limited", std::string(57, 'x') + "\U0001F4A1");
  EXPECT_EQ(driver.text("limited"), std::string(57, 'x') + "\U0001F4A1") << "59 units fit";
  driver.type("limited", std::string(58, 'x') + "\U0001F4A1");
  EXPECT_EQ(driver.text("limited"), std::string(58, 'x')) << "half a character does not";
}

TEST_F(UserInputTest, ADroppedPairLeavesNoHalfBehind) {
  driver.type("limited", std::string(58, 'x') + "\U0001F4A1y");
  EXPECT_EQ(driver.text("limited"), std::string(58, 'x'))
      << "what comes behind the character that did not fit does not fit either";
}

TEST_F(UserInputTest, WithoutALimitEverythingFits) {
  driver.type("free", std::string(100000, 'x'));
  EXPECT_EQ(driver.text("free").size(), 100000U);
}

TEST_F(UserInputTest, ControlCharactersAreDropped) {
  driver.type("free", "a\tb\r\nc\x7F\x01 d\u2028e");
  EXPECT_EQ(driver.text("free"), "abc de");
}

TEST_F(UserInputTest, DigitsOnlyTakesAsciiDigits) {
  driver.type("digits", "1a2-3 \u0664\uFF15.4");
  EXPECT_EQ(driver.text("digits"), "1234");
  driver.type("digits", "-123456");
  EXPECT_EQ(driver.text("digits"), "12345") << "dropped characters don't count for the limit";
}

TEST_F(UserInputTest, InsertingReplacesTheSelectionUnderTheLimit) {
  driver.type("digits", "12345");
  select("digits", 1, 3);
  EXPECT_TRUE(insert("digits", u"987").done);
  EXPECT_EQ(driver.text("digits"), "19845");
  EXPECT_EQ(driver.selectedCharacters("digits"), std::pair(std::size_t(3), std::size_t(3)));
  EXPECT_TRUE(insert("digits", u"7").done);
  EXPECT_EQ(driver.text("digits"), "19845") << "full";
}

TEST_F(UserInputTest, BackspaceAndDeleteTakeOneCharacterOrTheSelection) {
  driver.type("free", "abcdef");
  select("free", 3, 3);
  erase("free", false);
  EXPECT_EQ(driver.text("free"), "abdef");
  erase("free", true);
  EXPECT_EQ(driver.text("free"), "abef");
  EXPECT_EQ(driver.selectedCharacters("free"), std::pair(std::size_t(2), std::size_t(2)));
  select("free", 1, 3);
  erase("free", true);
  EXPECT_EQ(driver.text("free"), "af");
  select("free", 0, 0);
  erase("free", false);
  EXPECT_EQ(driver.text("free"), "af") << "nothing is in front";
  select("free", 2, 2);
  erase("free", true);
  EXPECT_EQ(driver.text("free"), "af") << "nothing is behind";
}

TEST_F(UserInputTest, ASurrogatePairIsErasedAsOne) {
  driver.type("free", "a\U0001F4A1b");
  select("free", 3, 3);
  erase("free", false);
  EXPECT_EQ(driver.text("free"), "ab");
  driver.type("free", "a\U0001F4A1b");
  select("free", 1, 1);
  erase("free", true);
  EXPECT_EQ(driver.text("free"), "ab");
}

TEST_F(UserInputTest, AReadOnlyEditRefusesKeysAndTakesTheProgramsText) {
  const Outcome refused = driver.tryType("readOnly", "x");
  EXPECT_FALSE(refused.done);
  EXPECT_THAT(refused.reason, HasSubstr("read-only"));
  EXPECT_FALSE(insert("readOnly", u"x").done);
  EXPECT_FALSE(erase("readOnly", true).done);
  dialog->SetDlgItemText(Id::ReadOnly, u"set");
  EXPECT_EQ(driver.text("readOnly"), "set");
}

TEST_F(UserInputTest, TheProgramsTextIsNotHeldToTheLimit) {
  dialog->SetDlgItemText(Id::Limited, std::u16string(200, u'x'));
  EXPECT_EQ(driver.text("limited").size(), 200U);
  EXPECT_THAT(dialog->log, ElementsAre("change 6011")) << "a change by either is told";
  driver.type("limited", "short");
  EXPECT_EQ(driver.text("limited"), "short");
}

TEST_F(UserInputTest, KeysInAnOverlongTextOnlyShortenIt) {
  dialog->SetDlgItemText(Id::Limited, std::u16string(62, u'x'));
  select("limited", 0, 4);
  insert("limited", u"yyy");
  EXPECT_EQ(driver.text("limited"), "y" + std::string(58, 'x')) << "what was free took one";
}

// --- masks

TEST_F(UserInputTest, AMaskedFieldShowsItsSeparators) {
  driver.type("masked", "15072024103000");
  EXPECT_EQ(driver.text("masked"), "15/07/2024 10:30:00");
  driver.type("masked", "01/02/2025 03:04:05");
  EXPECT_EQ(driver.text("masked"), "01/02/2025 03:04:05");
}

TEST_F(UserInputTest, EmptyPlacesOfAMaskShowItsFill) {
  driver.type("masked", "15");
  EXPECT_EQ(driver.text("masked"), "15/00/0000 00:00:00");
  driver.type("masked", "");
  EXPECT_EQ(driver.text("masked"), "00/00/0000 00:00:00");
}

TEST_F(UserInputTest, AMaskDropsWhatFitsNowhere) {
  driver.type("masked", "1a5-0x7\U0001F4A120 24");
  EXPECT_EQ(driver.text("masked"), "15/07/2024 00:00:00");
  driver.type("masked", "150720241030001234567");
  EXPECT_EQ(driver.text("masked"), "15/07/2024 10:30:00");
}

TEST_F(UserInputTest, KeysInAMaskWriteOverThePlaces) {
  driver.type("masked", "15072024103000");
  select("masked", 3, 3);
  insert("masked", u"12");
  EXPECT_EQ(driver.text("masked"), "15/12/2024 10:30:00");
  EXPECT_EQ(driver.selectedCharacters("masked").first, 5U);
  insert("masked", u"1");
  EXPECT_EQ(driver.text("masked"), "15/12/1024 10:30:00") << "the separator was stepped over";
  EXPECT_EQ(driver.selectedCharacters("masked").first, 7U);
}

TEST_F(UserInputTest, ErasingInAMaskEmptiesPlaces) {
  driver.type("masked", "15072024103000");
  select("masked", 3, 3);
  erase("masked", false);
  EXPECT_EQ(driver.text("masked"), "10/07/2024 10:30:00") << "back over the separator";
  EXPECT_EQ(driver.selectedCharacters("masked").first, 1U);
  select("masked", 2, 2);
  erase("masked", true);
  EXPECT_EQ(driver.text("masked"), "10/07/2024 10:30:00") << "the digit behind was 0 already";
  EXPECT_EQ(driver.selectedCharacters("masked").first, 4U);
  select("masked", 0, 19);
  erase("masked", true);
  EXPECT_EQ(driver.text("masked"), "00/00/0000 00:00:00");
}

TEST_F(UserInputTest, ASelectionInAMaskIsEmptiedBeforeTyping) {
  driver.type("masked", "15072024103000");
  select("masked", 0, 19);
  insert("masked", u"3");
  EXPECT_EQ(driver.text("masked"), "30/00/0000 00:00:00");
}

TEST_F(UserInputTest, WhatIsNoCharacterIsDropped) {
  auto& edit = driver.as<host::EditControl>("limited");
  const auto typed = [&](std::u16string_view text) {
    driver.perform([&](host::UserInput& input, XCBaseDlg&) { return input.type(edit, text); });
    return edit.text();
  };
  EXPECT_EQ(typed(u"a\uFFFEb\uFFFFc"), u"abc");
  EXPECT_EQ(typed(u"\uFFFF"), u"");
  EXPECT_EQ(typed(u"\uFFFD\uFDD0"), u"\uFFFD\uFDD0") << "both are characters of XML";
  const std::u16string halves = {u'a', 0xD83D, u'b', 0xDCA1, u'c', 0xD83D};
  EXPECT_EQ(typed(halves), u"abc") << "halves of a pair";
  EXPECT_EQ(typed(u"\U0001F4A1\U0001FFFF"), u"\U0001F4A1\U0001FFFF");
}

// --- addresses

TEST_F(UserInputTest, AnAddressIsTypedWithItsDots) {
  struct Row {
    const char* typed;
    const char* shown;
  };
  const Row rows[] = {{"192.168.1.10", "192.168.1.10"},
                      {"10.0.0.256", "10.0.0.255"},
                      {"10.0.0.99999999999", "10.0.0.255"},
                      {"10", "10.0.0.0"},
                      {"10..1", "10.0.1.0"},
                      {"1.2.3.4.5", "1.2.3.4"},
                      {"01.002.3.04", "1.2.3.4"},
                      {" 1x0.2", "10.2.0.0"},
                      {"0.0.0.0", "0.0.0.0"},
                      {"...", "0.0.0.0"},
                      {"1.2.3.4", "1.2.3.4"},
                      {"host.example", "0.0.0.0"},
                      {"1.2.3.4", "1.2.3.4"},
                      {"", "0.0.0.0"}};
  for (const Row& row : rows) {
    driver.type("ip", row.typed);
    EXPECT_EQ(driver.text("ip"), row.shown) << row.typed;
  }
}

TEST_F(UserInputTest, AnAddressThatWasNeverFilledStaysEmptyUntilItIsTypedInto) {
  for (const char* nothing : {"", "...", "host"}) {
    driver.type("ip", nothing);
    EXPECT_EQ(driver.text("ip"), "") << nothing;
  }
  driver.type("ip", "0");
  EXPECT_EQ(driver.text("ip"), "0.0.0.0");
}

TEST_F(UserInputTest, AnAddressTellsItsChangesOnce) {
  EXPECT_EQ(driver.text("ip"), "");
  driver.type("ip", "");
  EXPECT_THAT(dialog->log, IsEmpty());
  driver.type("ip", "1.2.3.4");
  driver.type("ip", "1.2.3.4");
  EXPECT_THAT(dialog->log, ElementsAre("change 6019"));
}

// --- choices

TEST_F(UserInputTest, ChoosingAnEntryTellsOnce) {
  EXPECT_EQ(driver.selectedIndex("choice"), std::nullopt);
  driver.choose("choice", 1);
  EXPECT_EQ(driver.selectedItem("choice"), "entry 1");
  EXPECT_EQ(driver.as<host::ComboControl>("choice").selectedData(), 10);
  driver.choose("choice", "entry 1");
  EXPECT_THAT(dialog->log, ElementsAre("choose 6016"));
}

TEST_F(UserInputTest, AnEntryThatDoesNotExistIsRefused) {
  EXPECT_FALSE(driver.tryChoose("choice", 3).done);
  EXPECT_FALSE(driver.tryChoose("choice", -1).done);
  EXPECT_FALSE(driver.tryChoose("choice", "entry 9").done);
  EXPECT_EQ(driver.selectedIndex("choice"), std::nullopt);
}

TEST_F(UserInputTest, TheProgramsChoiceTellsNobody) {
  auto& combo = driver.as<host::ComboControl>("choice");
  combo.selectData(20);
  EXPECT_EQ(driver.selectedItem("choice"), "entry 2");
  combo.selectData(99);
  EXPECT_EQ(driver.selectedIndex("choice"), std::nullopt);
  combo.select(7);
  EXPECT_EQ(driver.selectedIndex("choice"), std::nullopt);
  combo.select(0);
  combo.clearItems();
  EXPECT_EQ(driver.selectedIndex("choice"), std::nullopt);
  EXPECT_EQ(combo.selectedData(), std::nullopt);
  EXPECT_THAT(dialog->log, IsEmpty());
}

TEST_F(UserInputTest, ADropDownListIsNotTypedInto) {
  EXPECT_THAT(driver.tryType("choice", "x").reason, HasSubstr("can't be typed into"));
}

TEST_F(UserInputTest, ACheckBoxTellsOnlyWhenItChanges) {
  driver.check("check", false);
  EXPECT_THAT(dialog->log, IsEmpty());
  driver.check("check", true);
  EXPECT_TRUE(driver.checked("check"));
  driver.check("check", true);
  driver.click("check");
  EXPECT_FALSE(driver.checked("check"));
  EXPECT_THAT(dialog->log, ElementsAre("click 6009", "click 6009"));
}

TEST_F(UserInputTest, RadioButtonsThatStandTogetherExcludeOneAnother) {
  driver.click("radioA");
  driver.click("radioD");
  driver.click("radioC");
  EXPECT_FALSE(driver.checked("radioA"));
  EXPECT_FALSE(driver.checked("radioB"));
  EXPECT_TRUE(driver.checked("radioC"));
  EXPECT_TRUE(driver.checked("radioD")) << "behind another control it is another group";
  driver.check("radioB", true);
  EXPECT_FALSE(driver.checked("radioC"));
  EXPECT_FALSE(driver.tryCheck("radioB", false).done);
  EXPECT_TRUE(driver.checked("radioB"));
}

TEST_F(UserInputTest, AButtonIsClickedAndNothingElseIs) {
  driver.click("push");
  EXPECT_THAT(dialog->log, ElementsAre("click 6002"));
  EXPECT_EQ(driver.focus(), "push");
  for (const char* name : {"title", "box", "free", "choice", "rows", "picture", "year"})
    EXPECT_FALSE(driver.tryClick(name).done) << name;
}

// --- what is disabled, hidden or closed

TEST_F(UserInputTest, ADisabledControlRefusesWithItsReason) {
  dialog->GetDlgItem(Id::Disabled).setEnabled(false, u"no controller");
  const Outcome refused = driver.tryClick("disabled");
  EXPECT_FALSE(refused.done);
  EXPECT_EQ(refused.reason, "the control \"disabled\" is disabled: no controller");
  dialog->GetDlgItem(Id::Disabled).setEnabled(true);
  driver.click("disabled");
}

TEST_F(UserInputTest, AHiddenControlRefuses) {
  EXPECT_EQ(driver.tryType("hidden", "x").reason, "the control \"hidden\" is hidden");
  EXPECT_EQ(driver.text("hidden"), "");
}

TEST_F(UserInputTest, EveryGestureOnADisabledControlIsRefused) {
  for (const auto& control : dialog->Controls()) control->setEnabled(false);
  EXPECT_FALSE(driver.tryType("free", "x").done);
  EXPECT_FALSE(driver.tryType("ip", "1.2.3.4").done);
  EXPECT_FALSE(insert("free", u"x").done);
  EXPECT_FALSE(erase("free", true).done);
  EXPECT_FALSE(driver.tryChoose("choice", 0).done);
  EXPECT_FALSE(driver.tryCheck("check", true).done);
  EXPECT_FALSE(driver.tryClick("push").done);
  EXPECT_FALSE(driver.trySelect("rows", {}).done);
  EXPECT_FALSE(driver.tryPress("rows", Key::deleteKey).done);
  EXPECT_FALSE(driver.tryDoubleClick("rows", 0).done);
  EXPECT_FALSE(driver.trySort("rows", 0).done);
  EXPECT_FALSE(driver.tryPaint("year", {2025, 1, 1}).done);
  EXPECT_THAT(dialog->log, IsEmpty());
  driver.close();
}

TEST_F(UserInputTest, AClosedDialogRefusesEverything) {
  sample::Dialog* const closed = dialog;
  driver.click("ok");
  host::UserInput input(*closed);
  EXPECT_EQ(input.click(*closed->FindControl("push")).reason, "the dialog is closed");
  EXPECT_EQ(input.close().reason, "the dialog is closed");
}

// --- keys

TEST_F(UserInputTest, EnterPressesOkAndEscapeCancel) {
  driver.press("free", Key::enter);
  EXPECT_EQ(driver.result(), IDOK);
  driver.show<sample::Dialog>();
  driver.press("free", Key::escape);
  EXPECT_EQ(driver.result(), IDCANCEL);
}

TEST_F(UserInputTest, EnterOnAButtonClicksThatButton) {
  driver.press("push", Key::enter);
  EXPECT_THAT(dialog->log, ElementsAre("click 6002"));
  EXPECT_EQ(driver.result(), std::nullopt);
}

TEST_F(UserInputTest, EnterDoesNothingWhileOkIsDisabled) {
  dialog->GetDlgItem(IDOK).setEnabled(false);
  driver.press("free", Key::enter);
  EXPECT_EQ(driver.result(), std::nullopt);
  EXPECT_THAT(dialog->log, IsEmpty());
}

TEST_F(UserInputTest, DeleteInAnEditErasesAndInAListIsTold) {
  driver.type("free", "abc");
  select("free", 0, 0);
  driver.press("free", Key::deleteKey);
  EXPECT_EQ(driver.text("free"), "bc");
  dialog->log.clear();
  driver.press("rows", Key::deleteKey);
  driver.press("rows", Key::insert);
  EXPECT_THAT(dialog->log, ElementsAre("key 6017 0", "key 6017 1"));
  driver.press("push", Key::deleteKey);
  EXPECT_EQ(dialog->log.size(), 2U);
}

// --- focus

TEST_F(UserInputTest, TheFocusFollowsTheGestures) {
  EXPECT_EQ(driver.focus(), "push") << "the first control that takes it";
  driver.check("check", true);
  EXPECT_EQ(driver.focus(), "check");
  driver.perform(
      [this](host::UserInput& input, XCBaseDlg&) { return input.focus(driver.control("free")); });
  EXPECT_EQ(driver.focus(), "free");
  driver.tryClick("disabled");
  EXPECT_EQ(driver.focus(), "free");
}

TEST_F(UserInputTest, TheYearShownIsChosenWithinTheSpan) {
  const auto show = [this](int year) {
    return driver.perform([&, year](host::UserInput& input, XCBaseDlg&) {
      return input.showYear(driver.as<XCCalendar>("year"), year);
    });
  };
  EXPECT_EQ(driver.as<XCCalendar>("year").ShownYear(), 2025);
  EXPECT_TRUE(show(2026).done);
  EXPECT_EQ(driver.as<XCCalendar>("year").ShownYear(), 2026);
  EXPECT_FALSE(show(2027).done);
  EXPECT_FALSE(show(2024).done);
  EXPECT_EQ(driver.as<XCCalendar>("year").ShownYear(), 2026);
}

}  // namespace
