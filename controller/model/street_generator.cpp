#include "controller/model/street_generator.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <random>

#include "controller/model/names.h"
#include "controller/model/value_rules.h"

namespace lamp::controller {
namespace {

struct Attribute {
  const char* name;
  const char* value;
};

constexpr Attribute kGeneral[] = {
    {names::kModel, "LM-3"},
    {names::kFirmwareVersion, "2.4.1"},
    {"VfComm", "1.8.0"},
    {"Af", "2023"},
    {"AccInacTimeout", "15"},
    {"AccSimulMax", "4"},
    {"IPNTP", "192.0.2.10"},
    {"NTPMaxDeviation", "30"},
    {"IPftp", "192.0.2.20"},
    {"FTPUser", "reports"},
    {"FTPPwd", "lantern-42"},
    {"PathReports", "/reports"},
    {"RetryFtp", "3"},
    {"TimeBetwFtp", "60"},
    {"FtpServer", "Y"},
    {"FtpsServer", "N"},
    {"mailHost", "192.0.2.30"},
    {names::kMailUser, ""},
    {names::kMailPassword, ""},
    {"mainMail", "lamps@town.example"},
    {"destinationMail", "operator@town.example"},
    {"Priority", "N"},
    {"TimeSendReq", "5"},
    {"TimeDisconNode", "30"},
    {"RetryDisconNode", "3"},
    {"TimeRetryInterval", "20"},
    {"ValuesCheckDelay", "10"},
    {"MaxOrderOutdate", "3600"},
    {"TimeDelayRestart", "5"},
    {"activeFilterTime", "0"},
    {"hourIni", "18"},
    {"hourEnd", "8"},
    {"name", "Old Town"},
    {"ReportFormat", "0"},
    {"viewNodes", "Y"},
    {names::kTimeZone, "0"},
    {names::kAddress, "192.0.2.100"},
    {"ipMask", "255.255.255.0"},
    {"ipGtw", "192.0.2.1"},
    {"ipDhcp", "N"},
    {"PrimaryDns", "192.0.2.2"},
    {"SecondaryDns", "192.0.2.3"},
    {"ipLoc", "169.254.1.1"},
    {"ipMaskLoc", "255.255.0.0"},
    {names::kPort, "8080"},
    {"Pse", "8443"},
};

constexpr std::array kStreets = {
    "Harbour Street",  "Mill Lane",    "Station Road",  "Market Square",
    "Church Street",   "Garden Walk",  "North Ring",    "School Lane",
    "Bridge Street",   "Castle Hill",  "River Quay",    "Orchard Road",
    "Cathedral Close", "Baker Street", "Lantern Alley", "Meadow View"};
constexpr std::array kOldVersions = {"0.2.4", "0.2.9"};
constexpr std::array kNewVersions = {"0.3.0", "0.3.2", "0.10.1", "1.0.0"};

// Centre of the town, degrees, and metres per degree there.
constexpr double kLatitude = 41.5472;
constexpr double kLongitude = 2.1074;
constexpr double kMetresPerDegree = 111320.0;
constexpr double kPoleDistance = 28.0;
constexpr double kStreetDistance = 75.0;

// The distributions of the standard library differ from one library to the next; this does not.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : engine_(seed) {}
  std::size_t below(std::size_t count) { return static_cast<std::size_t>(engine_() % count); }
  int between(int low, int high) {
    return low + static_cast<int>(below(static_cast<std::size_t>(high - low + 1)));
  }
  template <class List>
  const char* oneOf(const List& list) {
    return list[below(list.size())];
  }

 private:
  std::mt19937_64 engine_;
};

std::string degrees(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.6f", value);
  return text;
}

void put(pugi::xml_node element, const char* name, const std::string& value) {
  element.append_attribute(name).set_value(value.c_str());
}
void put(pugi::xml_node element, const char* name, int value) {
  element.append_attribute(name).set_value(value);
}

class StreetBuilder {
 public:
  StreetBuilder(const StreetPlan& plan, SectionStore& store)
      : plan_(plan), store_(store), dice_(plan.seed) {}

