#include "controller/model/controller.h"

#include <array>
#include <mutex>
#include <shared_mutex>

#include "controller/model/names.h"
#include "controller/model/value_rules.h"

namespace lamp::controller {
namespace {

constexpr std::array kAddressRules = {
    ValueRule{names::kAddress, ValueKind::Ascii, 64, 0, 0, "", false},
    boundedNumber(names::kPort, 1, 65535, 5)};

std::string stampFault(const char* name, std::string_view value) {
  return std::string(name) + " is " + quoted(value) +
         "; it must be 14 digits of an existing date and time (year, month, day, hour, minute, "
         "second) and S or W";
}

// Commands that need no document take none, or an empty one of the usual kind.
Objection noForeignRoot(const Request& request) {
  const std::string_view name = request.root().name();
  if (name.empty() || name == names::kDeviceCfg || name == names::kAdvancedCfg) return std::nullopt;
  return malformed("The root of the request is " + quoted(name) +
                   "; it must be <deviceCfg>, or the body empty.");
}

bool isWrite(int command) {
  return command == 2 || command == 9 || command == 30 || command == 52;
}

Reply notKept(const std::string& fault) {
  return Reply::refusal({500, "The state could not be kept: " + fault + ". Nothing was changed."});
}

}  // namespace

Controller::Controller(std::string id, ControllerClock& clock)
    : id_(std::move(id)), clock_(clock) {}

Controller::Handler Controller::handlerOf(int command) {
  switch (command) {
    case 1:
      return &Controller::readSettings;
    case 2:
      return &Controller::writeSettings;
    case 9:
      return &Controller::setClock;
    case 29:
      return &Controller::identify;
    case 30:
      return &Controller::moveAddress;
    case 52:
      return &Controller::takeFirmware;
    case 58:
      return &Controller::readNodeFile;
    default:
      return nullptr;
  }
}

Reply Controller::perform(int command, std::string body) {
  const Handler handler = handlerOf(command);
  if (handler == nullptr) {
    return Reply::refusal({404, "There is no command " + std::to_string(command) +
                                    "; this controller has 1, 2, 9, 29, 30, 52 and 58."});
  }
  Request request;
  if (const auto objection = readRequest(std::move(body), request))
    return Reply::refusal(*objection);
  // A read shows what is pending anyway; a write must not overtake what is due before it.
  const std::string fault = bringIntoForce();
  if (!fault.empty() && isWrite(command)) return notKept(fault);
  return (this->*handler)(request);
}

Reply Controller::answerTo(const Change& change) {
  const std::string fault = commit(change);
  return fault.empty() ? Reply::done() : notKept(fault);
}

ZoneRule Controller::zone() const {
  return zoneRuleOf(
      settings_.inForce().section(names::kGeneral).attribute(names::kTimeZone).value());
}

ReplyHead Controller::head() const {
  return ReplyHead{id_, formatDigits(toCivil(clock_.now(), zone()))};
}

Reply Controller::readSettings(const Request& request) {
  pugi::xml_node section;
  if (const auto objection =
          onlySection(request, names::kDeviceCfg, names::kAdvancedCfg, section)) {
    return Reply::refusal(*objection);
  }
  if (showsLiveValues(section.name())) return readLiveSection(section);
  std::string text;
  const std::shared_lock lock(mutex_);
  if (const auto objection = printSection(section, settings_.shown(), head(), text)) {
    return Reply::refusal(*objection);
  }
  return Reply::text(std::move(text));
}

Reply Controller::readLiveSection(pugi::xml_node section) {
  pugi::xml_document reply;
  {
    // The lamps are brought up to date first.
    const std::lock_guard lock(mutex_);
    readSection(section, settings_.shown(), head(), reply);
    showLiveValues(reply, section.name());
  }
  return Reply::document(reply);
}

Objection Controller::activationOf(pugi::xml_node element, Moment& due) const {
  const pugi::xml_attribute date = element.attribute(names::kActDate);
  if (!date) return std::nullopt;
  const auto stamp = parseStamp(date.value());
  if (!stamp) return unacceptable(element.name(), stampFault(names::kActDate, date.value()));
  due = toMoment(stamp->civil, zone(), stamp->summer);
  return std::nullopt;
}

Reply Controller::writeSettings(const Request& request) {
  pugi::xml_node element;
  if (const auto objection = onlySection(request, names::kDeviceCfg, nullptr, element)) {
    return Reply::refusal(*objection);
  }
  if (std::string_view(element.name()) == names::kFirmwareCommand) {
    return Reply::refusal(
        unacceptable("E03", "firmware is not written as a section; send it with command 52"));
  }
  const SectionWriter* writer = findWriter(element.name());
  if (writer == nullptr) {
    return Reply::refusal(unacceptable(
        "Write", "the section is " + quoted(element.name()) +
                     "; sections that can be written are E01, E02 and E04 to E14, E16 and E17"));
  }
  SectionWrite write{writer, element, clock_.now(), clock_.now()};
  {
    const std::shared_lock lock(mutex_);
    if (writer->timing != WriteTiming::AtOnce) {
      if (const auto objection = activationOf(element, write.due)) {
        return Reply::refusal(*objection);
      }
    }
    if (const auto objection = writer->judge(element, settings_.shown())) {
      return Reply::refusal(*objection);
    }
  }
  return answerTo(write);
}

Reply Controller::setClock(const Request& request) {
  pugi::xml_node element;
  if (const auto objection = onlySection(request, names::kDeviceCfg, nullptr, element)) {
    return Reply::refusal(*objection);
  }
  if (std::string_view(element.name()) != names::kClockCommand) {
    return Reply::refusal(
        unacceptable("Clock", "the section is " + quoted(element.name()) + "; it must be C06"));
  }
  const char* date = element.attribute(names::kDate).value();
  const auto stamp = parseStamp(date);
  if (!stamp) return Reply::refusal(unacceptable("C06", stampFault(names::kDate, date)));
  Moment moment;
  {
    const std::shared_lock lock(mutex_);
    moment = toMoment(stamp->civil, zone(), stamp->summer);
  }
  const std::string fault = commitClock(moment);
  return fault.empty() ? Reply::done() : notKept(fault);
}

Reply Controller::identify(const Request& request) {
  if (const auto objection = noForeignRoot(request)) return Reply::refusal(*objection);
  const std::shared_lock lock(mutex_);
  pugi::xml_document reply;
  beginReply(head(), reply);
  return Reply::document(reply);
}

Reply Controller::moveAddress(const Request& request) {
  pugi::xml_node element;
  if (const auto objection = onlySection(request, names::kMain, nullptr, element)) {
    return Reply::refusal(*objection);
  }
  if (std::string_view(element.name()) != "E01") {
    return Reply::refusal(
        unacceptable("Address", "the section is " + quoted(element.name()) + "; it must be E01"));
  }
  if (auto objection = judgeAttributes(element, kAddressRules, "E01")) {
    return Reply::refusal(*objection);
  }
  const bool named = element.attribute(names::kAddress) || element.attribute(names::kPort);
  if (!named) return Reply::refusal(unacceptable("E01", "neither ipCom nor PortWS is given"));
  pugi::xml_document change;
  pugi::xml_node write = change.append_child("E01");
  for (const char* name : {names::kAddress, names::kPort}) {
    if (element.attribute(name)) putAttribute(write, name, element.attribute(name).value());
  }
  return answerTo(SectionWrite{findWriter("E01"), write, clock_.now(), clock_.now()});
}

Reply Controller::readNodeFile(const Request& request) {
  if (const auto objection = noForeignRoot(request)) return Reply::refusal(*objection);
  pugi::xml_document wanted;
  std::string text;
  const std::shared_lock lock(mutex_);
  printSection(wanted.append_child(names::kNodeList), settings_.shown(), head(), text);
  return Reply::text(std::move(text));
}

void Controller::buildStreet(const StreetPlan& plan) {
  generateStreet(plan, settings_.inForce());
  noteSummary();
}

void Controller::noteSummary() {
  shownZone_ = zone();
  shownNodes_ = settings_.inForce().nodes().size();
  shownPending_ = settings_.pending().size();
}

std::string Controller::date() const {
  return formatReadable(toCivil(clock_.now(), shownZone_));
}

std::string Controller::statusLine() const {
  return "controller " + id_ + ", " + date() + ", " + std::to_string(shownNodes_) + " nodes, " +
         std::to_string(shownPending_) + " writes pending\n";
}

}  // namespace lamp::controller
