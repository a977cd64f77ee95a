#include <gtest/gtest.h>

#include <set>

#include "host/dialogs/extension_module.h"
#include "pages/alarm_thresholds_page.h"
#include "pages/blacklist_page.h"
#include "pages/general_settings_page.h"
#include "pages/inputs_outputs_page.h"
#include "pages/node_power_page.h"
#include "pages/node_removal_page.h"
#include "pages/node_table_page.h"
#include "pages/scheduled_tasks_page.h"
#include "programs/group_schedules_page.h"
#include "workbench/pages/section_compare.h"

namespace {

using Node = XmlDocument::XmlNode;

/// A page's table, a section as it is read, and the same as it was edited.
struct Sample {
  const char* name;
  host::DialogTemplate (*dialog)();
  const host::PageDescription& (*page)();
  const char* read;
  const char* edited;
};

template <lamp::ProgramKind Kind>
const host::PageDescription& programs() {
  return CDlgE06CfgZelLampManager::PageTable(Kind);
}

constexpr Sample Samples[] = {
    {"GeneralSettings", CDlgE01CfgZelLampManager::Template, CDlgE01CfgZelLampManager::PageTable,
     R"(<L01 Fh="1" other="x" IPNTP="a" FTPPwd="p" TimeZone="0" name=""/>)",
     R"(<L01 Fh="1" other="x" IPNTP="" FTPPwd="q" TimeZone="4" name="N" RetryFtp="3"/>)"},
    {"ScheduledTasks", CDlgE02CfgZelLampManager::Template, CDlgE02CfgZelLampManager::PageTable,
     R"(<L02 Fh="1"><TP TpTar="1" TpHi="a" TpPer="b"/><TP TpTar="2" TpPer="c"><TpPro z="1"/></TP></L02>)",
     R"(<L02 Fh="1"><TP TpTar="1" TpHi="A" TpPer="B"/><TP TpTar="2" TpPer="c"><TpPro z="1"/><TpPro
        TpReq="L03"/></TP><TP TpTar="3" TpPer="d"/></L02>)"},
    {"NodeTable", CDlgE04CfgZelLampManager::Template, CDlgE04CfgZelLampManager::PageTable,
     R"(<L04 Fh="1" v="2"><Node nodeId="1" Reference="a"/><X/><Node nodeId="2"/></L04>)",
     R"(<L04 Fh="1" v="2"><Node nodeId="1" Reference="b" latitude="3"/><X/><Node nodeId="2"/></L04>)"},
    {"NodePower", CDlgE05CfgZelLampManager::Template, CDlgE05CfgZelLampManager::PageTable,
     R"(<L05 Fh="1"><Node Id="1" Fh="7" time="1" power="2" x="y"><Interval z="1"/></Node></L05>)",
     R"(<L05 Fh="1"><Node Id="1" Fh="7" time="9" power="8" x="y"><Interval z="1"/></Node></L05>)"},
    {"IntervalPrograms", CDlgE06CfgZelLampManager::Template, programs<lamp::ProgramKind::interval>,
     R"(<L06 Fh="1" v="2"><Node Id="1" time1="1" power1="2" time2="3" power2="4" time3="5"
          power3="6" time4="7" power4="8" x="y" Fh="7"><z/></Node><lamp Id="2" time1="1" power1="2"
          time2="3" power2="4" time3="5" power3="6" time4="7" power4="8"/></L06>)",
     R"(<L06 Fh="1" v="2"><Node Id="1" time1="9" power1="8" time2="7" power2="6" time3="5"
          power3="4" time4="3" power4="2" x="y" Fh="7"><z/></Node><lamp Id="2" time1="1" power1="2"
          time2="3" power2="4" time3="5" power3="6" time4="7" power4="9"/></L06>)"},
    {"ClockPrograms", CDlgE06CfgZelLampManager::Template, programs<lamp::ProgramKind::clock>,
     R"(<L17><Node Id="1" hour1="18" min1="5" power1="1" hour2="22" min2="15" power2="2" hour3="1"
          min3="0" power3="3" hour4="5" min4="45" power4="4" time1="9"/></L17>)",
     R"(<L17><Node Id="1" hour1="18" min1="5" power1="9" hour2="23" min2="16" power2="8" hour3="02"
          min3="01" power3="7" hour4="06" min4="46" power4="6" time1="9"/></L17>)"},
    {"AlarmThresholds", CDlgE07CfgZelLampManager::Template, CDlgE07CfgZelLampManager::PageTable,
     R"(<L07 Fh="1"><Node Id="1" Fh="7" vf="0.2" blinkActive="1" blinkTime="2" blinkTimes="3"
          blinkTotalTime="4" brokenActive="5" brokenTime="6" capacitorReactive="7"
          capacitorTime="8" powerLamp="x"/><lamp Id="2" vf="0.3" powerLamp="1" timeAlarm="2"
          percentageAlarm="3" factorPower="4" blinkTime="5" blinkTimes="6"><z/></lamp></L07>)",
     R"(<L07 Fh="1"><Node Id="1" Fh="7" vf="0.2" blinkActive="9" blinkTime="8" blinkTimes="7"
          blinkTotalTime="6" brokenActive="4" brokenTime="3" capacitorReactive="2"
          capacitorTime="1" powerLamp="x"/><lamp Id="2" vf="0.3" powerLamp="6" timeAlarm="5"
          percentageAlarm="4" factorPower="3" blinkTime="2" blinkTimes="1"><z/></lamp></L07>)"},
    {"NodeRemoval", CDlgE08CfgZelLampManager::Template, CDlgE08CfgZelLampManager::PageTable,
     R"(<L04 Fh="1"><Node nodeId="1" Reference="a" latitude="3" x="y"/><X/><Node nodeId="2"/>
          <Node nodeId="3" Reference=""/><Node nodeId="4" Reference="d" longitude="5"/></L04>)",
     R"(<L04 Fh="1"><Node nodeId="1" x="y"/><X/><Node nodeId="2"/><Node nodeId="3"/>
          <Node nodeId="4" Reference="d" longitude="5"/></L04>)"},
    {"Blacklist", CDlgE09CfgZelLampManager::Template, CDlgE09CfgZelLampManager::PageTable,
     R"(<L04 Fh="1"><Node nodeId="1" Reference="a"/><BlackList Fh="7" o="x"><Node nodeId="8"
          Reference="y"/><X/><Node nodeId="9"/></BlackList><Node nodeId="2" latitude="1"/></L04>)",
     R"(<L04 Fh="1"><Node nodeId="1" Reference="a"/><BlackList Fh="7" o="x"><X/><Node nodeId="9"/>
          <Node nodeId="2" latitude="1"/></BlackList><Node nodeId="8" Reference="y"/></L04>)"},
    {"InputsOutputs", CDlgE13CfgZelLampManager::Template, CDlgE13CfgZelLampManager::PageTable,
     R"(<L13 Fh="1" offsetSunRise="1" offsetSunSet="2"><Input Dir="1" Value="0" SponEnable="N"/>
          <Output Dir="8" Value="1" Ocaso="N" Orto="Y" On="N" Off="N" x="y"/><Relay/>
          <Output Dir="2" On="Y" Off="N"/></L13>)",
     R"(<L13 Fh="1" offsetSunRise="3" offsetSunSet=""><Input Dir="1" Value="0" SponEnable="Y"/>
          <Output Dir="8" Value="1" Ocaso="Y" Orto="N" On="N" Off="Y" x="y"/><Relay/>
          <Output Dir="2" On="N" Off="N"/></L13>)"},
};

