#include "editor/window/exchange_view.h"

#include <gtest/gtest.h>

#include <QtWidgets/QPlainTextEdit>

#include "tests/support/fixed_clock.h"
#include "tests/support/scripted_channel.h"
#include "tests/support/texts.h"

namespace {

class ExchangeViewTest : public testing::Test {
 protected:
  ExchangeViewTest() {
    support::texts();
    host::installServices({.clockService = &clock});
    record.setListener([this](const workbench::ExchangeEntry&) { view.catchUp(); });
  }
  void put(const char* name) {
    XmlDocument document(name);
    record.exchange({2, host::CommandKind::put, u"", &document});
  }
  QString shown() const { return view.findChild<QPlainTextEdit*>()->toPlainText(); }

  support::FixedClock clock;
  support::ScriptedChannel channel;
  workbench::ExchangeRecord record{channel};
  editor::ExchangeView view{record, nullptr};
};

TEST_F(ExchangeViewTest, DocumentsAreWrittenWhenThePanelCanBeSeen) {
  put("first");
  put("second");
  EXPECT_EQ(shown(), "") << "nobody looks";
  view.show();
  EXPECT_TRUE(shown().contains("<second/>")) << shown().toStdString();
  put("third");
  EXPECT_TRUE(shown().contains("<third/>"));
}

}  // namespace