  void build() {
    buildGeneral();
    buildTasks();
    for (const char* code : {names::kNodeTable, names::kNodePower, names::kIntervalPrograms,
                             names::kAlarmThresholds}) {
      store_.sectionToChange(code);
    }
    buildInputsOutputs();
    store_.sectionToChange(names::kClockPrograms);
    buildNodes();
    store_.index();
  }

 private:
  void buildGeneral() {
    pugi::xml_node section = store_.sectionToChange(names::kGeneral);
    for (const Attribute& a : kGeneral) section.append_attribute(a.name).set_value(a.value);
    put(section, names::kInputsDetected, plan_.withInputs ? "Y" : "N");
  }

  void addTask(int number, const char* start, const char* period, const char* request) {
    pugi::xml_node task = store_.sectionToChange(names::kTasks).append_child(names::kTask);
    put(task, names::kTaskNumber, number);
    put(task, names::kTaskStart, start);
    put(task, names::kTaskPeriod, period);
    put(task, names::kTaskFillHoles, "Y");
    put(task, names::kTaskNode, "");
    put(task, names::kTaskPriority, "2");
    pugi::xml_node action = task.append_child(names::kAction);
    put(action, names::kActionRequest, request);
    put(action, names::kActionSend, "N");
    put(action, names::kActionStore, "Y");
  }

  void buildTasks() {
    addTask(1, "20240101060000W", "00000001000000", names::kUsageReport);
    addTask(2, "20240101000000W", "00000000060000", names::kAlarmReport);
    addTask(3, "20240101120000W", "00000100000000", names::kNodeList);
  }

  void buildInputsOutputs() {
    pugi::xml_node section = store_.sectionToChange(names::kInputsOutputs);
    put(section, names::kSunriseOffset, "10");
    put(section, names::kSunsetOffset, "15");
    for (int number = 1; number <= 8; ++number) {
      pugi::xml_node input = section.append_child(names::kInput);
      put(input, names::kDir, number);
      put(input, names::kValue, "0");
      put(input, names::kSpontaneous, number <= 2 ? "Y" : "N");
    }
    for (int number = 1; number <= 8; ++number) buildOutput(section, number);
  }

  void buildOutput(pugi::xml_node section, int number) {
    pugi::xml_node output = section.append_child(names::kOutput);
    put(output, names::kDir, number);
    put(output, names::kValue, "0");
    put(output, names::kSunset, number <= 2 ? "Y" : "N");
    put(output, names::kSunrise, number == 3 ? "Y" : "N");
    for (int input = 1; input <= 8; ++input) {
      put(output, ("In" + std::to_string(input)).c_str(), number == 4 && input == 1 ? "Y" : "N");
    }
    put(output, names::kFollowNodes, number == 5 ? "Y" : "N");
    put(output, names::kForcedOn, "N");
    put(output, names::kForcedOff, "N");
  }

