#include "controller/model/controller.h"
#include "controller/model/names.h"
#include "controller/model/report.h"
#include "controller/model/state_file.h"

namespace lamp::controller {
namespace {

constexpr const char* kReports = "reports";
constexpr const char* kOutbox = "outbox";
constexpr const char* kReportFormat = "ReportFormat";

std::string keepIn(const std::filesystem::path& folder, const std::string& name,
                   std::string_view text) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) return "can't make " + folder.string() + ": " + error.message();
  return writeFileSafely(folder / name, text);
}

}  // namespace

// Lamps are built again only when something in force may have changed.
void Controller::settle(Moment now) {
  if (settings_.advance(now)) ++version_;
  if (streetVersion_ != version_) {
    street_.rebuild(settings_.inForce());
    streetVersion_ = version_;
  }
  street_.update(now);
}

void Controller::followCalendar(DayCalendar calendar) {
  const std::lock_guard lock(mutex_);
  street_.follow(std::move(calendar));
}

void Controller::showLiveValues(pugi::xml_document& reply, const char* code) {
  const std::string_view section = code;
  const bool live = section == names::kInputsOutputs || section == names::kAlarmReport ||
                    section == names::kUsageReport;
  if (!live) return;
  const Moment now = clock_.now();
  settle(now);
  pugi::xml_node shown = reply.document_element().child(names::kZelLamp).child(code);
  if (section == names::kInputsOutputs) {
    showPorts(switchPorts(settings_.inForce(), street_), shown);
  } else if (section == names::kAlarmReport) {
    fillAlarmReport(settings_.inForce(), street_, now, shown);
  } else {
    fillUsageReport(settings_.inForce(), street_, shown);
  }
}

bool Controller::advance() {
  const std::lock_guard lock(mutex_);
  const std::uint64_t before = version_;
  const Moment now = clock_.now();
  settle(now);
  const std::vector<DueReport> due = takeDueReports(settings_.inForce(), now, zone());
  if (!due.empty()) {
    reportFault_ = keepReports(due);
    // The lamps do not depend on how far the tasks have come.
    streetVersion_ = ++version_;
  }
  return version_ != before;
}

std::string Controller::keepReports(const std::vector<DueReport>& due) {
  if (dataFolder_.empty()) return "";
  std::string fault;
  for (const DueReport& report : due) {
    const std::string format =
        settings_.inForce().section(names::kGeneral).attribute(kReportFormat).value();
    const std::string text = reportOf(report, format);
    const std::string name = formatDigits(report.moment) + "-task" + report.task + "-" +
                             report.request + reportEnding(format);
    if (report.store) fault += keepIn(dataFolder_ / kReports, name, text);
    if (report.send) fault += keepIn(dataFolder_ / kOutbox, name, text);
  }
  return fault;
}

std::string Controller::reportOf(const DueReport& report, std::string_view format) {
  pugi::xml_document wanted;
  pugi::xml_document reply;
  readSection(wanted.append_child(report.request.c_str()), settings_.inForce(),
              ReplyHead{id_, formatDigits(report.moment)}, reply);
  showLiveValues(reply, report.request.c_str());
  return reportText(reply, report.request.c_str(), format);
}

std::string Controller::reportFault() const {
  const std::lock_guard lock(mutex_);
  return reportFault_;
}

std::string Controller::date() const {
  const std::lock_guard lock(mutex_);
  return formatReadable(toCivil(clock_.now(), zone()));
}

void Controller::setDate(CivilTime civil) {
  const std::lock_guard lock(mutex_);
  clock_.set(toMoment(civil, zone(), false));
  settle(clock_.now());
}

DeliverySettings Controller::deliverySettings() const {
  const std::lock_guard lock(mutex_);
  return DeliverySettings::read(settings_.inForce().section(names::kGeneral));
}

bool Controller::setInputState(int number, bool active) {
  if (number < 1 || number > kPorts) return false;
  const std::lock_guard lock(mutex_);
  setInput(settings_.inForce(), number, active);
  if (&settings_.shown() != &settings_.inForce()) setInput(settings_.shown(), number, active);
  ++version_;
  return true;
}

}  // namespace lamp::controller
