#include "host/ui/controls/list_control.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>

#include "tests/host/support/sample_dialog.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/xml_compare.h"

using host::Colour;
using host::ListColumn;
using host::ListControl;
using host::Notice;
using support::DialogDriver;
using testing::ElementsAre;
using testing::IsEmpty;
using Rows = std::vector<std::size_t>;

namespace {

// Counts what a list tells.
class Owner : public host::ControlOwner {
 public:
  void onNotice(host::Control&, Notice notice, int) override {
    selections += notice == Notice::selectionChanged ? 1 : 0;
  }
  void onChanged(host::Control&) override {}
  int selections = 0;
};

ListColumn attributeColumn(const char* name, int share = 1) {
  ListColumn column;
  column.caption = XCBasicString::FromUtf8(name);
  column.share = share;
  column.attribute = host::XmlName(name);
  return column;
}

class ListTest : public testing::Test {
 protected:
  ListTest() {
    list.setColumns({attributeColumn("id"), attributeColumn("ref", 2)});
    for (XmlDocument::XmlNode& node : document.Root()->Children()) list.addRow({&node, 0});
    list.takeChanges();
  }

  std::vector<std::string> column(std::size_t at) const {
    std::vector<std::string> cells;
    for (std::size_t row = 0; row < list.rowCount(); ++row)
      cells.push_back(list.cell(row, at).ToUtf8());
    return cells;
  }

