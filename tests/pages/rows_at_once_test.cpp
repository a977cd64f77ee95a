#include "pages/node_power_page.h"
#include "pages/node_table_page.h"
#include "pages/scheduled_tasks_page.h"
#include "tests/pages/section_page_test.h"
#include "workbench/pages/row_edit.h"
#include "workbench/pages/row_filter.h"
#include "workbench/pages/row_text.h"
#include "workbench/table/list_table.h"

namespace {

using namespace pages_test;

template <class Page>
class RowsAtOnce : public SectionPage<Page> {
 protected:
  using SectionPage<Page>::SectionPage;

  Rows matches(const char* list, const std::string& filter) {
    const auto& control = this->driver.template as<host::ListControl>(list);
    return workbench::RowFilter(XCBasicString::FromUtf8(filter), control,
                                workbench::filterSourceOf(this->driver.dialog(), control))
        .rows();
  }
  std::string exported(const char* list) {
    auto& control = this->driver.template as<host::ListControl>(list);
    return workbench::exportTable(this->driver.dialog(), rowsOf(control), control);
  }
  /// "line,column name: text", or the counts of values and rows that changed.
  Texts imported(const char* list, const std::string& csv, bool dryRun = false) {
    auto& control = this->driver.template as<host::ListControl>(list);
    workbench::TableImport result;
    this->driver.perform([&](host::UserInput&, XCBaseDlg& dialog) {
      result =
          workbench::importTable(dialog, *dialog.Edits(), rowsOf(control), control, csv, dryRun);
      return host::Outcome();
    });
    if (result.faults.empty())
      return {std::to_string(result.changed) + " in " + std::to_string(result.rows)};
    EXPECT_EQ(result.changed + result.rows, 0U);
    Texts lines;
    for (const auto& fault : result.faults)
      lines.push_back(std::to_string(fault.line) + "," + std::to_string(fault.column) + " " +
                      fault.name.value_or("null") + ": " + fault.text.ToUtf8());
    return lines;
  }

