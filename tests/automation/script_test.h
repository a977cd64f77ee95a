#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/automation/script_process.h"
#include "tests/support/temp_folder.h"

namespace test {

/// A lamp-script with the test plug-in and a configuration of two devices, "North" and "Meter".
class ScriptTest : public testing::Test {
 protected:
  void SetUp() override {
    folder.write("configuration.xml", Configuration);
    start();
  }

  void start(std::vector<std::string> more = {}) {
    std::vector<std::string> arguments = {"--config",       folder.path().string(), "--plugin",
                                          LAMP_TEST_PLUGIN, "--language",           "numbers"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    script.reset();
    script = std::make_unique<ScriptProcess>(arguments);
  }
  /// Opens the dialog with every kind of control.
  void openKinds() {
    script->ok({{"do", "editor.configure"}, {"device", "North"}});
    script->ok({{"do", "click"}, {"id", "driver"}});
  }
  nlohmann::json ok(const nlohmann::json& command) { return script->ok(command); }
  std::string refused(const nlohmann::json& command) { return script->refused(command); }
  std::string log() { return script->control("log").at("text"); }
  std::string onDisk() { return folder.read("configuration.xml"); }

  static constexpr const char* Configuration =
      "<configuration><commSystem>"
      "<device><id>{1}</id><driver>ZELLAMPMANAGER</driver><name>North</name></device>"
      "<device><id>{2}</id><driver>TCP</driver><name>Meter</name></device>"
      "</commSystem><deviceGroups><groups><group><id>North</id><devices/></group>"
      "<group><id>South</id></group></groups></deviceGroups></configuration>";

  support::TempFolder folder;
  std::unique_ptr<ScriptProcess> script;
};

}  // namespace test
