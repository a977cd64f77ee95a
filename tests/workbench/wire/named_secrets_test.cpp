#include "workbench/wire/named_secrets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

using workbench::SecretPattern;
using workbench::TextSpan;

// The text with what is found replaced; "s;3" is known.
std::string shown(std::string text) {
  std::vector<TextSpan> found;
  workbench::findNamedSecrets(text, {SecretPattern("s;3")}, found);
  std::sort(found.begin(), found.end(),
            [](const TextSpan& a, const TextSpan& b) { return a.from > b.from; });
  for (const TextSpan& span : found) text.replace(span.from, span.to - span.from, "***");
  return text;
}

struct Case {
  const char* text;
  const char* shown;
};

class NamedSecrets : public testing::TestWithParam<Case> {};

TEST_P(NamedSecrets, AreFoundInAllTheFormsThatControllersRepeat) {
  EXPECT_EQ(shown(GetParam().text), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, NamedSecrets,
    testing::Values(
        // parameters
        Case{"POST /x?ftpUser=u&ftpPassword=ab&x=1 refused",
             "POST /x?ftpUser=u&ftpPassword=***&x=1 refused"},
        Case{"ftpPassword=ab refused", "ftpPassword=*** refused"},
        Case{"ftpPassword%3Dab%26x%3D1", "ftpPassword%3D***%26x%3D1"},
        Case{"wrong (mailUser=a@b.c), says it", "wrong (mailUser=***), says it"},
        Case{"ftpPassword=s;3.", "ftpPassword=***."},
        // attributes
        Case{"<E01 FTPPwd=\"a b\" x=\"1\"/>", "<E01 FTPPwd=\"***\" x=\"1\"/>"},
        Case{"<E01 FTPPwd = 'a\"b' x='1'/>", "<E01 FTPPwd = '***' x='1'/>"},
        Case{"&lt;E01 FTPPwd=&quot;a&amp;b&quot; x", "&lt;E01 FTPPwd=&quot;***&quot; x"},
        Case{"&lt;E01 FTPPwd=&#34;a b&#34; x", "&lt;E01 FTPPwd=&#34;***&#34; x"},
        Case{"FTPPwd=\"cut off", "FTPPwd=\"*** off"},
        // elements
        Case{"<d><ftpPassword>a b</ftpPassword></d>", "<d><ftpPassword>***</ftpPassword></d>"},
        Case{"<FTPPwd a=\"1\">a</FTPPwd><FTPPwd>b</FTPPwd>",
             "<FTPPwd a=\"1\">***</FTPPwd><FTPPwd>***</FTPPwd>"},
        Case{"&lt;FTPPwd&gt;a b&lt;/FTPPwd&gt;", "&lt;FTPPwd&gt;***&lt;/FTPPwd&gt;"},
        // members
        Case{"{\"mailPassword\":\"ab\",\"x\":1}", "{\"mailPassword\":\"***\",\"x\":1}"},
        Case{"{\"mailPassword\" : \"a b\"}", "{\"mailPassword\" : \"***\"}"},
        Case{"\"{\\\"mailPassword\\\":\\\"a b\\\"}\"", "\"{\\\"mailPassword\\\":\\\"***\\\"}\""},
        // behind a colon only what is known
        Case{"mailUser: s;3 is unknown", "mailUser: *** is unknown"},
        Case{"mailUser: is missing", "mailUser: is missing"},
        Case{"FTPPwd is too short", "FTPPwd is too short"},
        // nothing there, or not the name
        Case{"ftpPassword=&x=1", "ftpPassword=&x=1"}, Case{"FTPPwd=\"\"", "FTPPwd=\"\""},
        Case{"<ftpPassword/>a<b>", "<ftpPassword/>a<b>"},
        Case{"<ftpPassword></ftpPassword>", "<ftpPassword></ftpPassword>"},
        Case{"xFTPPwd=\"ab\" FTPPwds=\"ab\" FTPPwd_1=ab",
             "xFTPPwd=\"ab\" FTPPwds=\"ab\" FTPPwd_1=ab"},
        Case{"FTPPwd", "FTPPwd"}, Case{"<FTPPwd", "<FTPPwd"}, Case{"FTPPwd=", "FTPPwd="},
        Case{"FTPPwd=\"", "FTPPwd=\""}, Case{"", ""}));

// A cost that grew with the square of the text would end in the test's time limit.
TEST(NamedSecretsCost, GrowsWithTheTextHoweverManyNamesStandInIt) {
  for (const char* piece : {"<FTPPwd", "<FTPPwd>", "FTPPwd=\"", "FTPPwd='x", "&lt;FTPPwd",
                            "FTPPwd=&quot;", "ftpPassword=", "ftpPassword=s;", "mailUser: "}) {
    std::string text;
    while (text.size() < (2U << 20)) text += piece;
    std::vector<TextSpan> found;
    workbench::findNamedSecrets(text, {SecretPattern("s;3")}, found);
  }
}

}  // namespace
