#include "workbench/read_back.h"

#include <gtest/gtest.h>

namespace {

using workbench::ReadBackReport;

ReadBackReport compare(const char* sent, const char* read) {
  XmlDocument sentDocument;
  XmlDocument readDocument;
  EXPECT_TRUE(sentDocument.Parse(sent));
  EXPECT_TRUE(readDocument.Parse(read));
  return workbench::compareReadBack(*sentDocument.Root(), *readDocument.Root());
}

TEST(ReadBack, OnlyWhatWasSentIsCompared) {
  const ReadBackReport report =
      compare("<E01 TimeZone='4' FTPPwd='***'/>", "<L01 Fh='1' TimeZone='4' name='x' FTPPwd='y'/>");
  EXPECT_EQ(report.values, 1U);
  EXPECT_TRUE(report.notTaken.empty());
}

TEST(ReadBack, AValueThatIsOtherOrGoneIsTold) {
  const ReadBackReport report =
      compare("<E01 TimeZone='4' hourIni='1' name='a'/>", "<L01 TimeZone='0' name='a'/>");
  EXPECT_EQ(report.values, 3U);
  ASSERT_EQ(report.notTaken.size(), 2U);
  EXPECT_EQ(report.notTaken[0].what, "TimeZone");
  EXPECT_EQ(report.notTaken[0].sent, "4");
  EXPECT_EQ(report.notTaken[0].now, "0");
  EXPECT_EQ(report.notTaken[1].what, "hourIni");
  EXPECT_EQ(report.notTaken[1].now, "");
}

TEST(ReadBack, ATaskThatWasDeletedIsTakenWhenItIsGone) {
  constexpr const char* Sent =
      "<E02><TP TpTar='1' TpHi='a' TpPer=''><TpPro TpReq='L03'/></TP>"
      "<TP TpTar='4' TpHi='b' TpPer='1'><TpPro TpReq='L09'/><TpPro TpReq='L15'/></TP></E02>";
  const ReadBackReport taken = compare(
      Sent,
      "<L02><TP TpTar='4' TpHi='b' TpPer='1'><TpPro TpReq='L09'/><TpPro TpReq='L15'/></TP></L02>");
  EXPECT_TRUE(taken.notTaken.empty()) << taken.notTaken[0].what;
  const ReadBackReport kept =
      compare(Sent,
              "<L02><TP TpTar='1' TpHi='a' TpPer='7'/><TP TpTar='4' TpHi='b' TpPer='1'>"
              "<TpPro TpReq='L09'/></TP></L02>");
  ASSERT_EQ(kept.notTaken.size(), 2U);
  EXPECT_EQ(kept.notTaken[0].what, "TP[1] TpPer");
  EXPECT_EQ(kept.notTaken[0].now, "7");
  EXPECT_EQ(kept.notTaken[1].what, "TP[4] TpPro[2] TpReq");
}

TEST(ReadBack, OutputsAreKnownByTheirNumberAndTheirStateIsNotCompared) {
  const ReadBackReport report =
      compare("<E13><Output Dir='3' Value='0' On='Y'/><Output Dir='2' Value='0' On='N'/></E13>",
              "<L13><Output Dir='2' Value='0' On='Y'/><Output Dir='3' Value='1' On='Y'/></L13>");
  ASSERT_EQ(report.notTaken.size(), 1U);
  EXPECT_EQ(report.notTaken[0].what, "Output[2] On");
}

TEST(ReadBack, RowsAreFoundByTheirNodeInAnyOrderAndForm) {
  const ReadBackReport report = compare(
      "<E05 ActDate='20250315100000W'><Node nodeId='1'><Interval time='5' power='50'/></Node>"
      "<Node nodeId='2'><Interval time='7' power='70'/></Node></E05>",
      "<L05 Fh='2025'><Node Id='2' time='7' power='60'/><Node Id='1' time='5' power='50'/></L05>");
  EXPECT_EQ(report.values, 4U);
  EXPECT_EQ(report.activation, "20250315100000W");
  ASSERT_EQ(report.notTaken.size(), 1U);
  EXPECT_EQ(report.notTaken[0].what, "2: power");
}

TEST(ReadBack, NestedElementsAreComparedByTheirPlace) {
  const ReadBackReport report =
      compare("<E02><Task n='1'><Action a='x'/></Task><Task n='2'/></E02>",
              "<L02><Task n='1'><Action a='y'/></Task><Task n='2'/></L02>");
  EXPECT_EQ(report.values, 3U);
  ASSERT_EQ(report.notTaken.size(), 1U);
  EXPECT_EQ(report.notTaken[0].what, "Task[1] Action[1] a");
}

}  // namespace
