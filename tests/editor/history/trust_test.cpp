#include <QtCore/QTimer>
#include <QtGui/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <fstream>

#include "tests/editor/support/page_rig.h"
#include "tests/workbench/tls_server.h"

namespace {

using host::TextId;

/// A device whose controller has a certificate that nobody vouches for.
class Trust : public support::PageRig {
 protected:
  void SetUp() override {
    std::ofstream(folder_.path() / "configuration.xml")
        << "<configuration><commSystem><device><id>{A}</id><driver>ZELLAMPMANAGER</driver>"
           "<type>ZELLAMPMANAGER</type><name>North</name><address>https://127.0.0.1</address>"
           "<socket>"
        << server_.port() << "</socket></device></commSystem></configuration>";
    start();
  }
  /// Reads something and presses a button of the question that comes up, if one does.
  host::ExchangeReply read(int button) {
    QTimer look;
    look.callOnTimeout([this, button] {
      auto* box = dynamic_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      question_ = box->text();
      box->buttons().at(button)->click();
    });
    look.start(10);
    const auto uri = XCBasicString::FromUtf8("address=https%3A%2F%2F127.0.0.1&socket=" +
                                             std::to_string(server_.port()));
    host::ExchangeReply reply =
        workspace_->record().exchange({1, host::CommandKind::get, uri, nullptr});
    QApplication::processEvents();
    return reply;
  }
  bool canForget() { return window_->action(TextId::ForgetCertificate)->isEnabled(); }

  test::TlsServer server_{"127.0.0.1", test::TinyServer::reply("<main/>")};
  QString question_;
};

TEST_F(Trust, TheFingerprintIsShownAndYesTrustsItUntilItIsForgotten) {
  EXPECT_FALSE(canForget());
  EXPECT_EQ(read(0).status, host::ExchangeReply::Status::succeeded);
  EXPECT_TRUE(question_.startsWith("[60440](127.0.0.1:")) << question_.toStdString();
  EXPECT_TRUE(question_.replace('\n', ':').contains(QString::fromStdString(server_.fingerprint())));
  question_.clear();
  EXPECT_EQ(read(0).status, host::ExchangeReply::Status::succeeded);
  EXPECT_EQ(question_, "") << "it is asked once";
  ASSERT_TRUE(canForget());
  window_->action(TextId::ForgetCertificate)->trigger();
  EXPECT_FALSE(canForget());
  EXPECT_EQ(read(1).status, host::ExchangeReply::Status::failed);
  EXPECT_NE(question_, "");
}

TEST_F(Trust, NoRefusesAndSendsNothing) {
  const host::ExchangeReply reply = read(1);
  EXPECT_TRUE(reply.error.ToUtf8().starts_with("[60067](")) << reply.error.ToUtf8();
  EXPECT_EQ(server_.requests(), 0);
  EXPECT_FALSE(canForget());
}

}  // namespace