  // Streets run side by side and a few degrees askew, so that the map looks like a town.
  void buildNodes() {
    const auto perStreet = std::max<std::size_t>(
        12, static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(plan_.nodes) * 2))));
    int serial = 4100000;
    for (std::size_t i = 0; i < plan_.nodes; ++i) {
      const std::size_t street = i / perStreet;
      const std::size_t pole = i % perStreet;
      if (pole == 0) askew_ = (static_cast<double>(dice_.between(-40, 40))) / 1000.0;
      serial += dice_.between(1, 9);
      buildNode(std::to_string(serial), street, pole, static_cast<double>(perStreet));
    }
  }

  void buildNode(const std::string& id, std::size_t street, std::size_t pole, double perStreet) {
    const double along = (static_cast<double>(pole) - perStreet / 2) * kPoleDistance;
    const double across = static_cast<double>(street) * kStreetDistance + along * askew_ +
                          (pole % 2 == 0 ? 6.0 : -6.0);
    pugi::xml_node node = store_.sectionToChange(names::kNodeTable).append_child(names::kNode);
    put(node, names::kNodeId, id);
    put(node, names::kReference, referenceOf(street, pole));
    put(node, names::kLatitude, degrees(kLatitude + across / kMetresPerDegree));
    put(node, names::kLongitude,
        degrees(kLongitude + along / (kMetresPerDegree * std::cos(kLatitude * 0.0174532925))));
    buildPower(id);
    buildIntervalProgram(id, street);
    buildThresholds(id);
    buildClockProgram(id, street);
  }

  std::string referenceOf(std::size_t street, std::size_t pole) const {
    std::string text = kStreets[street % kStreets.size()];
    if (street >= kStreets.size()) text += " " + std::to_string(street / kStreets.size() + 1);
    return text + " pole " + std::to_string(pole + 1);
  }

  pugi::xml_node addRow(const char* code, const std::string& id) {
    pugi::xml_node row = store_.sectionToChange(code).append_child(names::kNode);
    put(row, names::kId, id);
    return row;
  }

  void buildPower(const std::string& id) {
    pugi::xml_node row = addRow(names::kNodePower, id);
    put(row, names::kTime, 0);
    put(row, names::kPower, 100);
  }

  void buildIntervalProgram(const std::string& id, std::size_t street) {
    static constexpr int kPrograms[][8] = {{180, 100, 120, 70, 240, 40, 180, 80},
                                           {120, 90, 180, 60, 240, 30, 120, 70},
                                           {240, 100, 240, 60, 240, 60, 120, 100}};
    pugi::xml_node row = addRow(names::kIntervalPrograms, id);
    const auto& program = kPrograms[street % std::size(kPrograms)];
    for (int step = 0; step < 4; ++step) {
      const std::string number = std::to_string(step + 1);
      put(row, (names::kTime + number).c_str(), program[2 * step]);
      put(row, (names::kPower + number).c_str(), program[2 * step + 1]);
    }
  }

  void buildClockProgram(const std::string& id, std::size_t street) {
    static constexpr const char* kPrograms[][3][2] = {{{"22", "30"}, {"00", "30"}, {"05", "30"}},
                                                      {{"23", "00"}, {"01", "00"}, {"05", "00"}}};
    static constexpr int kPowers[][4] = {{100, 70, 40, 80}, {90, 60, 30, 70}};
    pugi::xml_node row = addRow(names::kClockPrograms, id);
    const std::size_t chosen = street % std::size(kPrograms);
    for (int step = 0; step < 4; ++step) {
      const std::string number = std::to_string(step + 1);
      put(row, (names::kHour + number).c_str(), step == 0 ? "00" : kPrograms[chosen][step - 1][0]);
      put(row, (names::kMinute + number).c_str(),
          step == 0 ? "00" : kPrograms[chosen][step - 1][1]);
      put(row, (names::kPower + number).c_str(), kPowers[chosen][step]);
    }
  }

  void buildThresholds(const std::string& id) {
    static constexpr std::array kLampWatts = {70, 100, 150};
    pugi::xml_node row = addRow(names::kAlarmThresholds, id);
    const int watts = kLampWatts[dice_.below(kLampWatts.size())];
    const bool old = dice_.between(1, 10) <= 4;
    put(row, names::kNodeVersion, old ? dice_.oneOf(kOldVersions) : dice_.oneOf(kNewVersions));
    if (old) {
      put(row, "blinkActive", watts / 2);
      put(row, "blinkTime", 30);
      put(row, "blinkTimes", 5);
      put(row, "blinkTotalTime", 600);
      put(row, "brokenActive", watts / 5);
      put(row, "brokenTime", 120);
      put(row, "capacitorReactive", watts / 2);
      put(row, "capacitorTime", 300);
    } else {
      put(row, "powerLamp", watts);
      put(row, "timeAlarm", 120);
      put(row, "percentageAlarm", 20);
      put(row, "factorPower", "0.9");
      put(row, "blinkTime", 30);
      put(row, "blinkTimes", 5);
    }
  }

  const StreetPlan& plan_;
  SectionStore& store_;
  Dice dice_;
  double askew_ = 0;
};

}  // namespace

void generateStreet(const StreetPlan& plan, SectionStore& store) {
  StreetBuilder(plan, store).build();
}

std::string defaultIdentifier(std::uint64_t seed) {
  char text[32];
  std::snprintf(text, sizeof text, "LM%08llu", static_cast<unsigned long long>(seed % 100000000));
  return text;
}

}  // namespace lamp::controller
