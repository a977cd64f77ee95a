#include "host/dialogs/base_dlg.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <utility>

#include "tests/host/support/sample_dialog.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/xml_compare.h"

using sample::Id;
using support::DialogDriver;
using support::TopKind;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class BaseDlg : public testing::Test {
 protected:
  sample::Module module;
  DialogDriver driver;
};

// --- life

TEST_F(BaseDlg, ATemplateThatNobodyHasOpensNothing) {
  class Missing : public XCBaseDlg {
   public:
    Missing() : XCBaseDlg(12345, nullptr) {}
    bool OnInitDialog() override {
      ADD_FAILURE() << "must not be initialised";
      return true;
    }
  };
  driver.show<Missing>();
  EXPECT_EQ(driver.result(), IDCANCEL);
  EXPECT_THAT(driver.closed(), IsEmpty());
  Missing child;
  driver.run([&] { EXPECT_FALSE(child.Create(nullptr)); });
}

TEST_F(BaseDlg, KnowsItsTemplateClassAndTitle) {
  auto& dialog = driver.show<sample::Dialog>();
  EXPECT_EQ(dialog.TemplateNumber(), sample::Template);
  EXPECT_EQ(dialog.ClassName(), "SampleDialog");
  EXPECT_EQ(driver.title(), "Sample");
  dialog.SetWindowText(u"Another");
  EXPECT_EQ(driver.title(), "Another");
}

TEST_F(BaseDlg, ADialogThatEndsWhileItIsInitialisedIsNotShown) {
  class Short : public sample::Dialog {
   public:
    bool OnInitDialog() override {
      EndDialog(IDOK);
      return true;
    }
  };
  driver.show<Short>();
  EXPECT_EQ(driver.result(), IDOK);
  EXPECT_THAT(driver.closed(), IsEmpty());
}

TEST_F(BaseDlg, CloseLeadsToCancel) {
  driver.show<sample::Dialog>();
  driver.close();
  EXPECT_EQ(driver.result(), IDCANCEL);
}