  XmlDocument document = support::parsedXml(
      "<L04><Node id=\"n3\" ref=\"b\"/><Node id=\"n1\" ref=\"a\"/><Node id=\"n2\" ref=\"b\"/>"
      "<Node id=\"n10\" ref=\"\"/></L04>");
  Owner owner;
  ListControl list{owner, host::list(1, "nodes")};
};

TEST_F(ListTest, CellsAreWhatTheElementsHold) {
  EXPECT_THAT(column(0), ElementsAre("n3", "n1", "n2", "n10"));
  list.element(1)->setAttribute("ref", u"changed");
  EXPECT_EQ(list.cell(1, 1), u"changed");
  list.element(1)->eraseAttribute("ref");
  EXPECT_EQ(list.cell(1, 1), u"");
}

TEST_F(ListTest, RowsStayReadableWhenTheirElementsWereRemovedAndReleased) {
  const std::vector<std::string> before = column(0);
  for (int i = 0; i < 10; ++i) {
    document.Root()->RemoveChildren();
    for (int more = 0; more < 5000; ++more) document.Root()->NewChild("more");
    document.ReleaseRemoved();
  }
  EXPECT_EQ(column(0), before);
}

TEST_F(ListTest, AColumnMayMakeItsTextAndARowMayHaveItsOwn) {
  ListColumn made;
  made.cell = [](const XmlDocument::XmlNode& node) { return node.getAttribute("id") + u"!"; };
  list.setColumns({made, ListColumn{}});
  EXPECT_EQ(list.cell(0, 0), u"n3!");
  EXPECT_EQ(list.cell(0, 1), u"");
  list.setCell(0, 1, u"own");
  list.setCell(0, 0, u"");
  EXPECT_EQ(list.cell(0, 1), u"own");
  EXPECT_EQ(list.cell(0, 0), u"") << "an empty own text is one too";
  EXPECT_EQ(list.cell(1, 0), u"n1!");
  const std::size_t added = list.addRow({nullptr, 7});
  EXPECT_EQ(list.cell(added, 0), u"");
  EXPECT_EQ(list.row(added).data, 7);
}

TEST_F(ListTest, ColumnWidthsAreSharesAndTheLastTakesTheRest) {
  struct Row {
    std::vector<int> shares;
    int width;
    std::vector<int> widths;
  };
  const Row rows[] = {
      {{1, 2, 1, 1}, 500, {100, 200, 100, 100}},
      {{1, 2, 1, 1}, 504, {100, 200, 100, 104}},
      {{1, 2, 1, 1}, 4, {0, 0, 0, 4}},
      {{1, 1, 1}, 100, {33, 33, 34}},
      {{1, 1, 1}, 0, {0, 0, 0}},
      {{1}, 77, {77}},
      {{2, 1, 1, 1, 1, 1, 1}, 87, {20, 10, 10, 10, 10, 10, 17}},
  };
  for (const Row& row : rows) {
    std::vector<ListColumn> columns;
    for (const int share : row.shares) columns.push_back(attributeColumn("id", share));
    list.setColumns(std::move(columns));
    EXPECT_EQ(list.columnWidths(row.width), row.widths);
  }
  list.setColumns({});
  EXPECT_THAT(list.columnWidths(100), IsEmpty());
}

// --- selection

TEST_F(ListTest, SelectingManyRowsIsOneNotice) {
  list.select({3, 0, 2, 0});
  EXPECT_EQ(list.selection(), (Rows{0, 2, 3}));
  EXPECT_TRUE(list.isSelected(2));
  EXPECT_FALSE(list.isSelected(1));
  EXPECT_FALSE(list.isSelected(99));
  EXPECT_EQ(owner.selections, 1);
  list.select({0, 2, 3});
  EXPECT_EQ(owner.selections, 1) << "no change";
  list.selectAll();
  EXPECT_EQ(list.selection(), (Rows{0, 1, 2, 3}));
  list.clearSelection();
  EXPECT_THAT(list.selection(), IsEmpty());
  EXPECT_EQ(owner.selections, 3);
}

TEST_F(ListTest, RowsThatDoNotExistAreLeftOut) {
  list.select({1, 4, 400});
  EXPECT_EQ(list.selection(), (Rows{1}));
  list.addToSelection(4);
  list.addToSelection(0);
  list.addToSelection(0);
  EXPECT_EQ(list.selection(), (Rows{0, 1}));
  EXPECT_EQ(owner.selections, 2);
}

TEST_F(ListTest, ASingleSelectListHoldsOneRow) {
  ListControl one(owner, host::singleSelectList(2, "one"));
  for (int i = 0; i < 3; ++i) one.addRow({});
  one.select({2, 1});
  EXPECT_EQ(one.selection(), (Rows{1}));
  one.addToSelection(2);
  EXPECT_EQ(one.selection(), (Rows{2}));
}

TEST_F(ListTest, ClearingTakesEverythingAwayWithoutANotice) {
  list.setCell(0, 0, u"own");
  list.setColour(0, {1, 2, 3});
  list.select({0});
  list.sort({0, false});
  list.clearRows();
  EXPECT_EQ(list.rowCount(), 0U);
  EXPECT_THAT(list.selection(), IsEmpty());
  EXPECT_EQ(list.sorted(), std::nullopt);
  EXPECT_EQ(owner.selections, 1);
  list.addRow({document.Root()->FirstChild(), 0});
  EXPECT_EQ(list.cell(0, 0), u"n3");
  EXPECT_EQ(list.colour(0), std::nullopt);
  EXPECT_FALSE(list.isSelected(0));
}

// --- sorting

TEST_F(ListTest, SortingIsOrdinalStableAndTogglesItsDirection) {
  list.sort({1, false});
  EXPECT_THAT(column(0), ElementsAre("n10", "n1", "n3", "n2"));
  list.sort({1, true});
  EXPECT_THAT(column(0), ElementsAre("n3", "n2", "n1", "n10"))
      << "equal rows keep the order in which they stood";
  list.sort({0, false});
  EXPECT_THAT(column(0), ElementsAre("n1", "n10", "n2", "n3"));
}

TEST_F(ListTest, SortingKeepsTheDocument) {
  const std::string before = document.ToString();
  list.sort({0, true});
  EXPECT_EQ(document.ToString(), before);
}

TEST_F(ListTest, TheSelectionMovesWithItsRowsWithoutANotice) {
  list.select({0, 3});
  list.sort({0, false});
  EXPECT_EQ(list.selection(), (Rows{1, 3}));
  EXPECT_EQ(list.cell(1, 0), u"n10");
  EXPECT_EQ(list.cell(3, 0), u"n3");
  EXPECT_TRUE(list.isSelected(3));
  EXPECT_FALSE(list.isSelected(0));
  EXPECT_EQ(owner.selections, 1);
}

TEST_F(ListTest, OwnTextsAndColoursMoveWithTheirRows) {
  list.setCell(1, 1, u"own");
  list.setColour(1, {0xA0, 0xA0, 0xA0});
  list.setSwatch(3, {1, 2, 3});
  list.sort({0, false});
  EXPECT_EQ(list.cell(0, 1), u"own");
  EXPECT_EQ(list.colour(0), (Colour{0xA0, 0xA0, 0xA0}));
  EXPECT_EQ(list.swatch(1), (Colour{1, 2, 3}));
  EXPECT_EQ(list.colour(1), std::nullopt);
  EXPECT_EQ(list.swatch(0), std::nullopt);
}

TEST_F(ListTest, SortingGoesByWhatIsShown) {
  list.setCell(3, 0, u"a first");
  list.sort({0, false});
  EXPECT_THAT(column(0), ElementsAre("a first", "n1", "n2", "n3"));
  ListColumn made;
  made.attribute = host::XmlName("id");
  made.cell = [](const XmlDocument::XmlNode& node) {
    return host::decimal(9 - node.getAttribute("id").Mid(1, 1).ToInt());
  };
  list.clearRows();
  list.setColumns({made});
  for (XmlDocument::XmlNode& node : document.Root()->Children()) list.addRow({&node, 0});
  list.sort({0, false});
  EXPECT_THAT(column(0), ElementsAre("6", "7", "8", "8"));
}

TEST_F(ListTest, AColumnMayHaveAnOrderOfItsOwn) {
  ListColumn numeric = attributeColumn("id");
  numeric.compare = [](const host::ListRow& a, const host::ListRow& b) {
    return a.element->getAttribute("id").Mid(1).ToInt() -
           b.element->getAttribute("id").Mid(1).ToInt();
  };
  list.setColumns({numeric});
  list.sort({0, false});
  EXPECT_THAT(column(0), ElementsAre("n1", "n2", "n3", "n10"));
  list.sort({0, true});
  EXPECT_THAT(column(0), ElementsAre("n10", "n3", "n2", "n1"));
}

TEST_F(ListTest, ARowAddedToASortedListStandsAtItsEnd) {
  list.sort({0, false});
  XmlDocument::XmlNode& added = document.Root()->NewChild("Node");
  added.setAttribute("id", u"n0");
  EXPECT_EQ(list.addRow({&added, 0}), 4U);
  EXPECT_THAT(column(0), ElementsAre("n1", "n10", "n2", "n3", "n0"));
  list.sort({0, false});
  EXPECT_THAT(column(0), ElementsAre("n0", "n1", "n10", "n2", "n3"));
}

TEST_F(ListTest, AColumnThatDoesNotExistSortsNothing) {
  list.sort({7, false});
  EXPECT_EQ(list.sorted(), std::nullopt);
  EXPECT_THAT(column(0), ElementsAre("n3", "n1", "n2", "n10"));
}

// --- finding

TEST_F(ListTest, ARowIsFoundByItsWholeCell) {
  EXPECT_EQ(list.findRow(0, u"n1"), 1U);
  EXPECT_EQ(list.findRow(0, u"n10"), 3U);
  EXPECT_EQ(list.findRow(0, u"N1"), std::nullopt);
  EXPECT_EQ(list.findRow(0, u"n"), std::nullopt);
  EXPECT_EQ(list.findRow(1, u"b"), 0U) << "the first one";
  EXPECT_EQ(list.findRow(1, u""), 3U);
}

TEST_F(ListTest, FindingFollowsTheSorting) {
  EXPECT_EQ(list.findRow(1, u"b"), 0U);
  list.sort({0, false});
  EXPECT_EQ(list.findRow(1, u"b"), 2U) << "n2 stands in front of n3 now";
  EXPECT_EQ(list.findRow(0, u"n3"), 3U);
}

TEST_F(ListTest, FindingSeesOwnTextsAddedRowsAndChangedElements) {
  EXPECT_EQ(list.findRow(0, u"own"), std::nullopt);
  list.setCell(2, 0, u"own");
  EXPECT_EQ(list.findRow(0, u"own"), 2U);
  EXPECT_EQ(list.findRow(0, u"n2"), std::nullopt);
  XmlDocument::XmlNode& added = document.Root()->NewChild("Node");
  added.setAttribute("id", u"late");
  list.addRow({&added, 0});
  EXPECT_EQ(list.findRow(0, u"late"), 4U);
  list.element(0)->setAttribute("id", u"renamed");
  list.cellsChanged();
  EXPECT_EQ(list.findRow(0, u"renamed"), 0U);
  EXPECT_EQ(list.findRow(0, u"n3"), std::nullopt);
}

TEST_F(ListTest, WhereTheLookingFailsOnceTheNextLooksAnew) {
  int cells = 0;
  int failing = 0;
  ListColumn made;
  made.cell = [&](const XmlDocument::XmlNode& node) {
    if (++cells == failing) throw std::bad_alloc();
    return node.getAttribute("id");
  };
  for (failing = 1; failing <= 4; ++failing) {
    list.setColumns({made});
    cells = 0;
    EXPECT_THROW(list.findRow(0, u"n2"), std::bad_alloc);
    EXPECT_EQ(list.findRow(0, u"n2"), 2U) << "cell " << failing << " failed";
    EXPECT_EQ(list.findRow(0, u"none"), std::nullopt);
  }
}

TEST_F(ListTest, ChangesAreToldTogetherAndOnce) {
  list.select({1});
  list.setCell(0, 0, u"x");
  EXPECT_EQ(list.takeChanges(), unsigned(host::Change::selection) | unsigned(host::Change::cells));
  EXPECT_EQ(list.takeChanges(), 0U);
}

// --- the user at a list

class ListGestures : public testing::Test {
 protected:
  void SetUp() override {
    dialog = &driver.show<sample::Dialog>();
    for (const int id : {sample::Id::Rows, sample::Id::OneRow}) {
      dialog->List(id).setColumns({attributeColumn("id")});
      for (XmlDocument::XmlNode& node : document.Root()->Children())
        dialog->List(id).addRow({&node, 0});
    }
  }

