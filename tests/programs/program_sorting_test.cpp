#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include "programs/program_lists.h"
#include "tests/support/texts.h"

namespace {

using lamp::ProgramKind;
using Node = XmlDocument::XmlNode;

class NoOwner : public host::ControlOwner {
 public:
  void onNotice(host::Control&, host::Notice, int) override {}
  void onChanged(host::Control&) override {}
};

std::string number(std::mt19937& random, unsigned below) {
  return std::to_string(random() % below);
}

std::string intervals(std::mt19937& random) {
  std::string program;
  for (const char* step : {"1", "2", "3", "4"})
    program += " time" + std::string(step) + "='" + number(random, 120) + "' power" + step + "='" +
               number(random, 101) + "'";
  return program;
}

std::string clocks(std::mt19937& random) {
  std::string program;
  for (const char* step : {"1", "2", "3", "4"})
    program += " hour" + std::string(step) + "='" + number(random, 24) + "' min" + step + "='" +
               number(random, 60) + "' power" + step + "='" + number(random, 101) + "'";
  return program;
}

/// A list of nodes with programs whose values repeat often.
class ProgramSorting : public testing::Test {
 protected:
  ProgramSorting() : list_((support::texts(), owner_), host::list(6000, "nodes")) {}

  void fill(int count, ProgramKind kind) {
    const auto programOf = kind == ProgramKind::clock ? &clocks : &intervals;
    std::string xml = "<L06>";
    for (int i = 0; i < count; ++i)
      xml += "<Node Id='" + std::to_string(random_() % 500) + "'" + programOf(random_) + "/>";
    ASSERT_TRUE(document_.Parse(xml + "</L06>"));
    list_.setColumns(CNodesListCtrl::Columns(kind));
    for (Node& node : document_.Root()->Children()) list_.addRow({&node});
  }
  std::unordered_map<const Node*, std::size_t> places() const {
    std::unordered_map<const Node*, std::size_t> places;
    for (std::size_t row = 0; row < list_.rowCount(); ++row) places[list_.element(row)] = row;
    return places;
  }
  /// Sorts and holds every pair of neighbours against the order by comparison.
  void expectSorted(std::size_t column, bool descending) {
    const auto before = places();
    list_.sort({column, descending});
    for (std::size_t row = 1; row < list_.rowCount(); ++row) {
      const int order = lamp::compareProgramRows(list_.row(row - 1), list_.row(row), column);
      ASSERT_LE(descending ? -order : order, 0) << "column " << column << ", row " << row;
      if (order != 0) continue;
      ASSERT_LT(before.at(list_.element(row - 1)), before.at(list_.element(row)))
          << "equal rows keep their order; column " << column << ", row " << row;
    }
  }

  std::mt19937 random_{20250315};
  NoOwner owner_;
  XmlDocument document_;
  host::ListControl list_;
};

TEST_F(ProgramSorting, AHundredThousandNodesAreSortedAndEqualOnesKeepTheirOrder) {
  fill(100'000, ProgramKind::interval);
  const std::string before = document_.ToString();
  for (const std::size_t column : {0U, 3U, 4U})
    for (const bool descending : {false, true}) expectSorted(column, descending);
  EXPECT_EQ(document_.ToString(), before) << "what is sent keeps its order";
}

TEST_F(ProgramSorting, EveryColumnOfBothKindsIsInTheOrderOfComparison) {
  for (const auto kind : {ProgramKind::interval, ProgramKind::clock}) {
    list_.clearRows();
    fill(2'000, kind);
    for (std::size_t column = 0; column < lamp::ProgramColumns; ++column)
      for (const bool descending : {false, true}) expectSorted(column, descending);
  }
}

TEST_F(ProgramSorting, ANumberOfARowSaysWhatComparingSays) {
  const char* const rows[] = {"time1='5' power1='7'",  "time1='50' power1='0'",
                              "time1='' power1=''",    "time1='-3' power1='-1'",
                              "time1='x' power1='1x'", "hour1='9' min1='59'",
                              "hour1='10' min1='0'",   "hour1='7'",
                              "hour1='99' min1='99'",  "hour1='100' min1='1'",
                              "hour1='-1' min1='1'",   "hour1='11' min1='100'"};
  std::vector<XmlDocument> documents;
  for (const char* row : rows)
    ASSERT_TRUE(documents.emplace_back().Parse("<n " + std::string(row) + "/>"));
  int numbered = 0;
  for (const auto kind : {ProgramKind::interval, ProgramKind::clock}) {
    const auto columns = CNodesListCtrl::Columns(kind);
    for (std::size_t column = 1; column <= 2; ++column)
      for (XmlDocument& first : documents)
        for (XmlDocument& second : documents) {
          const auto left = columns[column].number(*first.Root());
          const auto right = columns[column].number(*second.Root());
          if (!left || !right) continue;
          ++numbered;
          const int order = columns[column].compare({first.Root()}, {second.Root()});
          EXPECT_EQ(*left < *right, order < 0) << first.ToString() << second.ToString();
          EXPECT_EQ(*left > *right, order > 0) << first.ToString() << second.ToString();
        }
  }
  EXPECT_GT(numbered, 300);
}

TEST_F(ProgramSorting, RowsOfBothKindsAreComparedTwoByTwo) {
  list_.setColumns(CNodesListCtrl::Columns(ProgramKind::interval));
  ASSERT_TRUE(document_.Parse("<L06><N Id='b' hour1='1'/><N Id='a' time1='50'/></L06>"));
  for (Node& node : document_.Root()->Children()) list_.addRow({&node});
  list_.sort({1, false});
  EXPECT_EQ(list_.cell(0, 0), u"b") << "50 minutes are held against the missing ones of the other";
  EXPECT_EQ(list_.cell(1, 0), u"a");
}

}  // namespace
