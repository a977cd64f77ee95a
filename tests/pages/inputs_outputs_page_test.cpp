#include "pages/inputs_outputs_page.h"

#include <algorithm>

#include "tests/pages/section_page_test.h"
#include "tests/support/edited_page.h"

namespace {

using pages_test::NowStamp;
using pages_test::Texts;
using support::changesOn;
using support::faultsOn;
using support::TopKind;

constexpr const char* Switches[] = {"Ocaso", "Orto", "In1", "In2", "In3",     "In4",
                                    "In5",   "In6",  "In7", "In8", "SincNode"};

std::string input(int number, const std::string& spontaneous = "N",
                  const std::string& value = "0") {
  return "<Input Dir=\"" + std::to_string(number) + "\" Value=\"" + value + "\" SponEnable=\"" +
         spontaneous + "\"/>";
}

// An output whose switches are off but for those that are named.
std::string output(int number, const std::vector<std::string>& switchedBy = {},
                   const std::string& on = "N", const std::string& off = "N",
                   const std::string& value = "0") {
  std::string text = "<Output Dir=\"" + std::to_string(number) + "\" Value=\"" + value + "\"";
  for (const char* name : Switches) {
    const bool named = std::find(switchedBy.begin(), switchedBy.end(), name) != switchedBy.end();
    text += std::string(" ") + name + "=\"" + (named ? "Y" : "N") + "\"";
  }
  return text + " On=\"" + on + "\" Off=\"" + off + "\"/>";
}

constexpr const char* Offsets = R"(offsetSunRise="10" offsetSunSet="25")";
const std::string SentOffsets = std::string(Offsets) + " " + NowStamp;

class InputsOutputsPage : public pages_test::SectionPage<CDlgE13CfgZelLampManager> {
 protected:
  InputsOutputsPage() : SectionPage("L13", "E13") {}

