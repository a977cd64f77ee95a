#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "programs/calendar_editor.h"
#include "tests/programs/calendar_fixture.h"

namespace support {

/// The calendar editor over the calendars that a test puts into the store.
class CalendarEditor : public Calendars {
 protected:
  CalendarEditor() { XCVarnisGuids::Get().Validate(XCVarnisGuids::DeviceConfiguration); }

  /// Opens the editor for a controller whose element names a calendar, or none.
  void open(lamp::ProgramKind kind = lamp::ProgramKind::interval, const std::string& name = "") {
    if (!name.empty()) manager.element()->SetValue("calendar", XCBasicString::FromUtf8(name));
    element = compactXml(*manager.element());
    driver.show<XCDeviceCalendarZelLAMPManager>(nullptr, &manager.driver, manager.element(), kind);
  }
  void openWithout(const std::string& name, const std::string& message) {
    open(lamp::ProgramKind::interval, name);
    expectMessage(message, host::MessageIcon::warning);
    ASSERT_EQ(driver.top(), TopKind::dialog);
  }

  void expectMessage(const std::string& text, host::MessageIcon icon,
                     host::MessageAnswer answer = host::MessageAnswer::ok) {
    ASSERT_EQ(driver.top(), TopKind::message);
    EXPECT_EQ(driver.message().text, text);
    EXPECT_EQ(driver.message().icon, icon);
    driver.answer(answer);
  }

  /// Types into the identification entry on top and confirms it.
  void enterName(const std::string& name) {
    ASSERT_EQ(driver.dialog().ClassName(), "CDlgIntroduceIdentification");
    driver.type("identification", name);
    driver.click("ok");
  }
  void saveAs(const std::string& name) {
    driver.click("save");
    enterName(name);
  }
  /// Chooses a stored calendar in the calendar selection.
  void loadStored(const std::string& name) {
    driver.click("load");
    const auto names = driver.column("files", 0);
    const auto found = std::find(names.begin(), names.end(), name);
    ASSERT_NE(found, names.end());
    driver.select("files", {std::size_t(found - names.begin())});
    driver.click("ok");
  }
  void paintAs(int dayType, const XCDateTime& date) {
    driver.click("dayType" + std::to_string(dayType));
    driver.paint("year", date);
  }
  void showYear(int shown) {
    driver.perform([&](host::UserInput& input, XCBaseDlg&) {
      return input.showYear(driver.as<XCCalendar>("year"), shown);
    });
  }

  std::string typeOf(const XCDateTime& date) {
    const auto* type = driver.as<XCCalendar>("year").TypeOf(date);
    return type == nullptr ? "none" : type->id.ToUtf8();
  }
  /// The days of a span that are painted with a type, as "10/04/2025".
  std::vector<std::string> daysOfType(const std::string& id) {
    std::vector<std::string> found;
    for (XCDateTime day(2024, 1, 1); day < XCDateTime(2033, 1, 1); day = day.AddDays(1))
      if (typeOf(day) == id) found.push_back(textOf(day));
    return found;
  }
  static std::string textOf(const XCDateTime& date) {
    return date.GetDateTime(1, true, u"/", u":").ToUtf8();
  }

  bool markedAsChanged() const {
    return XCVarnisGuids::Get().IsInvalid(XCVarnisGuids::DeviceConfiguration);
  }
  void expectCancelledWithNothingKept() {
    EXPECT_EQ(driver.result(), IDCANCEL);
    EXPECT_EQ(compactXml(*manager.element()), element);
    EXPECT_FALSE(markedAsChanged());
  }
  void expectAssigned(const std::string& name) {
    EXPECT_EQ(driver.result(), IDOK);
    EXPECT_EQ(manager.element()->Value("calendar").ToUtf8(), name);
    EXPECT_TRUE(markedAsChanged());
  }

  static std::string guid(int number) {
    return "{00000000-0000-4000-8000-00000000000" + std::to_string(number) + "}";
  }

  std::string element;  ///< the device's, when the editor opened
};

}  // namespace support