TEST_F(BaseDlg, OkStaysOpenUntilTheDialogEndsItself) {
  auto& dialog = driver.show<sample::Dialog>();
  bool good = false;
  dialog.onOk = [&] { return good; };
  driver.click("ok");
  EXPECT_EQ(driver.top(), TopKind::dialog);
  good = true;
  driver.click(IDOK);
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(BaseDlg, ADialogCanBeShownAgain) {
  sample::Dialog dialog;
  int first = 0;
  int second = 0;
  driver.run([&] { first = dialog.DoModal(); });
  driver.click("ok");
  driver.run([&] { second = dialog.DoModal(); });
  EXPECT_EQ(driver.top(), TopKind::dialog);
  EXPECT_FALSE(dialog.HasEnded());
  driver.click("cancel");
  EXPECT_EQ(first, IDOK);
  EXPECT_EQ(second, IDCANCEL);
}

TEST_F(BaseDlg, MessagesAreAskedInFrontOfTheDialog) {
  auto& dialog = driver.show<sample::Dialog>();
  int answer = 0;
  dialog.onPush = [&] {
    answer = dialog.MessageBox(host::TextId::ReadFailed, host::MessageButtons::retryCancel,
                               host::MessageIcon::warning);
  };
  driver.click("push");
  EXPECT_EQ(driver.message().text, "[330]");
  EXPECT_EQ(driver.message().buttons, host::MessageButtons::retryCancel);
  EXPECT_EQ(driver.message().icon, host::MessageIcon::warning);
  driver.answer(host::MessageAnswer::retry);
  EXPECT_EQ(answer, IDRETRY);
}

// --- focus

TEST_F(BaseDlg, TheFirstControlThatTakesItGetsTheFocus) {
  class Plain : public sample::Dialog {
   public:
    bool OnInitDialog() override {
      GetDlgItem(Id::Push).setEnabled(false);
      GetDlgItem(Id::Other).setVisible(false);
      return true;
    }
  };
  driver.show<Plain>();
  EXPECT_EQ(driver.focus(), "radioA") << "labels, group boxes, disabled and hidden ones do not";
}

TEST_F(BaseDlg, AFocusSetWhileInitialisingStays) {
  class Chosen : public sample::Dialog {
   public:
    bool OnInitDialog() override {
      FocusAndSelectAll(Id::Free);
      return true;
    }
  };
  driver.show<Chosen>();
  EXPECT_EQ(driver.focus(), "free");
}

TEST_F(BaseDlg, ADialogMayLeaveTheFocusAlone) {
  class None : public sample::Dialog {
   public:
    bool OnInitDialog() override { return false; }
  };
  driver.show<None>();
  EXPECT_EQ(driver.focus(), "");
}

TEST_F(BaseDlg, FocusAndSelectAllSelectsTheWholeText) {
  auto& dialog = driver.show<sample::Dialog>();
  dialog.SetDlgItemText(Id::Free, u"abc");
  dialog.FocusAndSelectAll(Id::Free);
  EXPECT_EQ(driver.focus(), "free");
  EXPECT_EQ(driver.selectedCharacters("free"), std::pair(std::size_t(0), std::size_t(3)));
  dialog.FocusAndSelectAll(Id::Choice);
  EXPECT_EQ(driver.focus(), "choice");
}

// --- the arrangement

TEST_F(BaseDlg, WithoutALayoutTheControlsStandOneBelowTheOther) {
  auto& dialog = driver.show<sample::Dialog>();
  EXPECT_EQ(dialog.Arrangement().kind, host::LayoutItem::Kind::column);
  ASSERT_EQ(dialog.Arrangement().items.size(), dialog.Controls().size());
  EXPECT_EQ(dialog.Arrangement().items[2].controlId, Id::Push);
}

TEST_F(BaseDlg, ALayoutOfItsOwnStays) {
  class Arranged : public sample::Dialog {
   public:
    void Layout() override { SetLayout(XCHoritzontalLayout({host::layout::okCancelRow()})); }
  };
  auto& dialog = driver.show<Arranged>();
  EXPECT_EQ(dialog.Arrangement().kind, host::LayoutItem::Kind::row);
  EXPECT_EQ(dialog.Arrangement().items.size(), 1U);
}

TEST_F(BaseDlg, AControlThatTheTemplateLacksIsAMistakeOfTheProgram) {
  sample::Dialog dialog;
  EXPECT_THROW(dialog.GetDlgItem(4711), std::logic_error);
  EXPECT_EQ(dialog.FindControl(4711), nullptr);
  EXPECT_EQ(dialog.FindControl("nothing"), nullptr);
  EXPECT_EQ(dialog.FindControl("push"), dialog.FindControl(Id::Push));
}

// --- handlers

class Derived : public sample::Dialog {
 public:
  const host::MessageMap* GetMessageMap() const override {
    static constexpr host::MessageEntry entries[] = {
        host::onClick<&Derived::first>(Id::Push), host::onClick<&Derived::second>(Id::Push),
        host::onClick<&Derived::range>(Id::Push, Id::RadioA), host::onKey<&Derived::key>(Id::Rows),
        host::onPosted<&Derived::posted>(5)};
    static const host::MessageMap map{sample::Dialog::GetMessageMap(), entries};
    return &map;
  }

 private:
  void first() { log.push_back("first"); }
  void second() { log.push_back("second"); }
  void range(int id) { log.push_back("range " + std::to_string(id)); }
  void key(host::Key key) { log.push_back(key == host::Key::insert ? "insert" : "other key"); }
  void posted(int parameter) { log.push_back("own posted " + std::to_string(parameter)); }
};

TEST_F(BaseDlg, TheFirstFittingEntryOfTheMapIsCalledAndTheBaseServesTheRest) {
  auto& dialog = driver.show<Derived>();
  driver.click("push");
  driver.click("other");
  driver.click("radioA");
  driver.click("radioB");
  driver.press("rows", host::Key::insert);
  driver.press("rows", host::Key::deleteKey);
  EXPECT_THAT(dialog.log, ElementsAre("first", "range 6003", "range 6004", "click 6005", "insert",
                                      "other key"));
}

TEST_F(BaseDlg, ADerivedMapMayTakeOkOver) {
  class OwnOk : public sample::Dialog {
   public:
    const host::MessageMap* GetMessageMap() const override {
      static constexpr host::MessageEntry entries[] = {host::onClick<&OwnOk::ok>(IDOK)};
      static const host::MessageMap map{sample::Dialog::GetMessageMap(), entries};
      return &map;
    }

   private:
    void ok() { log.push_back("own ok"); }
  };
  auto& dialog = driver.show<OwnOk>();
  driver.click("ok");
  EXPECT_THAT(dialog.log, ElementsAre("own ok"));
  EXPECT_EQ(driver.result(), std::nullopt);
}

TEST_F(BaseDlg, PostedMessagesRunWhenTheNoticeIsOver) {
  auto& dialog = driver.show<Derived>();
  driver.run([&] {
    dialog.onChange = [](sample::Dialog& self) {
      self.PostMessage(5, 1);
      self.PostMessage(sample::Posted, 2);
      self.PostMessage(99, 3);
      self.log.push_back("notice over");
    };
  });
  driver.type("free", "x");
  EXPECT_THAT(dialog.log, ElementsAre("change 6010", "notice over", "own posted 1", "posted 2"));
}

TEST_F(BaseDlg, AMessagePostedByAMessageRunsInTheSameGesture) {
  class Chain : public sample::Dialog {
   public:
    const host::MessageMap* GetMessageMap() const override {
      static constexpr host::MessageEntry entries[] = {host::onClick<&Chain::start>(Id::Push),
                                                       host::onPosted<&Chain::step>(1)};
      static constexpr host::MessageMap map{nullptr, entries};
      return &map;
    }

   private:
    void start() { PostMessage(1, 3); }
    void step(int left) {
      log.push_back(std::to_string(left));
      if (left > 0) PostMessage(1, left - 1);
      if (left == 1) DispatchPosted();
    }
  };
  auto& dialog = driver.show<Chain>();
  driver.click("push");
  EXPECT_THAT(dialog.log, ElementsAre("3", "2", "1", "0"));
}

TEST_F(BaseDlg, MessagesPostedToAnEndedDialogAreDropped) {
  auto& dialog = driver.show<sample::Dialog>();
  dialog.onOk = [&] {
    dialog.PostMessage(sample::Posted, 1);
    return true;
  };
  driver.click("ok");
  EXPECT_THAT(dialog.log, ElementsAre("ok"));
}

TEST_F(BaseDlg, AChangeMayPostAMessageForItself) {
  auto& dialog = driver.show<sample::Dialog>();
  dialog.onChange = [](sample::Dialog& self) { self.PostMessage(sample::Posted, 0); };
  driver.type("free", "a");
  driver.type("private", "b");
  EXPECT_THAT(dialog.log, ElementsAre("change 6010", "posted 0",
                                      "change " + std::to_string(int(Id::Unnamed)), "posted 0"));
}

// --- no memory

void runOutOfMemory() {
  throw std::bad_alloc();
}

TEST_F(BaseDlg, AHandlerThatRunsOutOfMemoryIsToldOfAndTheDialogGoesOn) {
  auto& dialog = driver.show<sample::Dialog>();
  driver.type("free", "kept");
  dialog.onPush = &runOutOfMemory;
  dialog.onOk = [first = true]() mutable {
    if (std::exchange(first, false)) runOutOfMemory();
    return true;
  };
  for (const char* button : {"push", "ok"}) {
    driver.click(button);
    ASSERT_EQ(driver.top(), TopKind::message) << button;
    EXPECT_EQ(driver.message().text, XCLoadString(host::TextId::NotEnoughMemory).ToUtf8());
    driver.answer(host::MessageAnswer::ok);
    EXPECT_EQ(driver.text("free"), "kept");
  }
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(BaseDlg, AMessageThatRunsOutOfMemoryKeepsNoOtherFromBeingHandled) {
  class Posting : public sample::Dialog {
   public:
    const host::MessageMap* GetMessageMap() const override {
      static constexpr host::MessageEntry entries[] = {host::onClick<&Posting::start>(Id::Push),
                                                       host::onPosted<&Posting::step>(1)};
      static constexpr host::MessageMap map{nullptr, entries};
      return &map;
    }

   private:
    void start() {
      PostMessage(1, 1);
      PostMessage(1, 2);
    }
    void step(int number) {
      if (number == 1) runOutOfMemory();
      log.push_back(std::to_string(number));
    }
  };
  auto& dialog = driver.show<Posting>();
  driver.click("push");
  driver.answer(host::MessageAnswer::ok);
  EXPECT_THAT(dialog.log, ElementsAre("2"));
}

TEST_F(BaseDlg, ADialogWithoutMemoryToOpenIsToldOfAndCancelled) {
  class Large : public sample::Dialog {
   public:
    bool OnInitDialog() override {
      runOutOfMemory();
      return true;
    }
  };
  driver.show<Large>();
  ASSERT_EQ(driver.top(), TopKind::message);
  driver.answer(host::MessageAnswer::ok);
  EXPECT_EQ(driver.result(), IDCANCEL);
  EXPECT_EQ(driver.top(), TopKind::none);
}

// --- data exchange

class Exchanging : public sample::Dialog {
 public:
  void DoDataExchange(CDataExchange* exchange) override {
    DDX_Text(*exchange, Id::Free, text);
    DDX_Check(*exchange, Id::Box1, on);
    DDX_Radio(*exchange, Id::RadioA, choice);
    DDX_Radio(*exchange, Id::RadioD, single);
    toMembers = exchange->m_bSaveAndValidate;
  }
  XCBasicString text = u"begin";
  bool on = true;
  int choice = 1;
  int single = -1;
  bool toMembers = true;
};

TEST_F(BaseDlg, MembersGoToTheControlsAtTheBeginning) {
  auto& dialog = driver.show<Exchanging>();
  EXPECT_FALSE(dialog.toMembers);
  EXPECT_EQ(driver.text("free"), "begin");
  EXPECT_TRUE(driver.checked("check"));
  EXPECT_FALSE(driver.checked("radioA"));
  EXPECT_TRUE(driver.checked("radioB"));
  EXPECT_FALSE(driver.checked("radioD"));
}

TEST_F(BaseDlg, ControlsGoToTheMembersWhenAsked) {
  auto& dialog = driver.show<Exchanging>();
  driver.type("free", "end ñ");
  driver.check("check", false);
  driver.click("radioC");
  driver.click("radioD");
  EXPECT_EQ(dialog.text, u"begin");
  dialog.UpdateData(true);
  EXPECT_TRUE(dialog.toMembers);
  EXPECT_EQ(dialog.text, u"end ñ");
  EXPECT_FALSE(dialog.on);
  EXPECT_EQ(dialog.choice, 2);
  EXPECT_EQ(dialog.single, 0);
}

TEST_F(BaseDlg, NoRadioButtonIsMinusOne) {
  auto& dialog = driver.show<Exchanging>();
  dialog.choice = -1;
  dialog.UpdateData(false);
  EXPECT_FALSE(driver.checked("radioB"));
  dialog.choice = 7;
  dialog.UpdateData(true);
  EXPECT_EQ(dialog.choice, -1);
}

// --- commands

class Commands : public BaseDlg {
 protected:
  class Addressed : public sample::Dialog {
   public:
    bool addUriParams(XCBasicString& uri, bool first) override {
      if (addUriParam(uri, u"a", u"1", first)) first = false;
      addUriParam(uri, u"b", u"x y+z/ñ", first);
      return true;
    }
  };
  Addressed dialog;
};

TEST_F(Commands, AReadReplacesTheDocument) {
  XmlDocument document = support::parsedXml("<deviceCfg><L01/></deviceCfg>");
  driver.channel().replyWith("<reply><ZelLamp/></reply>");
  EXPECT_TRUE(dialog.getCommand(1, &document, true));
  EXPECT_XML_EQ("<reply><ZelLamp/></reply>", document);
  const support::Exchange& sent = driver.channel().last();
  EXPECT_EQ(sent.command, 1);
  EXPECT_EQ(sent.kind, host::CommandKind::get);
  EXPECT_EQ(sent.request, "<deviceCfg><L01/></deviceCfg>");
  EXPECT_EQ(sent.uri, "a=1&b=x%20y%2Bz%2F%C3%B1");
  EXPECT_EQ(sent.parameter("b"), "x y+z/ñ");
}

TEST_F(Commands, AnEmptyReplyEmptiesTheDocument) {
  XmlDocument document = support::parsedXml("<deviceCfg/>");
  driver.channel().replyEmpty();
  EXPECT_TRUE(dialog.getCommand(1, &document, true));
  EXPECT_EQ(document.Root(), nullptr);
}

TEST_F(Commands, AFailedReadKeepsTheDocumentAndTellsWhy) {
  XmlDocument document = support::parsedXml("<deviceCfg/>");
  driver.channel().failWith("no route");
  EXPECT_FALSE(dialog.getCommand(1, &document, true));
  EXPECT_XML_EQ("<deviceCfg/>", document);
  EXPECT_EQ(dialog.getErrorMsg(), u"no route");
  EXPECT_FALSE(dialog.silentFailure());
}

TEST_F(Commands, AWriteKeepsItsDocument) {
  XmlDocument document = support::parsedXml("<deviceCfg><E01 a=\"1\"/></deviceCfg>");
  EXPECT_TRUE(dialog.putCommand(2, &document, false));
  EXPECT_XML_EQ("<deviceCfg><E01 a=\"1\"/></deviceCfg>", document);
  EXPECT_EQ(driver.channel().last().kind, host::CommandKind::put);
  EXPECT_EQ(driver.channel().last().command, 2);
}

TEST_F(Commands, ACancelledExchangeFailsSilentlyWithoutAText) {
  XmlDocument document("deviceCfg");
  driver.channel().failWith("before");
  EXPECT_FALSE(dialog.putCommand(2, &document, false));
  driver.channel().cancel();
  EXPECT_FALSE(dialog.putCommand(2, &document, false));
  EXPECT_TRUE(dialog.silentFailure());
  EXPECT_EQ(dialog.getErrorMsg(), u"");
}

TEST_F(Commands, ASuccessClearsTheErrorAndTheFlag) {
  XmlDocument document("deviceCfg");
  driver.channel().failWith("before");
  EXPECT_FALSE(dialog.putCommand(2, &document, false));
  EXPECT_TRUE(dialog.putCommand(2, &document, false));
  EXPECT_EQ(dialog.getErrorMsg(), u"");
  driver.channel().cancel();
  EXPECT_FALSE(dialog.putCommand(2, &document, false));
  EXPECT_TRUE(dialog.putCommand(2, &document, false));
  EXPECT_FALSE(dialog.silentFailure());
}

TEST_F(Commands, ARequestWithoutRootIsSentEmpty) {
  XmlDocument document;
  EXPECT_TRUE(dialog.putCommand(30, &document, false));
  EXPECT_EQ(driver.channel().last().request, "");
}

TEST(UriParameters, ArePercentEncodedUtf8) {
  struct Row {
    const char16_t* value;
    const char16_t* encoded;
  };
  const Row rows[] = {{u"", u"n="},
                      {u"abcXYZ019-._~", u"n=abcXYZ019-._~"},
                      {u"+", u"n=%2B"},
                      {u" ", u"n=%20"},
                      {u"&=?#%/:@", u"n=%26%3D%3F%23%25%2F%3A%40"},
                      {u"ñ€\U0001F4A1", u"n=%C3%B1%E2%82%AC%F0%9F%92%A1"},
                      {u"\r\n\t\"<>'", u"n=%0D%0A%09%22%3C%3E%27"}};
  for (const Row& row : rows) {
    XCBasicString uri;
    EXPECT_TRUE(XCBaseDlg::addUriParam(uri, u"n", row.value, true));
    EXPECT_EQ(uri, row.encoded);
  }
}

TEST(UriParameters, StandInTheirOrderBehindOneAnother) {
  XCBasicString uri;
  EXPECT_TRUE(XCBaseDlg::addUriParam(uri, u"a", u"1", true));
  EXPECT_TRUE(XCBaseDlg::addUriParam(uri, u"b", u"", false));
  EXPECT_TRUE(XCBaseDlg::addUriParam(uri, u"a b", u"2", false));
  EXPECT_EQ(uri, u"a=1&b=&a%20b=2");
}

TEST(UriParameters, WithoutANameNothingIsAppended) {
  XCBasicString uri(u"x=1");
  EXPECT_FALSE(XCBaseDlg::addUriParam(uri, u"", u"value", false));
  EXPECT_EQ(uri, u"x=1");
}

TEST_F(BaseDlg, VerifyingConnectionsIsTheProgramsChoice) {
  EXPECT_FALSE(XCBaseDlg::needVerifyConnection(true));
  driver.settings().verifyExisting(true);
  EXPECT_TRUE(XCBaseDlg::needVerifyConnection(true));
  EXPECT_FALSE(XCBaseDlg::needVerifyConnection(false));
  driver.settings().verifyNew(true);
  EXPECT_TRUE(XCBaseDlg::needVerifyConnection(false));
}

TEST_F(BaseDlg, TheWaitCursorLastsAsLongAsItLives) {
  {
    const host::WaitCursor wait;
    EXPECT_THAT(driver.cursorLog(), ElementsAre(host::CursorShape::wait));
  }
  EXPECT_THAT(driver.cursorLog(), ElementsAre(host::CursorShape::wait, host::CursorShape::arrow));
}

}  // namespace
