#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/dialogs/extension_module.h"
#include "host/dialogs/options_dlg.h"
#include "host/services/drivers.h"
#include "host/ui/user_input.h"
#include "programs/group_schedules_page.h"
#include "tests/support/fixed_clock.h"
#include "tests/support/lamp_manager.h"
#include "tests/support/no_front_end.h"
#include "tests/support/sequential_ids.h"
#include "tests/support/settings_fake.h"
#include "tests/support/texts.h"
#include "tests/workbench/memory/failing_allocations.h"

extern "C" bool InitializeUsrDriver_ZelLampManager();

namespace {

using test::FailingAllocations;

constexpr long Enough = 100'000;

// Works on the dialogs that open by a function; messages are counted and answered at once.
class Turns : public host::FrontEnd {
 public:
  std::function<void(XCBaseDlg&)> onModal = [](XCBaseDlg& dialog) { dialog.EndDialog(IDOK); };
  int messages = 0;

  void runModal(XCBaseDlg& dialog) override {
    onModal(dialog);
    if (!dialog.HasEnded()) dialog.EndDialog(IDCANCEL);
  }
  bool showChild(XCBaseDlg&, CWnd*) override { return true; }
  void forget(XCBaseDlg&) override {}
  host::MessageAnswer ask(const host::MessageRequest&) override {
    ++messages;
    return host::MessageAnswer::ok;
  }
  std::filesystem::path openFile(const host::FileRequest&) override { return {}; }
  void setCursor(host::CursorShape) override {}
  void postToMainWindow(const host::PostedMessage&) override {}
  void dialogChanged(XCBaseDlg&) override {}
};

// Answers every read with the same document and takes every write.
class Answering : public host::CommandChannel {
 public:
  std::string reply = "<deviceCfg/>";
  std::string sent;

  host::ExchangeReply exchange(const host::ExchangeRequest& request) override {
    host::ExchangeReply answer;
    answer.status = host::ExchangeReply::Status::succeeded;
    if (request.kind == host::CommandKind::get)
      answer.document.Parse(reply);
    else
      sent = request.document->ToString();
    return answer;
  }
};

class Boundary : public testing::Test {
 protected:
  Boundary() {
    support::texts();
    host::installServices({&clock, &ids, &channel, &turns, &settings});
    EXPECT_TRUE(InitializeUsrDriver_ZelLampManager());
  }
  ~Boundary() override {
    host::removeRegistration(XCDriverDeviceZelLampManager::GetThisClass());
    support::installNoServices();
  }

  const host::DriverRegistration& registration() {
    return *host::findRegistration(u"ZELLAMPMANAGER");
  }

  // Lets each allocation of @p work fail once. What the work throws fails the test.
  long forEveryAllocation(const std::function<void(bool failed)>& check,
                          const std::function<void()>& work) {
    for (long number = 1; number < Enough; ++number) {
      FailingAllocations memory(number);
      EXPECT_NO_THROW(work()) << "allocation " << number;
      const bool failed = memory.disarm();
      check(failed);
      if (!failed) return number - 1;
    }
    return Enough;
  }

