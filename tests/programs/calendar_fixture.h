#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "host/services/setup.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/lamp_manager.h"
#include "tests/support/temp_folder.h"
#include "tests/support/xml_compare.h"

namespace support {

/// A configuration in a folder of its own, without calendars, and the user at the dialogs.
class Calendars : public testing::Test {
 protected:
  Calendars() { XCVarnisSetup::Get().SetConfigurationPath(folder.path()); }
  ~Calendars() override { XCVarnisSetup::Get().SetConfigurationPath({}); }

  static std::string storeName() { return "Lamp manager Calendar"; }
  std::filesystem::path fileOf(const std::string& name) const {
    return folder.path() / storeName() / (name + ".xclmc");
  }
  void putFile(const std::string& name, const std::string& content) {
    std::filesystem::create_directories(folder.path() / storeName());
    folder.write(storeName() + "/" + name + ".xclmc", content);
  }
  std::string fileText(const std::string& name) const {
    return folder.read(storeName() + "/" + name + ".xclmc");
  }
  bool stored(const std::string& name) const { return std::filesystem::exists(fileOf(name)); }

  /// The programs of ten day types, all 0, for a controller with ("T") or without ("F") a module.
  static std::string emptyDays(const std::string& module) {
    std::string days = "<days>";
    for (int number = 0; number < 10; ++number)
      days += "<day><num>" + std::to_string(number) + "</num>" + emptyProgram(module) + "</day>";
    return days + "</days>";
  }
  static std::string emptyProgram(const std::string& module) {
    return module == "T" ? "<Interval power1='0' hour2='0' min2='0' power2='0' hour3='0' min3='0' "
                           "power3='0' hour4='0' min4='0' power4='0'/>"
                         : "<Interval time1='0' power1='0' time2='0' power2='0' time3='0' "
                           "power3='0' time4='0' power4='0'/>";
  }
  static std::string calendarXml(const std::string& name, const std::string& module,
                                 const std::string& days, const std::string& year,
                                 const std::string& revision = "{R}") {
    return "<calendar><revision>" + revision + "</revision><name>" + name + "</name><hasIOmodule>" +
           module + "</hasIOmodule>" + days + "<year>" + year + "</year></calendar>";
  }
  /// A year string with one digit at each of the given slots.
  static std::string year(const std::vector<std::pair<std::size_t, char>>& slots = {}) {
    std::string digits(366, '0');
    for (const auto& [slot, digit] : slots) digits[slot] = digit;
    return digits;
  }

  TempFolder folder;
  LampManager manager;
  DialogDriver driver;
};

}  // namespace support
