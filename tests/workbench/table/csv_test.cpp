#include "workbench/table/csv.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using workbench::CsvTable;
using workbench::readCsv;

std::vector<std::vector<std::string>> cellsOf(const CsvTable& table) {
  std::vector<std::vector<std::string>> cells;
  for (const auto& line : table.lines) {
    cells.emplace_back();
    for (const auto& cell : line.cells) cells.back().push_back(cell.text);
  }
  return cells;
}

using Cells = std::vector<std::vector<std::string>>;

TEST(Csv, TakesAnySeparatorEitherLineEndAndAMarkOrNone) {
  const Cells wanted = {{"Id", "a"}, {"1", "x"}};
  for (const char* text :
       {"Id,a\n1,x\n", "Id;a\r\n1;x\r\n", "Id\ta\n1\tx", "\xEF\xBB\xBFId,a\n1,x\n"})
    EXPECT_EQ(cellsOf(readCsv(text)), wanted) << text;
}

TEST(Csv, TheFirstSeparatorOutsideQuotesIsTheOne) {
  EXPECT_EQ(cellsOf(readCsv("\"a,b\";c\n1;2,3\n")), (Cells{{"a,b", "c"}, {"1", "2,3"}}));
}

TEST(Csv, EmptyLinesBeforeTheNamesDoNotDecideTheSeparator) {
  EXPECT_EQ(cellsOf(readCsv("\r\n\nId;a\n1;2,3\n")), (Cells{{"Id", "a"}, {"1", "2,3"}}));
}

TEST(Csv, QuotesHoldSeparatorsQuotesAndLineEnds) {
  const CsvTable table = readCsv("Id,a\n1,\"x, \"\"y\"\"\nz\"\n2,b\n");
  EXPECT_EQ(cellsOf(table), (Cells{{"Id", "a"}, {"1", "x, \"y\"\nz"}, {"2", "b"}}));
  EXPECT_EQ(table.lines[1].line, 2U);
  EXPECT_EQ(table.lines[2].line, 4U);
  EXPECT_TRUE(table.faults.empty());
}

TEST(Csv, EmptyLinesArePassedOverAndEmptyCellsAreThere) {
  EXPECT_EQ(cellsOf(readCsv("\n\nId,a\n\n,\n1,\"\"\n")), (Cells{{"Id", "a"}, {"", ""}, {"1", ""}}));
}

TEST(Csv, QuotesThatDoNotEndOrHaveTextBehindThemAreFaultsWhereTheyBegin) {
  const CsvTable open = readCsv("Id,a\n1,\"x\n2,y\n");
  ASSERT_EQ(open.faults.size(), 1U);
  EXPECT_EQ(open.faults[0].line, 2U);
  EXPECT_EQ(open.faults[0].column, 2U);
  EXPECT_TRUE(open.faults[0].unended);
  const CsvTable behind = readCsv("Id,a\n\"1\"x,y\n");
  ASSERT_EQ(behind.faults.size(), 1U);
  EXPECT_EQ(behind.faults[0].line, 2U);
  EXPECT_EQ(behind.faults[0].column, 1U);
  EXPECT_FALSE(behind.faults[0].unended);
}

TEST(Csv, WritesQuotesOnlyWhereTheyAreNeeded) {
  workbench::CsvWriter out;
  for (const char* cell : {"a", "b,c", "d\"e", "f\ng", "h;i", ""}) out.cell(cell);
  out.endLine();
  EXPECT_EQ(out.text(), "a,\"b,c\",\"d\"\"e\",\"f\ng\",h;i,\n");
}

TEST(Csv, GuardsFormulasAndNothingElse) {
  const std::pair<const char*, const char*> cells[] = {
      {"=1+1", "'=1+1"}, {"@x", "'@x"},   {"-5", "-5"},         {"+0.5", "+0.5"}, {"-", "'-"},
      {"-a", "'-a"},     {"'=x", "''=x"}, {"''x", "'''x"},      {"'x", "'x"},     {"", ""},
      {"'", "'"},        {"5", "5"},      {"+1.2.3", "'+1.2.3"}};
  for (const auto& [text, cell] : cells) {
    EXPECT_EQ(workbench::guardedCell(text), cell) << text;
    EXPECT_EQ(workbench::unguardedCell(cell), text) << cell;
  }
  EXPECT_EQ(workbench::unguardedCell("'-5"), "-5");
}

TEST(Csv, WhatIsWrittenReadsAsItWas) {
  std::mt19937 random(7);
  const std::string alphabet = "ab,;\"\t\n'=-@ñ";
  for (int round = 0; round < 300; ++round) {
    Cells cells(1 + random() % 4, std::vector<std::string>(2 + random() % 3));
    const std::size_t columns = cells[0].size();
    for (auto& line : cells) {
      line.resize(columns);
      for (auto& cell : line)
        for (std::uint_fast32_t i = random() % 6; i > 0; --i)
          cell += alphabet[random() % (alphabet.size() - 2)];
    }
    cells[0][0] = "Id";
    for (const char separator : {',', ';'}) {
      workbench::CsvWriter out({separator, separator == ',' ? "\n" : "\r\n", separator == ';'});
      for (const auto& line : cells) {
        for (const auto& cell : line) out.cell(cell);
        out.endLine();
      }
      const CsvTable table = readCsv(out.text());
      EXPECT_TRUE(table.faults.empty());
      EXPECT_EQ(cellsOf(table), cells) << out.text();
    }
  }
}

}  // namespace