  support::FixedClock clock;
  support::SequentialIds ids;
  Answering channel;
  Turns turns;
  support::SettingsFake settings;
  support::LampManager manager;
};

TEST_F(Boundary, ConfigureThrowsNothingAndIsFalseWhereItsPanelDidNotOpen) {
  bool opened = false;
  bool configured = false;
  turns.onModal = [&](XCBaseDlg& dialog) {
    opened = true;
    dialog.EndDialog(IDOK);
  };
  const long made = forEveryAllocation(
      [&](bool failed) {
        EXPECT_EQ(configured, opened);
        EXPECT_TRUE(opened || (failed && turns.messages == 1));
        opened = configured = false;
        turns.messages = 0;
      },
      [&] { configured = registration().configure(nullptr, &manager.driver); });
  EXPECT_GT(made, 20);
}

TEST_F(Boundary, TheFactoryAnswersNoneWhereThereIsNoMemoryForThePanel) {
  std::unique_ptr<XCDlgOptions> panel;
  const long made = forEveryAllocation(
      [&](bool failed) {
        EXPECT_TRUE(failed || panel != nullptr);
        panel.reset();
      },
      [&] { panel.reset(registration().createChildOptions(nullptr, &manager.driver)); });
  EXPECT_GT(made, 20);
}

TEST_F(Boundary, TheListCallbacksLeaveTheNamesWhereTheyFail) {
  XCNameList names;
  bool listed = false;
  const auto list = [&](XCDriverServices::List callback, unsigned long long flags) {
    return [this, callback, flags, &names, &listed] {
      listed = callback(nullptr, &manager.driver, names, XCListFlags(flags), 0, {});
    };
  };
  const XCNameList before = {u"a name that is kept as it is"};
  const auto check = [&](bool failed) {
    EXPECT_TRUE(listed || names == before);
    EXPECT_EQ(listed, !failed);
    names = before;
  };
  names = before;
  EXPECT_GT(forEveryAllocation(check, list(registration().listA, 4)), 3);
  const auto refused = [&](bool) { EXPECT_TRUE(!listed && names == before); };
  forEveryAllocation(refused, list(registration().listA, 0));
  forEveryAllocation(refused, list(registration().listB, 4));
}

TEST_F(Boundary, DialogsByNameAreNoneWhereThereIsNoMemoryForThem) {
  class OneDriver : public host::DriverRegistry {
   public:
    explicit OneDriver(XCDriver& driver) : driver_(driver) {}
    XCDriver* find(std::u16string_view) override { return &driver_; }

   private:
    XCDriver& driver_;
  } drivers(manager.driver);
  host::setDriverRegistry(&drivers);
  for (const char* name : {"XCDlgNewModifyZelLampManager", "XCUpdateNodesZelLampManager"}) {
    std::unique_ptr<XCBaseDlg> dialog;
    forEveryAllocation(
        [&](bool failed) {
          EXPECT_TRUE(failed || dialog != nullptr) << name;
          dialog.reset();
        },
        [&] {
          dialog = host::findDeviceDialog(name)->create(nullptr, manager.element(),
                                                        XCMainCfg::Get().Root());
        });
  }
  host::setDriverRegistry(nullptr);
}

// A fault of the program: a template of another module that lacks what the panel sets up.
TEST_F(Boundary, AFaultOfTheProgramIsToldAsAMissingPageOfMemoryIs) {
  host::ExtensionModule module;
  class Faulty : public XCDlgOptions {
   public:
    Faulty() : XCDlgOptions(nullptr, nullptr) {}
    bool OnInitDialog() override {
      Get<host::ListControl>(ButtonId(1));
      return true;
    }
  } badCast;
  EXPECT_EQ(badCast.DoModal(), IDCANCEL);
  EXPECT_EQ(turns.messages, 1);
  class Missing : public XCDlgOptions {
   public:
    Missing() : XCDlgOptions(nullptr, nullptr) {}
    bool OnInitDialog() override {
      GetDlgItem(4711);
      return true;
    }
  } logicError;
  EXPECT_EQ(logicError.DoModal(), IDCANCEL);
  EXPECT_EQ(turns.messages, 2);
}

// Three lamps, two of them in a group.
class Programs : public Boundary {
 protected:
  Programs() {
    channel.reply =
        "<deviceCfg><ZelLamp><L06 Fh='20250101000000W'>"
        "<Node Id='n1' time1='1' power1='10' time2='1' power2='10' time3='1' power3='10' time4='1'"
        " power4='10'/><Node Id='n2' time1='2' power1='20' time2='2' power2='20' time3='2'"
        " power3='20' time4='2' power4='20'/><Node Id='n3' time1='3' power1='30' time2='3'"
        " power2='30' time3='3' power3='30' time4='3' power4='30'/></L06></ZelLamp></deviceCfg>";
  }
};

// A guard that stayed set behind the failure would keep what is typed from being written.
TEST_F(Programs, WhateverAllocationOfASelectionFailedWhatIsTypedFromThenOnIsWritten) {
  std::u16string typed;
  turns.onModal = [&](XCBaseDlg& dialog) {
    host::UserInput user(dialog);
    auto& nodes = dynamic_cast<host::ListControl&>(*dialog.FindControl(std::string_view("nodes")));
    host::Control& power = *dialog.FindControl(std::string_view("power2"));
    for (long number = 1; number < Enough; ++number) {
      user.select(nodes, {});
      std::vector<std::size_t> both = {0, 2};
      FailingAllocations memory(number);
      EXPECT_NO_THROW(user.select(nodes, std::move(both)));
      const bool failed = memory.disarm();
      user.select(nodes, {1});
      typed = number % 2 == 0 ? u"55" : u"66";
      user.type(power, typed);
      EXPECT_EQ(nodes.element(1)->getAttribute("power2"), typed) << "allocation " << number;
      EXPECT_EQ(nodes.element(0)->getAttribute("power2"), u"10");
      if (!failed) break;
    }
    dialog.PressOk();
  };
  CDlgE06CfgZelLampManager page(&manager.driver, nullptr, lamp::ProgramKind::interval);
  EXPECT_EQ(page.DoModal(), IDOK);
  const std::string written = "power2=\"" + XCBasicString(typed).ToUtf8() + "\"";
  EXPECT_NE(channel.sent.find(written), std::string::npos) << channel.sent;
}

}  // namespace
