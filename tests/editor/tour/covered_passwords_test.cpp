#include "editor/tour/covered_passwords.h"

#include "editor/renderers/control_renderer.h"
#include "tests/editor/support/page_rig.h"

namespace {

class CoveredPasswordsTest : public support::PageRig {
 protected:
  QLineEdit& field(const char* name) {
    const auto& body = frontEnd_.topWindow()->body();
    return dynamic_cast<QLineEdit&>(body.renderer(control(name).id())->widget());
  }
};

TEST_F(CoveredPasswordsTest, APasswordInTheClearShowsDotsAsLongAsItIsCovered) {
  controller_.hold("L01", "<L01 name=\"Street\" FTPPwd=\"lantern\"/>");
  start();
  work({press("general"), [this] {
          ASSERT_EQ(field("FTPPwd").displayText(), "lantern");
          {
            const editor::CoveredPasswords covered(&frontEnd_.topWindow()->body());
            EXPECT_EQ(field("FTPPwd").displayText().count('l'), 0);
            EXPECT_EQ(field("name").displayText(), "Street");
          }
          EXPECT_EQ(field("FTPPwd").displayText(), "lantern");
          EXPECT_EQ(field("mailPassword").echoMode(), QLineEdit::Password);
        }});
}

TEST_F(CoveredPasswordsTest, WithoutADialogThereIsNothingToCover) {
  const editor::CoveredPasswords covered(nullptr);
}

}  // namespace