  sample::Module module;
  XmlDocument document =
      support::parsedXml("<r><n id=\"c\"/><n id=\"a\"/><n id=\"b\"/><n id=\"a\"/></r>");
  DialogDriver driver;
  sample::Dialog* dialog = nullptr;
};

TEST_F(ListGestures, OneGestureIsOneNotice) {
  driver.select("rows", {0, 1, 2});
  EXPECT_EQ(driver.selection("rows"), (Rows{0, 1, 2}));
  driver.select("rows", {2, 1, 0});
  driver.select("rows", {});
  EXPECT_THAT(dialog->log, ElementsAre("selection 6017", "selection 6017"));
}

TEST_F(ListGestures, RowsThatDoNotExistAreRefused) {
  EXPECT_FALSE(driver.trySelect("rows", {0, 4}).done);
  EXPECT_THAT(driver.selection("rows"), IsEmpty());
  EXPECT_FALSE(driver.trySelect("oneRow", {0, 1}).done);
  EXPECT_FALSE(driver.tryDoubleClick("rows", 4).done);
  EXPECT_FALSE(driver.trySort("rows", 1).done);
  EXPECT_THAT(dialog->log, IsEmpty());
}

TEST_F(ListGestures, ADoubleClickSelectsItsRowFirst) {
  driver.doubleClick("rows", 2);
  EXPECT_EQ(driver.selection("rows"), (Rows{2}));
  EXPECT_THAT(dialog->log, ElementsAre("selection 6017", "double 6017 2"));
}

TEST_F(ListGestures, ADoubleClickOnASelectedRowLeavesTheSelection) {
  driver.select("rows", {0, 1});
  dialog->log.clear();
  driver.doubleClick("rows", 1);
  EXPECT_EQ(driver.selection("rows"), (Rows{0, 1}));
  EXPECT_THAT(dialog->log, ElementsAre("double 6017 1"));
}

TEST_F(ListGestures, ClickingAHeaderAgainTurnsTheOrder) {
  driver.sort("rows", 0);
  EXPECT_THAT(driver.column("rows", 0), ElementsAre("a", "a", "b", "c"));
  driver.sort("rows", 0);
  EXPECT_THAT(driver.column("rows", 0), ElementsAre("c", "b", "a", "a"));
  driver.sort("rows", 0);
  EXPECT_THAT(driver.column("rows", 0), ElementsAre("a", "a", "b", "c"));
  EXPECT_THAT(dialog->log, IsEmpty());
}

}  // namespace
