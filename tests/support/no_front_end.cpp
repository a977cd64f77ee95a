#include "tests/support/no_front_end.h"

#include <gtest/gtest.h>

#include "host/dialogs/base_dlg.h"
#include "host/services/services.h"
#include "tests/support/fixed_clock.h"
#include "tests/support/scripted_channel.h"
#include "tests/support/scripted_front_end.h"
#include "tests/support/sequential_ids.h"
#include "tests/support/settings_fake.h"

namespace support {
namespace {

class NoFrontEnd : public host::FrontEnd {
 public:
  void runModal(XCBaseDlg& dialog) override {
    ADD_FAILURE() << "a dialog opened without a DialogDriver";
    dialog.EndDialog(IDCANCEL);
  }
  bool showChild(XCBaseDlg&, CWnd*) override { return false; }
  void forget(XCBaseDlg&) override {}
  host::MessageAnswer ask(const host::MessageRequest& request) override {
    ADD_FAILURE() << "a message without a DialogDriver: " << request.text.ToUtf8();
    return negativeAnswer(request.buttons);
  }
  std::filesystem::path openFile(const host::FileRequest&) override {
    ADD_FAILURE() << "a file choice without a DialogDriver";
    return {};
  }
  void setCursor(host::CursorShape) override {}
  void postToMainWindow(const host::PostedMessage&) override {}
  void dialogChanged(XCBaseDlg&) override {}
};

}  // namespace

void installNoServices() {
  static FixedClock clock;
  static SequentialIds ids;
  static ScriptedChannel channel;
  static SettingsFake settings;
  static NoFrontEnd frontEnd;
  host::installServices({&clock, &ids, &channel, &frontEnd, &settings});
}

}  // namespace support
