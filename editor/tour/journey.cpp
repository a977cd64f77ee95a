#include "editor/tour/journey.h"

#include <QtGui/QAction>
#include <algorithm>
#include <iterator>

#include "editor/qt_text.h"
#include "workbench/lamp_groups.h"

namespace editor {
namespace {

using Steps = std::vector<Tour::Step>;

// Of lamps that are selected, and of those on a street.
constexpr const char* OwnGroups[] = {"Entrance", "Harbour"};

Tour::Step picture(const char* name) {
  return [name](Tour& tour) { tour.picture(name); };
}
Tour::Step darkPicture(const char* name) {
  return [name](Tour& tour) { tour.darkPicture(name); };
}
Tour::Step sidePane() {
  return [](Tour& tour) { tour.requireSidePane(); };
}
Tour::Step click(const char* control) {
  return [control](Tour& tour) { tour.click(control); };
}
Tour::Step choose(const char* control, const char* item) {
  return [control, item](Tour& tour) { tour.choose(control, QString::fromUtf8(item)); };
}
/// Day types are named after their numbers, from 1, in the language in force.
Tour::Step chooseDayType(const char* control, int number) {
  return [control, number](Tour& tour) {
    tour.choose(control, caption(host::TextId::DayType) + " - " + QString::number(number));
  };
}
Tour::Step type(const char* control, const char* text) {
  return [control, text](Tour& tour) { tour.type(control, QString::fromUtf8(text)); };
}
Tour::Step selectRows(const char* control, std::vector<int> rows) {
  return [control, rows = std::move(rows)](Tour& tour) { tour.selectRows(control, rows); };
}
Tour::Step action(host::TextId text) {
  return [text](Tour& tour) { tour.window().action(text)->trigger(); };
}
Tour::Step press(host::TextId caption) {
  return [caption](Tour& tour) { tour.press(caption); };
}
Tour::Step showTab(host::TextId caption) {
  return [caption](Tour& tour) { tour.showTab(caption); };
}
/// Paints days, the first one so many days after today and each so many behind the one before.
Tour::Step paintDays(const char* control, int first, int count, int distance) {
  return [=](Tour& tour) {
    std::vector<XCDateTime> days;
    for (int day = 0; day < count; ++day)
      days.push_back(XCDateTime::LTC().AddDays(first + distance * day));
    tour.paintDays(control, days);
  };
}

Steps& operator+=(Steps& steps, const Steps& more) {
  steps.insert(steps.end(), more.begin(), more.end());
  return steps;
}

/// Opens a page from the menu, takes its picture and leaves it.
Steps visit(const char* button, const char* name) {
  return {click(button), picture(name), click("cancel")};
}

// Changes the time zone.
Steps changeGeneralSettings() {
  return {click("general"), picture("general-settings"), choose("TimeZone", "Brasil"),
          picture("time-zone-chosen"), click("ok")};
}

// Looks at what was sent of a page, and takes the former values back into it without sending them.
Steps lookBack() {
  return {click("general"),
          press(host::TextId::HistoryOfPage),
          picture("history-of-page"),
          press(host::TextId::PutFormerBack),
          picture("former-values-put"),
          darkPicture("former-values-put-dark"),
          press(host::TextId::Close),
          picture("former-values-in-the-page"),
          click("cancel")};
}

// Shows what was read back and what is on record in the main window.
Steps showRecords() {
  return {picture("exchanges"), darkPicture("exchanges-dark"), showTab(host::TextId::TabHistory),
          picture("history"),   darkPicture("history-dark"),   showTab(host::TextId::TabExchanges)};
}

// Gives one reference to three nodes at once.
Steps nameThreeNodes() {
  return {click("nodeTable"),
          picture("node-table"),
          selectRows("6520", {1, 2, 4}),
          picture("three-nodes-selected"),
          type("6517", "Calle Mayor 12"),
          picture("reference-typed"),
          click("ok")};
}

/// Selects the lamps of groups, or in a configuration without groups some nodes.
Tour::Step selectLamps(std::vector<int> groups, std::vector<int> nodes) {
  return [=](Tour& tour) {
    if (tour.rowCount("groups") > 0)
      tour.selectRows("groups", groups);
    else
      tour.selectRows("nodes", nodes);
  };
}

// Dims the lamps of a group more, then shows them beside others that differ.
Steps dimLamps() {
  return {click("groupSchedules"),
          sidePane(),
          selectLamps({0}, {1, 2, 4}),
          type("power2", "55"),
          type("time3", "2345"),
          type("power3", "20"),
          picture("group-schedules-typed"),
          selectLamps({0, 1}, {0, 1, 3}),
          picture("group-schedules"),
          darkPicture("group-schedules-dark"),
          click("cancel")};
}

// Gives the Sundays of the year shown a day type of their own, and some days another by hand.
Steps paintCalendar() {
  return {click("calendar"),
          click("fastSelection"),
          click("month12"),
          click("sunday"),
          chooseDayType("dayType", 6),
          picture("fast-selection"),
          darkPicture("fast-selection-dark"),
          click("ok"),
          click("dayType3"),
          paintDays("year", 1, 8, 7),
          click("dayType8"),
          paintDays("year", 60, 20, 1),
          picture("calendar"),
          darkPicture("calendar-dark")};
}

Steps programDayTypes() {
  return {click("dayTypes"),
          sidePane(),
          selectRows("days", {0}),
          type("power1", "100"),
          type("time2", "2230"),
          type("power2", "70"),
          type("time3", "0100"),
          type("power3", "40"),
          type("time4", "0600"),
          type("power4", "80"),
          picture("day-types"),
          darkPicture("day-types-dark"),
          click("ok"),
          click("cancel")};
}

// Makes a group of lamps that are selected in the tree, and one of those on a street.
Steps groupLamps() {
  return {[](Tour& tour) {
            tour.selectLamps({0, 1, 2, 5});
          },
          picture("lamps-selected"),
          darkPicture("lamps-selected-dark"),
          action(host::TextId::ActionNewGroup),
          type("name", OwnGroups[0]),
          picture("group-of-selected-lamps"),
          click("ok"),
          picture("group-in-the-tree"),
          darkPicture("group-in-the-tree-dark"),
          action(host::TextId::ActionNewGroup),
          type("name", OwnGroups[1]),
          type("reference", "harbour"),
          picture("group-by-reference"),
          click("addMatching"),
          darkPicture("group-by-reference-dark"),
          click("ok"),
          picture("group-of-a-street"),
          [](Tour& tour) { tour.chooseFirstDevice(); }};
}

Steps defineDevice() {
  return {action(host::TextId::ActionModify),
          picture("device-definition"),
          click("6328"),
          picture("communication-settings"),
          click("cancel"),
          click("cancel")};
}

}  // namespace

bool canGroupLamps(const XmlDocument::XmlNode& device) {
  const workbench::LampGroups groups(device);
  return !groups.lamps().empty() &&
         std::none_of(std::begin(OwnGroups), std::end(OwnGroups), [&](const char* name) {
           return groups.nameFault(XCBasicString::FromUtf8(name).str(), nullptr).has_value();
         });
}

Steps journey(bool groupsLamps, bool hasHistory) {
  Steps steps = {picture("main-window")};
  if (groupsLamps) steps += groupLamps();
  steps += {click("device"), picture("configuration-menu")};
  steps += changeGeneralSettings();
  if (hasHistory) steps += lookBack();
  steps += nameThreeNodes();
  steps += visit("tasks", "scheduled-tasks");
  steps += visit("6510", "firmware");
  steps += visit("alarmThresholds", "alarm-thresholds");
  steps += visit("nodeRemoval", "node-removal");
  steps += visit("blacklist", "node-blacklist");
  steps += visit("nodeCommand", "node-command");
  steps += visit("inputs", "inputs-and-outputs");
  steps += visit("nodePower", "node-power");
  steps += dimLamps();
  steps += paintCalendar();
  steps += programDayTypes();
  steps += {picture("menu-again"), click("ok"), picture("main-window-after")};
  if (hasHistory) steps += showRecords();
  steps += defineDevice();
  return steps;
}

}  // namespace editor
