#include "host/dialogs/options_dlg.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <iterator>

#include "host/services/setup.h"
#include "tests/support/dialog_driver.h"

using support::DialogDriver;
using testing::ElementsAre;

namespace {

class Panel : public XCDlgOptions {
 public:
  explicit Panel(XCDriverDevice* device) : XCDlgOptions(nullptr, device) {}

  bool OnInitDialog() override {
    const bool focus = XCDlgOptions::OnInitDialog();
    if (onInit) onInit(*this);
    ArrangeButtons();
    return focus;
  }
  bool SetupDriver(XmlDocument::XmlNode* node) override { return note("driver", node); }
  bool SetupDevice(XmlDocument::XmlNode* node) override { return note("device", node); }
  bool SetupGeneric1() override { return note("generic1", nullptr); }
  bool SetupGeneric2() override { return note("generic2", nullptr); }
  bool SetupGeneric3() override { return note("generic3", nullptr); }

  static inline std::function<void(Panel&)> onInit;
  std::vector<std::string> log;

 private:
  bool note(const char* what, XmlDocument::XmlNode* node) {
    log.push_back(what + (node ? " " + node->Value("id").ToUtf8() : std::string()));
    return true;
  }
};

class Options : public testing::Test {
 protected:
  void SetUp() override {
    Panel::onInit = nullptr;
    ASSERT_TRUE(XCMainCfg::Get().Document().Parse(
        "<configuration><commSystem><device><id>{1}</id></device></commSystem></configuration>"));
  }
  void TearDown() override { XCMainCfg::Get().Document().Clear(); }

  XCDriverDevice lamps{u"ZELLAMPMANAGER", u"{1}", u"North", u""};
  DialogDriver driver;
};

TEST_F(Options, ShowsTheDriversNameAndTwoButtons) {
  driver.show<Panel>(&lamps);
  EXPECT_EQ(driver.title(), "North");
  EXPECT_TRUE(driver.visible("driver"));
  EXPECT_TRUE(driver.visible("device"));
  for (const char* name : {"host1", "host2", "host3", "generic1", "generic2", "generic3"})
    EXPECT_FALSE(driver.visible(name)) << name;
}

TEST_F(Options, EachButtonRunsItsOperationWithTheDevicesElement) {
  Panel::onInit = [](Panel& panel) {
    for (int number = 2; number < XCDlgOptions::ButtonCount; ++number)
      panel.EnableButton(number, true, true);
  };
  auto& panel = driver.show<Panel>(&lamps);
  for (const char* name :
       {"driver", "device", "host1", "host2", "host3", "generic1", "generic2", "generic3"})
    driver.click(name);
  EXPECT_THAT(panel.log,
              ElementsAre("driver {1}", "device {1}", "generic1", "generic2", "generic3"));
}

TEST_F(Options, WithoutAnElementTheOperationsGetNone) {
  XCMainCfg::Get().Document().Clear();
  auto& panel = driver.show<Panel>(&lamps);
  driver.click("device");
  EXPECT_THAT(panel.log, ElementsAre("device"));
}

TEST_F(Options, ButtonsTakeTextImageAndState) {
  Panel::onInit = [](Panel& panel) {
    panel.SetButtonText(5, u"Update");
    panel.SetButtonImage(5, 4527);
    panel.SetButtonImage(1, "ZELLAMPMANAGER-50.png");
    panel.EnableButton(5, false, true);
  };
  driver.show<Panel>(&lamps);
  EXPECT_EQ(driver.text("generic1"), "Update");
  EXPECT_EQ(driver.image("generic1"), "4527.png");
  EXPECT_EQ(driver.image("device"), "ZELLAMPMANAGER-50.png");
  EXPECT_FALSE(driver.tryClick("generic1").done);
}

TEST_F(Options, EveryWayOutCountsAsOk) {
  driver.show<Panel>(&lamps);
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
  driver.show<Panel>(&lamps);
  driver.close();
  EXPECT_EQ(driver.result(), IDOK);
  driver.show<Panel>(&lamps);
  driver.press("device", host::Key::escape);
  EXPECT_EQ(driver.result(), IDOK);
}

TEST_F(Options, AsAChildItHasNoCloseButton) {
  Panel panel(&lamps);
  panel.SetChild();
  panel.SetBackgroundColor(GetSysColor(COLOR_WINDOW));
  EXPECT_EQ(panel.BackgroundColor(), (host::Colour{0xFF, 0xFF, 0xFF}));
  driver.run([&] { EXPECT_TRUE(panel.Create(nullptr)); });
  EXPECT_TRUE(panel.IsChild());
  EXPECT_FALSE(driver.visible("ok"));
  driver.click("driver");
  EXPECT_THAT(panel.log, ElementsAre("driver {1}"));
}

// Where a virtual function stands in the table of its class, as the platform's binary interface
// keeps it in a pointer to the member.
template <class Member>
std::ptrdiff_t slotOf(Member member) {
  struct Representation {
    std::ptrdiff_t slot;
    std::ptrdiff_t adjustment;
  };
  static_assert(sizeof(Member) == sizeof(Representation));
  return std::bit_cast<Representation>(member).slot;
}

TEST(OptionsTable, TheOperationsStandInTheOrderOfTheContract) {
  const std::ptrdiff_t slots[] = {
      slotOf(&XCDlgOptions::GetMessageMap), slotOf(&XCDlgOptions::DoDataExchange),
      slotOf(&XCDlgOptions::OnInitDialog),  slotOf(&XCDlgOptions::SetupDriver),
      slotOf(&XCDlgOptions::SetupDevice),   slotOf(&XCDlgOptions::SetupGeneric1),
      slotOf(&XCDlgOptions::SetupGeneric2), slotOf(&XCDlgOptions::SetupGeneric3),
      slotOf(&XCDlgOptions::ArrangeButtons)};
  EXPECT_TRUE(std::is_sorted(std::begin(slots), std::end(slots)));
  EXPECT_EQ(std::adjacent_find(std::begin(slots), std::end(slots)), std::end(slots));
}

}  // namespace