 private:
  const host::RowSet& rowsOf(const host::ListControl& list) {
    return *workbench::rowsShownIn(*this->driver.dialog().Edits(), list);
  }
};

class NodeTableRows : public RowsAtOnce<CDlgE04CfgZelLampManager> {
 protected:
  NodeTableRows() : RowsAtOnce("L04", "E04") {
    open(R"(<Node nodeId="101" Reference="HS-1 north" latitude="1.5" longitude="-2"/>
            <Node nodeId="102" Reference="Pier "" changed" latitude="10" longitude="2"/>
            <Node nodeId="100" latitude="" longitude="-0.50"/>)");
  }
  void open(std::string rows) {
    const std::size_t at = rows.find("\"\"");
    rows.replace(at, 2, "&quot;");
    RowsAtOnce::open(rows);
  }
};

TEST_F(NodeTableRows, FiltersLookForWordsInTheCells) {
  EXPECT_EQ(matches("nodes", ""), (Rows{0, 1, 2}));
  EXPECT_EQ(matches("nodes", "hs-1"), Rows{0});
  EXPECT_EQ(matches("nodes", "100"), Rows{2});
  EXPECT_EQ(matches("nodes", "10 PIER"), Rows{1});
  EXPECT_EQ(matches("nodes", "\"1 north\""), Rows{0});
  EXPECT_EQ(matches("nodes", "-hs-1"), (Rows{1, 2}));
  EXPECT_EQ(matches("nodes", "-"), (Rows{0, 2})) << "a minus alone is a text";
  EXPECT_EQ(matches("nodes", "\"r \"\" ch"), Rows{1}) << "quotes run to the end";
  EXPECT_EQ(matches("nodes", "\"changed\""), Rows{1}) << "quotes take the meaning away";
  EXPECT_EQ(matches("nodes", "\"-0.5\""), Rows{2});
  EXPECT_EQ(matches("nodes", "-0.5"), (Rows{0, 1}));
}

TEST_F(NodeTableRows, FiltersCompareColumnsAsNumbersAndAsTexts) {
  const std::pair<const char*, Rows> filters[] = {
      {"latitude>2", {1}},        {"latitude>=1.50", {0, 1}},    {"LATITUDE<=10", {0, 1}},
      {"latitude=", {2}},         {"latitude!=10", {0, 2}},      {"latitude<5", {0}},
      {"longitude<-0.4", {0, 2}}, {"longitude=-.5", {2}},        {"Reference:hs", {0}},
      {"[35538]:PIER", {1}},      {"nodeId=101", {0}},           {"Id=0101", {0}},
      {"Reference=", {2}},        {"Reference<i", {0}},          {"-Reference:e", {0, 2}},
      {"colour=1", {}},           {"Reference:\"hs-1 n\"", {0}}, {"latitude>abc", {}}};
  for (const auto& [filter, rows] : filters) EXPECT_EQ(matches("nodes", filter), rows) << filter;
}

TEST_F(NodeTableRows, FiltersKnowWhatChangedAndWhatIsAtFault) {
  EXPECT_EQ(matches("nodes", "changed"), Rows{});
  EXPECT_EQ(matches("nodes", "fault"), Rows{2});
  driver.select("nodes", {1});
  driver.type("reference", "a<");
  EXPECT_EQ(matches("nodes", "changed"), Rows{1});
  EXPECT_EQ(matches("nodes", "fault"), (Rows{1, 2}));
  EXPECT_EQ(matches("nodes", "fault -changed"), Rows{2});
}

TEST_F(NodeTableRows, ATableHasTheEditsInTheOrderOfTheColumnsAndTheRowsAsShown) {
  driver.sort("nodes", 0);
  EXPECT_EQ(exported("nodes"),
            "Id,Reference,latitude,longitude\n"
            "100,,,-0.50\n"
            "101,HS-1 north,1.5,-2\n"
            "102,\"Pier \"\" changed\",10,2\n");
}

TEST_F(NodeTableRows, AnImportFindsRowsByTheirIdentityAndLeavesTheRest) {
  driver.select("nodes", {1});
  EXPECT_EQ(imported("nodes", "Id;Reference\r\n100;New\r\n101;HS-1 north\r\n", true),
            Texts{"1 in 1"});
  EXPECT_EQ(driver.column("nodes", 1)[2], "") << "a dry run changes nothing";
  EXPECT_EQ(imported("nodes", "Reference\tId\nNew\t100\n'=x\t102\n"), Texts{"2 in 2"});
  EXPECT_EQ(driver.column("nodes", 1), (Texts{"HS-1 north", "=x", "New"}));
  EXPECT_EQ(driver.selection("nodes"), Rows{1});
  EXPECT_EQ(driver.text("reference"), "=x") << "the edits show it";
}

TEST_F(NodeTableRows, WhatIsExportedComesBackWithoutAChange) {
  EXPECT_EQ(imported("nodes", exported("nodes")), Texts{"0 in 0"})
      << "also a value that OK would refuse";
}

TEST_F(NodeTableRows, AnImportTellsEveryFaultAtOnceAndChangesNothing) {
  const std::string tooLong(60, 'x');
  EXPECT_EQ(
      imported("nodes",
               "Id,Reference,latitude,colour,Reference\n"
               "101,a<b,,1,2\n"
               "999,x,1,1,1\n"
               "102," +
                   tooLong +
                   ",12345678901,1,1\n"
                   "102,x,1,1,1\n"
                   "100,x\n"),
      (Texts{"1,4 colour: the list has no such column", "1,5 Reference: the column stands twice",
             "2,2 Reference: [38657]", "2,3 latitude: [38408]", "3,1 Id: the list has no such row",
             "4,2 Reference: the field takes at most 59 characters",
             "4,3 latitude: the field takes at most 10 characters",
             "5,1 Id: the row stands twice in the table", "6,3 null: a cell is missing"}));
  EXPECT_EQ(driver.column("nodes", 1)[0], "HS-1 north");
  EXPECT_EQ(imported("nodes", "Id,Reference\n999\n"), Texts{"2,1 Id: the list has no such row"})
      << "nothing else is told of a line without a row";
  EXPECT_EQ(imported("nodes", ""), Texts{"1,1 null: the table has no line"});
  EXPECT_EQ(imported("nodes", "Reference\nx\n"), Texts{"1,1 null: the table has no column \"Id\""});
}

class PowerRows : public RowsAtOnce<CDlgE05CfgZelLampManager> {
 protected:
  PowerRows() : RowsAtOnce("L05", "E05") {}
};

TEST_F(PowerRows, OfASharedIdentityAreExportedAndNotChanged) {
  open(R"(<Node Id="1" time="1" power="2"/><Node Id="1" time="3" power="4"/>)");
  const std::string table = exported("nodes");
  EXPECT_EQ(table, "Id,time,power\n1,1,2\n1,3,4\n");
  EXPECT_EQ(
      imported("nodes", "Id,time\n1,9\n"),
      Texts{"2,1 Id: several rows, or none, have this identity: none of them can be changed"});
  EXPECT_EQ(imported("nodes", "Id,time\n1,1\n"), Texts{"0 in 0"});
}

TEST_F(PowerRows, AnEmptyCellLeavesAMissingValueMissing) {
  open(R"(<Node Id="1" power="2"/>)");
  EXPECT_EQ(imported("nodes", "Id,time,power\n1,,3\n"), Texts{"1 in 1"});
  EXPECT_EQ(
      imported("nodes", "Id,time,power\n1,1x,300\n"),
      (Texts{"2,2 time: the field takes digits only", "2,3 power: [38265]([24534] (%),0,100)"}));
}

class TaskRows : public RowsAtOnce<CDlgE02CfgZelLampManager> {
 protected:
  TaskRows() : RowsAtOnce("L02", "E02") {}
};

TEST_F(TaskRows, AreATableOfTheirOwnNames) {
  open(
      R"(<TP TpTar="5" TpHi="20240605100000S" TpPer="00000001020000" TpCompl="Y" TpPrio="2"><TpPro/></TP>)");
  EXPECT_EQ(exported("tasks"),
            "TpTar,TpHi,months,days,hours,minutes,TpPrio\n5,05/06/2024 10:00:00,0,1,2,0,2\n");
  EXPECT_EQ(imported("tasks", "TpTar,hours,TpPrio\n5,23,1\n"), Texts{"2 in 1"});
  EXPECT_EQ(driver.rows("tasks")[0][2], "00000001230000");
  EXPECT_EQ(driver.selectedItem("hours"), "23");
  EXPECT_EQ(imported("tasks", "TpTar,hours,TpHi\n5,24,x\n"),
            (Texts{"2,2 hours: there is no such choice", "2,3 TpHi: [38408]"}));
}

// --- texts for rows

Texts utf8(const std::vector<XCBasicString>& texts) {
  Texts all;
  for (const XCBasicString& text : texts) all.push_back(text.ToUtf8());
  return all;
}

TEST(NumberedTexts, CountFromTheStartInSteps) {
  using workbench::numberedTexts;
  EXPECT_EQ(utf8(numberedTexts(u"Lamp {001}", 3).texts),
            (Texts{"Lamp 001", "Lamp 002", "Lamp 003"}));
  EXPECT_EQ(utf8(numberedTexts(u"{10:5}-{3:-1}{", 3).texts), (Texts{"10-3{", "15-2{", "20-1{"}));
  EXPECT_EQ(utf8(numberedTexts(u"{098:1}", 3).texts), (Texts{"098", "099", "100"}));
  EXPECT_EQ(utf8(numberedTexts(u"{a}{}{-1}{{1}}", 2).texts),
            (Texts{"{a}{}{-1}{1}", "{a}{}{-1}{2}"}));
  EXPECT_EQ(utf8(numberedTexts(u"", 2).texts), (Texts{"", ""}));
  EXPECT_EQ(utf8(numberedTexts(u"same", 2).texts), (Texts{"same", "same"}));
  EXPECT_EQ(numberedTexts(u"{1:-1}", 3).refused, "the numbers would go below zero");
}

TEST(ReplacedTexts, GoFromLeftToRightWithRegardToCase) {
  using workbench::replacedTexts;
  EXPECT_EQ(utf8(replacedTexts({u"aaa", u"Aa", u""}, u"a", u"$1").texts),
            (Texts{"$1$1$1", "A$1", ""}));
  EXPECT_EQ(utf8(replacedTexts({u"aaa"}, u"aa", u"b").texts), Texts{"ba"});
  EXPECT_FALSE(replacedTexts({u"a"}, u"", u"b").refused.empty());
}

TEST(ReplacedByExpression, KnowsGroupsAndTheWholeMatch) {
  using workbench::replacedByExpression;
  EXPECT_EQ(
      utf8(replacedByExpression({u"Lamp 12", u"x"}, u"([a-z]+) (\\d+)", u"$2-$1-$&-$$-$3").texts),
      (Texts{"L12-amp-amp 12-$-$3", "x"}));
  EXPECT_EQ(utf8(replacedByExpression({u"ab"}, u"x*", u"-").texts), Texts{"-a-b-"});
  EXPECT_EQ(utf8(replacedByExpression({u"a"}, u"^", u"1").texts), Texts{"1a"});
  EXPECT_EQ(utf8(replacedByExpression({u"a𝄞b"}, u".", u"-").texts), Texts{"---"});
}

TEST(ReplacedByExpression, RefusesWhatIsMalformedOrTakesTooLong) {
  using workbench::replacedByExpression;
  EXPECT_FALSE(replacedByExpression({u"a"}, u"(", u"b").refused.empty());
  EXPECT_FALSE(replacedByExpression({u"a"}, u"", u"b").refused.empty());
  const std::vector<XCBasicString> many(50, u"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaab");
  EXPECT_EQ(replacedByExpression(many, u"(a+)+$", u"b").refused, "the expression takes too long");
}

}  // namespace
