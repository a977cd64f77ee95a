#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QProgressDialog>
#include <QtWidgets/QPushButton>

#include <gtest/gtest.h>

#include <algorithm>

#include "editor/front_end/exchange_window.h"
#include "host/xml/xml_document.h"
#include "tests/support/texts.h"
#include "tests/workbench/tiny_server.h"
#include "workbench/http_command_channel.h"

namespace {

using host::ExchangeReply;

// The real channel uploads 64 MiB to a real server while the window stands over the editor.
class FirmwareUpload : public testing::Test {
 protected:
  FirmwareUpload() {
    support::texts();
    upload_.Root()->SetNarrowValue("firmwareFile", std::string(64U << 20, 'A'));
    channel_.setProgress(&window_);
    timer_.setInterval(0);
    QObject::connect(&timer_, &QTimer::timeout, [this] { tick(); });
  }

  ExchangeReply send() {
    timer_.start();
    const XCBasicString parameters =
        XCBasicString::FromUtf8("address=127.0.0.1&socket=" + std::to_string(server_.port()));
    ExchangeReply reply = channel_.exchange({52, host::CommandKind::put, parameters, &upload_});
    timer_.stop();
    return reply;
  }

  // What the editor does meanwhile.
  void tick() {
    ++ticks_;
    if (window_.window() == nullptr) return;
    shown_ = std::max(shown_, window_.window()->value());
    if (cancelsAt_ > 0 && shown_ >= cancelsAt_) {
      QTest::mouseClick(window_.window()->findChild<QPushButton*>(), Qt::LeftButton);
    }
  }

  test::TinyServer server_{[](const test::TinyRequest&, const auto& connection) {
    connection.send(test::TinyServer::reply(""));
  }};
  XmlDocument upload_{"deviceCfg"};
  editor::ExchangeWindow window_{0};
  workbench::HttpCommandChannel channel_;
  QTimer timer_;
  int ticks_ = 0;
  int shown_ = 0;
  int cancelsAt_ = 0;
};

TEST_F(FirmwareUpload, TheEditorLivesOnAndTheBarFills) {
  EXPECT_EQ(send().status, ExchangeReply::Status::succeeded);
  EXPECT_GT(ticks_, 50);
  EXPECT_GT(shown_, 50);
  ASSERT_EQ(server_.requests().size(), 1U);
}

TEST_F(FirmwareUpload, CancelEndsItMidway) {
  cancelsAt_ = 20;
  const ExchangeReply reply = send();
  EXPECT_EQ(reply.status, ExchangeReply::Status::cancelled);
  EXPECT_EQ(reply.error, u"") << "a cancelled exchange shows nothing";
  EXPECT_LT(shown_, 90);
  EXPECT_EQ(window_.window(), nullptr);
  EXPECT_TRUE(server_.requests().empty()) << "it never came whole";
}

}  // namespace