class PageTable : public testing::TestWithParam<Sample> {
 protected:
  const host::PageDescription& page = GetParam().page();
};

template <class Visit>
void forEachIn(const host::RowSet& set, const Visit& visit) {
  for (const host::Binding& binding : set.bindings) visit(binding);
  for (const host::RowSet& inner : set.within) forEachIn(inner, visit);
}

template <class Visit>
void forEachBinding(const host::PageDescription& page, const Visit& visit) {
  for (const host::Binding& field : page.fields) visit(field);
  for (const host::RowSet& set : page.rows) forEachIn(set, visit);
}

std::string nameOfControl(const host::DialogTemplate& dialog, int id) {
  const auto found = std::find_if(dialog.controls.begin(), dialog.controls.end(),
                                  [&](const auto& spec) { return spec.id == id; });
  return found == dialog.controls.end() ? "none" : found->name;
}

TEST_P(PageTable, EveryValueHasItsControlUnderItsName) {
  const host::DialogTemplate dialog = GetParam().dialog();
  const auto check = [&](const host::Binding& binding) {
    if (binding.control == 0) return;
    EXPECT_EQ(nameOfControl(dialog, binding.control), binding.nameOfControl());
  };
  for (const host::Binding& field : page.fields) check(field);
  for (const host::RowSet& set : page.rows)
    if (!set.controlOf) forEachIn(set, check);
}

TEST_P(PageTable, EveryLineOfAGridHasItsControlsUnderItsName) {
  const host::DialogTemplate dialog = GetParam().dialog();
  XmlDocument section;
  ASSERT_TRUE(section.Parse(GetParam().read));
  for (const workbench::RowInSection& row : workbench::rowsOf(page, *section.Root())) {
    if (!row.set->controlOf) continue;
    for (const host::Binding& binding : row.set->bindings)
      EXPECT_EQ(nameOfControl(dialog, row.set->controlOf(*row.element, binding)),
                row.set->identity(*row.element).ToUtf8() + "." + binding.nameOfControl());
  }
}

TEST_P(PageTable, EveryValueHasANameOfItsOwnAndACaption) {
  std::set<std::string> names;
  for (const host::Binding& field : page.fields) EXPECT_TRUE(names.insert(field.name).second);
  for (const host::RowSet& set : page.rows) {
    names.clear();
    for (const host::Binding& binding : set.bindings)
      EXPECT_TRUE(names.insert(binding.name).second) << binding.name;
  }
  forEachBinding(page, [&](const host::Binding& binding) {
    EXPECT_FALSE(host::captionOf(page, binding).IsEmpty()) << binding.name;
    EXPECT_FALSE(binding.attributes.empty()) << binding.name;
  });
}

TEST_P(PageTable, TheWriteGivesTheSectionBack) {
  XmlDocument read;
  XmlDocument edited;
  ASSERT_TRUE(read.Parse(GetParam().read));
  ASSERT_TRUE(edited.Parse(GetParam().edited));
  XmlDocument request;
  ASSERT_TRUE(page.makeWrite(request, read.Root(), *edited.Root(), u"20250315100000W"));
  ASSERT_EQ(request.Root()->FirstChild()->TagName(), *page.writeSection);
  XmlDocument section;
  section.Create("copy") = *read.Root();
  page.applyWrite(*section.Root(), *request.Root()->FirstChild());
  EXPECT_TRUE(*edited.Root() == *section.Root()) << section.ToString();
  EXPECT_TRUE(workbench::compareSections(page, edited.Root(), section.Root()).empty());
}

INSTANTIATE_TEST_SUITE_P(Pages, PageTable, testing::ValuesIn(Samples),
                         [](const auto& sample) { return std::string(sample.param.name); });

}  // namespace