  std::string checkedSwitches(int line) const {
    std::string names;
    for (const char* name : Switches)
      if (driver.checked("output" + std::to_string(line) + "." + name))
        names += (names.empty() ? "" : " ") + std::string(name);
    return names;
  }
  void expectEmptyInput(int line) const {
    const std::string name = "input" + std::to_string(line);
    EXPECT_EQ(driver.text(name + ".status"), "") << line;
    EXPECT_FALSE(driver.checked(name + ".SponEnable")) << line;
  }
  void expectEmptyOutput(int line) const {
    const std::string name = "output" + std::to_string(line);
    EXPECT_EQ(driver.text(name + ".status"), "") << line;
    EXPECT_EQ(checkedSwitches(line), "") << line;
    EXPECT_TRUE(driver.items(name + ".mode").empty()) << line;
  }
};

// --- showing

TEST_F(InputsOutputsPage, CaptionsStandAtTheirControls) {
  open("");
  EXPECT_EQ(driver.title(), "[38569]");
  const std::pair<const char*, const char*> captions[] = {
      {"inputsGroup", "[33882]"},
      {"inputHead1", "[33993]"},
      {"inputHead2", "[24557]"},
      {"inputHead3", "[38572]"},
      {"outputsGroup", "[33883]"},
      {"outputHead1", "[33994]"},
      {"outputHead2", "[35334]"},
      {"outputHead3", "[38576]"},
      {"outputHead4", "In1"},
      {"outputHead11", "In8"},
      {"outputHead12", "[38604]"},
      {"outputHead13", "[38605]"},
      {"outputHead14", "[24557]"},
      {"offsetGroup", "[34370]"},
      {"offsetSunRiseLabel", "[38577]([34979])"},
      {"offsetSunSetLabel", "[38578]([34979])"},
      {"activationGroup", "[32055]"},
      {"ok", "[36777]"},
      {"cancel", "[312]"}};
  for (const auto& [name, text] : captions) EXPECT_EQ(driver.text(name), text) << name;
  for (int line = 1; line <= 8; ++line) {
    const std::string number = std::to_string(line);
    EXPECT_EQ(driver.text("input" + number), "[32066](" + number + ")");
    EXPECT_EQ(driver.text("output" + number), "[624](" + number + ")");
  }
  EXPECT_EQ(driver.text("activation"), pages_test::Now);
}

TEST_F(InputsOutputsPage, ShowsEveryLineAndTheOffsets) {
  std::string lines;
  for (int line = 1; line <= 8; ++line)
    lines += input(line, line % 2 == 0 ? "Y" : "N", line < 5 ? "0" : "1") +
             output(line, {Switches[line - 1], "SincNode"}, line == 3 ? "Y" : "N",
                    line == 4 ? "Y" : "N", line < 5 ? "1" : "0");
  open(lines, Offsets);
  for (int line = 1; line <= 8; ++line) {
    const std::string number = std::to_string(line);
    EXPECT_EQ(driver.checked("input" + number + ".SponEnable"), line % 2 == 0) << line;
    EXPECT_EQ(driver.text("input" + number + ".status"), line < 5 ? "[32180]" : "[32179]") << line;
    EXPECT_EQ(driver.text("output" + number + ".status"), line < 5 ? "[32179]" : "[32180]") << line;
    EXPECT_EQ(checkedSwitches(line), std::string(Switches[line - 1]) + " SincNode");
    EXPECT_EQ(driver.items("output" + number + ".mode"), (Texts{"[35460]", "[32179]", "[32180]"}));
    EXPECT_EQ(driver.selectedItem("output" + number + ".mode"), line == 3   ? "[32179]"
                                                                : line == 4 ? "[32180]"
                                                                            : "[35460]");
  }
  EXPECT_EQ(driver.text("offsetSunRise"), "10");
  EXPECT_EQ(driver.text("offsetSunSet"), "25");
}

TEST_F(InputsOutputsPage, LinesThatTheSectionLacksStayEmpty) {
  open(output(2) + input(7, "Y"), Offsets);
  for (int line = 1; line <= 8; ++line) {
    if (line != 7) expectEmptyInput(line);
    if (line != 2) expectEmptyOutput(line);
  }
  EXPECT_EQ(driver.selectedItem("output2.mode"), "[35460]");
  EXPECT_TRUE(driver.checked("input7.SponEnable"));
}

TEST_F(InputsOutputsPage, OnlyAnExactNoLeavesABoxUnchecked) {
  open(R"(<Output Dir="1" Ocaso="N" In1="n" In2="" In3="Y" In4="X"/>
          <Input Dir="1" SponEnable="n"/><Input Dir="2"/><Input Dir="3" SponEnable="N"/>)");
  EXPECT_EQ(checkedSwitches(1), "Orto In1 In2 In3 In4 In5 In6 In7 In8 SincNode")
      << "a missing attribute shows checked";
  EXPECT_TRUE(driver.checked("input1.SponEnable"));
  EXPECT_TRUE(driver.checked("input2.SponEnable"));
  EXPECT_FALSE(driver.checked("input3.SponEnable"));
}

TEST_F(InputsOutputsPage, OnlyAZeroIsOff) {
  const std::pair<const char*, const char*> values[] = {{"Value=\"0\"", "[32180]"},
                                                        {"Value=\"1\"", "[32179]"},
                                                        {"Value=\"00\"", "[32179]"},
                                                        {"Value=\"\"", "[32179]"},
                                                        {"", "[32179]"}};
  for (const auto& [value, shown] : values) {
    open("<Input Dir=\"1\" " + std::string(value) + "/><Output Dir=\"1\" " + value + "/>");
    EXPECT_EQ(driver.text("input1.status"), shown) << value;
    EXPECT_EQ(driver.text("output1.status"), shown) << value;
    driver.closeAll();
  }
}

TEST_F(InputsOutputsPage, TheModeFollowsOnBeforeOff) {
  struct Case {
    const char* on;
    const char* off;
    const char* mode;
  };
  const Case cases[] = {{"N", "N", "[35460]"}, {"Y", "N", "[32179]"}, {"N", "Y", "[32180]"},
                        {"Y", "Y", "[32179]"}, {"y", "y", "[35460]"}, {"", "", "[35460]"}};
  for (const auto& [on, off, mode] : cases) {
    open(output(1, {}, on, off), Offsets);
    EXPECT_EQ(driver.selectedItem("output1.mode"), mode) << on << off;
    driver.click("ok");
    expectClosedWithoutSending();
  }
}

TEST_F(InputsOutputsPage, ANumberThatIsNoneOfTheControllersStopsTheFilling) {
  for (const std::string number : {"9", "0", "-1", "", "x", "99999999999"}) {
    for (const std::string tag : {"Input", "Output"}) {
      open(input(1, "Y") + "<" + tag + " Dir=\"" + number + "\"/>" + input(2, "Y") +
               output(1, {"Orto"}),
           Offsets);
      EXPECT_TRUE(driver.checked("input1.SponEnable"));
      expectEmptyInput(2);
      expectEmptyOutput(1);
      EXPECT_EQ(driver.text("offsetSunRise"), "") << number;
      EXPECT_EQ(driver.text("offsetSunSet"), "") << number;
      driver.closeAll();
    }
  }
}

TEST_F(InputsOutputsPage, BoxesThatWereNeverFilledAreWrittenAsTheyStand) {
  open(input(1, "Y") + R"(<Output Dir="9" Ocaso="Y"/>)" + input(2, "Y") +
           output(1, {"Orto", "In8"}, "Y"),
       Offsets);
  driver.click("ok");
  expectSent(input(1, "Y") + R"(<Output Dir="9" Ocaso="Y"/>)" + input(2, "N") + output(1, {}, "Y"),
             std::string(R"(offsetSunRise="" offsetSunSet="" )") + NowStamp);
}

TEST_F(InputsOutputsPage, ChildrenWithOtherNamesArePassedOver) {
  open(R"(<Relay Dir="99"/><output Dir="0"/>)" + input(3, "Y"), Offsets);
  EXPECT_TRUE(driver.checked("input3.SponEnable"));
  EXPECT_EQ(driver.text("offsetSunRise"), "10");
}

TEST_F(InputsOutputsPage, WithoutTheSectionThePageIsEmptyAndOkSendsNothing) {
  openReply("<deviceCfg><ZelLamp Id='LM'/></deviceCfg>");
  for (int line = 1; line <= 8; ++line) {
    expectEmptyInput(line);
    expectEmptyOutput(line);
  }
  driver.check("input1.SponEnable", true);
  driver.check("output1.Ocaso", true);
  driver.type("offsetSunRise", "5");
  driver.type("activation", "31/02/2024 00:00:00");
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(InputsOutputsPage, AReplyWithoutRootOpensEmpty) {
  driver.channel().replyEmpty();
  driver.show<CDlgE13CfgZelLampManager>(&manager.driver, nullptr);
  driver.channel().forget();
  driver.click("ok");
  expectClosedWithoutSending();
}

// --- edits

TEST_F(InputsOutputsPage, SunsetAndSunriseExcludeEachOther) {
  open(output(1) + output(2, {"Ocaso"}), Offsets);
  driver.check("output2.Orto", true);
  EXPECT_EQ(checkedSwitches(2), "Orto");
  driver.check("output2.Ocaso", true);
  EXPECT_EQ(checkedSwitches(2), "Ocaso");
  driver.check("output2.Ocaso", false);
  EXPECT_EQ(checkedSwitches(2), "") << "unchecking one does not check the other";
  EXPECT_EQ(checkedSwitches(1), "") << "other outputs are not touched";
}

TEST_F(InputsOutputsPage, EveryOutputHasItsOwnExclusion) {
  open(output(1) + output(2) + output(3) + output(4) + output(5) + output(6) + output(7) +
       output(8));
  for (int line = 1; line <= 8; ++line) {
    const std::string name = "output" + std::to_string(line);
    driver.check(name + ".Ocaso", true);
    driver.check(name + ".Orto", true);
    EXPECT_EQ(checkedSwitches(line), "Orto") << line;
  }
}

TEST_F(InputsOutputsPage, NothingElseIsCoupled) {
  open(output(1), Offsets);
  for (const char* name : Switches)
    if (std::string(name) != "Orto") driver.check(std::string("output1.") + name, true);
  EXPECT_EQ(checkedSwitches(1), "Ocaso In1 In2 In3 In4 In5 In6 In7 In8 SincNode");
  driver.check("output1.Orto", true);
  EXPECT_EQ(checkedSwitches(1), "Orto In1 In2 In3 In4 In5 In6 In7 In8 SincNode");
}

TEST_F(InputsOutputsPage, BothReadAsCheckedStayUntilOneIsClicked) {
  open(output(1, {"Ocaso", "Orto"}), Offsets);
  EXPECT_EQ(checkedSwitches(1), "Ocaso Orto");
  driver.click("output1.In1");
  EXPECT_EQ(checkedSwitches(1), "Ocaso Orto In1");
  driver.click("output1.Ocaso");
  EXPECT_EQ(checkedSwitches(1), "Orto In1") << "the click left sunset unchecked";
}

TEST_F(InputsOutputsPage, OffsetsTakeDigitsOnly) {
  open("", Offsets);
  driver.type("offsetSunRise", "-1a2.3");
  EXPECT_EQ(driver.text("offsetSunRise"), "123");
}

// --- writing

TEST_F(InputsOutputsPage, OkWithoutChangesSendsNothingAndChecksNoDate) {
  open(input(1) + input(2, "Y") + output(1, {"Ocaso", "In3"}) + output(8, {}, "N", "Y"), Offsets);
  driver.type("activation", "31/02/2024 00:00:00");
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(InputsOutputsPage, EditsUndoneSendNothing) {
  open(input(1) + output(1, {"Ocaso"}), Offsets);
  driver.check("input1.SponEnable", true);
  driver.check("output1.Orto", true);
  driver.choose("output1.mode", 2);
  driver.type("offsetSunSet", "1");
  driver.check("input1.SponEnable", false);
  driver.check("output1.Ocaso", true);
  driver.choose("output1.mode", 0);
  driver.type("offsetSunSet", "25");
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(InputsOutputsPage, ChangingOneOffsetSendsTheWholeSectionWithTheDate) {
  open(input(1, "Y", "1") + output(1, {"Ocaso", "In3"}, "Y") + output(2, {"SincNode"}), Offsets);
  driver.type("offsetSunSet", "30");
  driver.click("ok");
  expectSent(input(1, "Y", "1") + output(1, {"Ocaso", "In3"}, "Y") + output(2, {"SincNode"}),
             std::string(R"(offsetSunRise="10" offsetSunSet="30" )") + NowStamp);
}

TEST_F(InputsOutputsPage, AnEmptyOffsetIsSentEmpty) {
  open(input(1), Offsets);
  driver.type("offsetSunRise", "");
  driver.click("ok");
  expectSent(input(1), std::string(R"(offsetSunRise="" offsetSunSet="25" )") + NowStamp);
}

TEST_F(InputsOutputsPage, EveryInputIsWrittenToItsOwnElement) {
  std::string before;
  std::string after;
  for (int line = 8; line >= 1; --line) {
    before += input(line);
    after += input(line, line % 3 == 0 ? "Y" : "N");
  }
  open(before, Offsets);
  for (const int line : {3, 6}) driver.check("input" + std::to_string(line) + ".SponEnable", true);
  driver.click("ok");
  expectSent(after, SentOffsets);
}

TEST_F(InputsOutputsPage, EverySwitchOfEveryOutputIsWrittenToItsOwnAttribute) {
  std::string before;
  std::string after;
  for (int line = 1; line <= 8; ++line) {
    before += output(line);
    after += output(line, {Switches[line], Switches[10]});
  }
  open(before, Offsets);
  for (int line = 1; line <= 8; ++line)
    for (const char* name : {Switches[line], Switches[10]})
      driver.check("output" + std::to_string(line) + "." + name, true);
  driver.click("ok");
  expectSent(after, SentOffsets);
}

TEST_F(InputsOutputsPage, AChosenModeSetsOnAndOff) {
  struct Case {
    const char* onBefore;
    const char* offBefore;
    int item;
    const char* on;
    const char* off;
  };
  const Case cases[] = {{"N", "N", 1, "Y", "N"}, {"N", "N", 2, "N", "Y"}, {"Y", "N", 0, "N", "N"},
                        {"Y", "N", 2, "N", "Y"}, {"N", "Y", 0, "N", "N"}, {"N", "Y", 1, "Y", "N"},
                        {"Y", "Y", 0, "N", "N"}, {"Y", "Y", 2, "N", "Y"}};
  for (const auto& [onBefore, offBefore, item, on, off] : cases) {
    open(output(1, {}, onBefore, offBefore), Offsets);
    driver.choose("output1.mode", item);
    driver.click("ok");
    expectSent(output(1, {}, on, off), SentOffsets);
  }
}

TEST_F(InputsOutputsPage, AnOutputForcedOnAndOffIsShownOnAndLeftAsItIs) {
  open(output(1, {}, "Y", "Y"), Offsets);
  EXPECT_EQ(driver.selectedItem("output1.mode"), "[32179]");
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(InputsOutputsPage, AModeThatWasNotChangedKeepsWhatWasRead) {
  const std::string odd = R"(<Output Dir="2" Ocaso="N" Orto="N" In1="N" In2="N" In3="N" In4="N"
      In5="N" In6="N" In7="N" In8="N" SincNode="N" Off="maybe"/>)";
  open(output(1, {}, "Y", "Y") + odd, Offsets);
  driver.choose("output1.mode", 2);
  driver.choose("output1.mode", 1);
  driver.type("offsetSunRise", "11");
  driver.click("ok");
  expectSent(output(1, {}, "Y", "Y") + odd,
             std::string(R"(offsetSunRise="11" offsetSunSet="25" )") + NowStamp);
}

TEST_F(InputsOutputsPage, AModeChangedBackAfterARefusalIsSentAsItWasRead) {
  open(output(1, {}, "Y", "Y"), Offsets);
  driver.choose("output1.mode", 0);
  driver.channel().failWith("Locked.");
  driver.click("ok");
  driver.answer(host::MessageAnswer::cancel);
  driver.choose("output1.mode", 1);
  driver.channel().forget();
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(InputsOutputsPage, LinesThatTheSectionLacksGetNoElement) {
  open(input(2) + output(3), Offsets);
  driver.check("input1.SponEnable", true);
  driver.check("output1.Ocaso", true);
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(InputsOutputsPage, ANumberIsFoundByItsExactText) {
  open(R"(<Input Dir="01" SponEnable="N"/><Input Dir="2x" SponEnable="Y"/>)", Offsets);
  EXPECT_TRUE(driver.checked("input2.SponEnable"));
  driver.check("input1.SponEnable", true);
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(InputsOutputsPage, MissingAttributesThatShowCheckedAreWritten) {
  open(R"(<Input Dir="1"/>)", Offsets);
  driver.click("ok");
  expectSent(R"(<Input Dir="1" SponEnable="Y"/>)", SentOffsets);
}

TEST_F(InputsOutputsPage, TheActivationDateTakesThePlaceOfTheStamp) {
  open(input(1), R"(a="1" Fh="20240101000000" offsetSunRise="1" offsetSunSet="2" ActDate="old")");
  driver.check("input1.SponEnable", true);
  driver.click("ok");
  expectSent(input(1, "Y"),
             R"(a="1" ActDate="20250315100000W" offsetSunRise="1" offsetSunSet="2")");
}

TEST_F(InputsOutputsPage, TheActivationDateIsCheckedWhenSomethingChanged) {
  open(input(1), Offsets);
  driver.check("input1.SponEnable", true);
  expectActivationDateIsChecked();
}

TEST_F(InputsOutputsPage, TheActivationDateCarriesItsSeason) {
  const std::pair<const char*, const char*> dates[] = {{"31/03/2024 02:59:59", "20240331025959W"},
                                                       {"31/03/2024 03:00:00", "20240331030000S"},
                                                       {"27/10/2024 01:59:59", "20241027015959S"},
                                                       {"27/10/2024 02:00:00", "20241027020000W"}};
  for (const auto& [typed, stamp] : dates) {
    open(input(1), Offsets);
    driver.check("input1.SponEnable", true);
    driver.type("activation", typed);
    driver.click("ok");
    expectSent(input(1, "Y"), std::string(Offsets) + " ActDate=\"" + stamp + "\"");
  }
}

TEST_F(InputsOutputsPage, TheDateStartsAtTheHostsTimeWhateverTheStampSays) {
  open(input(1), R"(Fh="20240101000000")");
  EXPECT_EQ(driver.text("activation"), pages_test::Now);
}

TEST_F(InputsOutputsPage, ARefusedWriteKeepsThePageAndItsEdits) {
  open(input(1) + output(1), Offsets);
  driver.check("input1.SponEnable", true);
  driver.choose("output1.mode", 1);
  expectFailedWriteKeepsThePage();
}

TEST_F(InputsOutputsPage, AnEntryTakenBackAfterARefusalIsNotSent) {
  open(input(1) + input(2), Offsets);
  driver.check("input1.SponEnable", true);
  driver.channel().failWith("Locked.");
  driver.click("ok");
  driver.answer(host::MessageAnswer::cancel);
  driver.check("input1.SponEnable", false);
  driver.check("input2.SponEnable", true);
  driver.channel().forget();
  driver.click("ok");
  expectSent(input(1) + input(2, "Y"), SentOffsets);
}

TEST_F(InputsOutputsPage, CancelDiscardsEverything) {
  open(input(1), Offsets);
  driver.check("input1.SponEnable", true);
  driver.click("cancel");
  EXPECT_EQ(driver.result(), IDCANCEL);
  expectNothingSent();
}

TEST_F(InputsOutputsPage, AReadThatFailsDoesNotOpenThePage) {
  driver.channel().failWith();
  driver.show<CDlgE13CfgZelLampManager>(&manager.driver, nullptr);
  EXPECT_EQ(driver.message().text, "[330]");
  driver.answer(host::MessageAnswer::ok);
  EXPECT_EQ(driver.result(), IDCANCEL);
}

TEST_F(InputsOutputsPage, WhatThePageDoesNotKnowGoesThereAndBack) {
  std::mt19937 random(13);
  for (int round = 0; round < 20; ++round) {
    std::string before;
    std::string after;
    for (int line = 1; line <= 8; ++line) {
      const pages_test::Unknown extra = pages_test::unknown(random);
      const std::string head = "<Input" + extra.before + "Dir=\"" + std::to_string(line) +
                               "\" Value=\"7\" SponEnable=\"";
      const std::string tail = "\"" + extra.after + ">" + extra.children + "</Input>";
      before += extra.children + head + "N" + tail + output(line);
      after += extra.children + head + (line == 5 ? "Y" : "N") + tail + output(line);
    }
    open(before, std::string(Offsets) + " zone=\"4\"");
    driver.check("input5.SponEnable", true);
    driver.click("ok");
    expectSent(after, std::string(Offsets) + " zone=\"4\" " + NowStamp);
  }
}

// --- what it edits

TEST_F(InputsOutputsPage, EveryEntryIsAChangeOfItsLine) {
  open(input(1) + input(3, "Y") + output(8, {"Ocaso"}) + output(2), Offsets);
  EXPECT_EQ(changesOn(driver.dialog()), Texts{});
  driver.check("input3.SponEnable", false);
  driver.check("output8.Orto", true);
  driver.choose("output2.mode", 2);
  for (const char* name : Switches) driver.check(std::string("output2.") + name, true);
  driver.type("offsetSunRise", "11");
  driver.type("offsetSunSet", "");
  EXPECT_EQ(
      changesOn(driver.dialog()),
      (Texts{"null offsetSunRise [38577]([34979]): 10 -> 11",
             "null offsetSunSet [38578]([34979]): 25 -> ",
             "input3 SponEnable [33882]: [38572]: Y -> N", "output8 Ocaso [33883]: [35334]: Y -> N",
             "output8 Orto [33883]: [38576]: N -> Y", "output2 Orto [33883]: [38576]: N -> Y",
             "output2 In1 [33883]: In1: N -> Y", "output2 In2 [33883]: In2: N -> Y",
             "output2 In3 [33883]: In3: N -> Y", "output2 In4 [33883]: In4: N -> Y",
             "output2 In5 [33883]: In5: N -> Y", "output2 In6 [33883]: In6: N -> Y",
             "output2 In7 [33883]: In7: N -> Y", "output2 In8 [33883]: In8: N -> Y",
             "output2 SincNode [33883]: [38604]: N -> Y",
             "output2 mode [33883]: [38605]: A -> F"}));
  EXPECT_EQ(faultsOn(driver.dialog()), Texts{});
}

TEST_F(InputsOutputsPage, WhatItAddsByItselfIsAChange) {
  open(R"(<Input Dir="1"/><Input Dir="2" SponEnable="N"/><Output Dir="1" Ocaso="x"/>
          <Input Dir="03"/>)",
       "offsetSunSet=''");
  Texts expected = {"null offsetSunRise [38577]([34979]): null -> ",
                    "input1 SponEnable [33882]: [38572]: null -> Y",
                    "output1 Ocaso [33883]: [35334]: x -> Y",
                    "output1 Orto [33883]: [38576]: null -> Y"};
  for (int number = 1; number <= 8; ++number)
    expected.push_back("output1 In" + std::to_string(number) + " [33883]: In" +
                       std::to_string(number) + ": null -> Y");
  expected.push_back("output1 SincNode [33883]: [38604]: null -> Y");
  EXPECT_EQ(changesOn(driver.dialog()), expected) << "the mode stays as it was read";
  driver.click("ok");
  EXPECT_EQ(driver.channel().count(), 1U);
}

TEST_F(InputsOutputsPage, WithoutTheSectionNothingIsAChange) {
  openReply("<deviceCfg/>");
  driver.check("input1.SponEnable", true);
  EXPECT_EQ(changesOn(driver.dialog()), Texts{});
}

TEST_F(InputsOutputsPage, TheDateIsItsOnlyFault) {
  open(input(1), Offsets);
  driver.type("activation", "31/02/2024 00:00:00");
  EXPECT_EQ(faultsOn(driver.dialog()), Texts{}) << "there is nothing to send";
  driver.check("input1.SponEnable", true);
  EXPECT_EQ(faultsOn(driver.dialog()), Texts{"null ActDate: [38408]"});
}

TEST_F(InputsOutputsPage, TheModesOfTwoOutputsWithOneNumberStayAsTheyWereRead) {
  const std::string lines = output(1, {}, "Y") + output(1);
  open(lines, Offsets);
  EXPECT_EQ(driver.selectedItem("output1.mode"), "[35460]") << "the later one is shown";
  EXPECT_EQ(changesOn(driver.dialog()), Texts{});
  driver.click("ok");
  expectClosedWithoutSending();
}

// --- arrangement

int piecesOfGrid(const host::LayoutItem& item, int columns) {
  int pieces = 0;
  if (item.kind == host::LayoutItem::Kind::grid && item.columns == columns)
    pieces = static_cast<int>(item.items.size());
  for (const host::LayoutItem& child : item.items) pieces += piecesOfGrid(child, columns);
  return pieces;
}

TEST_F(InputsOutputsPage, TheLinesStandInGridsUnderTheirCaptions) {
  open("");
  EXPECT_EQ(piecesOfGrid(driver.dialog().Arrangement(), 3), 3 * 9);
  EXPECT_EQ(piecesOfGrid(driver.dialog().Arrangement(), 14), 14 * 9);
}

}  // namespace
