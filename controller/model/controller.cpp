#include "controller/model/controller.h"

#include <array>

#include "controller/model/base64.h"
#include "controller/model/firmware.h"
#include "controller/model/names.h"
#include "controller/model/state_file.h"
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

Reply Controller::perform(int command, std::string_view body) {
  const Handler handler = handlerOf(command);
  if (handler == nullptr) {
    return Reply::refusal({404, "There is no command " + std::to_string(command) +
                                    "; this controller has 1, 2, 9, 29, 30, 52 and 58."});
  }
  Request request;
  if (const auto objection = readRequest(body, request)) return Reply::refusal(*objection);
  const std::lock_guard lock(mutex_);
  if (settings_.advance(clock_.now())) ++version_;
  const Reply reply = (this->*handler)(request);
  if (reply.changed) ++version_;
  return reply;
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
  pugi::xml_document reply;
  if (const auto objection = readSection(section, settings_.shown(), head(), reply)) {
    return Reply::refusal(*objection);
  }
  showLiveValues(reply, section.name());
  return Reply::document(reply);
}

Objection Controller::activationOf(pugi::xml_node element, Moment& due) const {
  due = clock_.now();
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
  Moment due;
  if (writer->timing != WriteTiming::AtOnce) {
    if (const auto objection = activationOf(element, due)) return Reply::refusal(*objection);
  }
  if (const auto objection = writer->judge(element, settings_.shown())) {
    return Reply::refusal(*objection);
  }
  settings_.write(*writer, element, due, clock_.now());
  return Reply::done();
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
  clock_.set(toMoment(stamp->civil, zone(), stamp->summer));
  settings_.advance(clock_.now());
  return Reply::done();
}

Reply Controller::identify(const Request& request) {
  if (const auto objection = noForeignRoot(request)) return Reply::refusal(*objection);
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
  settings_.write(*findWriter("E01"), write, clock_.now(), clock_.now());
  return Reply::done();
}

Objection Controller::firmwareOf(const Request& request, pugi::xml_node& element,
                                 pugi::xml_node& file) const {
  const pugi::xml_node root = request.root();
  if (std::string_view(root.name()) != names::kDeviceCfg) {
    return malformed("The root of the request is " + quoted(root.name()) +
                     "; it must be <deviceCfg>.");
  }
  element = root.child(names::kFirmwareCommand);
  file = root.child(names::kFirmwareFile);
  if (!element || !file) {
    return unacceptable("Firmware", "the request must hold <firmwareFile> and <E03>");
  }
  for (const pugi::xml_node child : root.children()) {
    if (child != element && child != file && child.type() == pugi::node_element) {
      return unacceptable("Firmware", "the element " + quoted(child.name()) +
                                          " is unexpected; send <firmwareFile> and <E03> once");
    }
  }
  if (!element.attribute(names::kActDate)) {
    return unacceptable("E03", stampFault(names::kActDate, ""));
  }
  return std::nullopt;
}

Reply Controller::takeFirmware(const Request& request) {
  pugi::xml_node element;
  pugi::xml_node file;
  if (const auto objection = firmwareOf(request, element, file)) return Reply::refusal(*objection);
  Moment due;
  if (const auto objection = activationOf(element, due)) return Reply::refusal(*objection);
  const auto bytes = decodeBase64(file.text().get());
  if (!bytes) return Reply::refusal(unacceptable("firmwareFile", "the text is no base64"));
  const char* present =
      settings_.inForce().section(names::kGeneral).attribute(names::kFirmwareVersion).value();
  const FirmwareImage image =
      inspectFirmware(*bytes, element.attribute(names::kFirmware).value(), present);
  if (!image.fault.empty()) {
    return Reply::refusal(
        unacceptable("firmwareFile", image.fault + "; choose a firmware file (*.tar)"));
  }
  if (const std::string fault = keepFirmware(image.fileName, *bytes); !fault.empty()) {
    return Reply::refusal({500, "The firmware could not be kept: " + fault + "."});
  }
  pugi::xml_document update;
  pugi::xml_node write = update.append_copy(element);
  putAttribute(write, names::kNewVersion, image.version.c_str());
  settings_.write(firmwareWriter(), write, due, clock_.now());
  return Reply::done();
}

std::string Controller::keepFirmware(const std::string& name, std::string_view bytes) const {
  if (dataFolder_.empty()) return "";
  const std::filesystem::path folder = dataFolder_ / "firmware";
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) return "can't make " + folder.string() + ": " + error.message();
  return writeFileSafely(folder / name, bytes);
}

Reply Controller::readNodeFile(const Request& request) {
  if (const auto objection = noForeignRoot(request)) return Reply::refusal(*objection);
  pugi::xml_document wanted;
  pugi::xml_document reply;
  readSection(wanted.append_child(names::kNodeList), settings_.shown(), head(), reply);
  return Reply::document(reply);
}

std::uint64_t Controller::version() const {
  const std::lock_guard lock(mutex_);
  return version_;
}

std::string Controller::statusLine() const {
  const std::lock_guard lock(mutex_);
  return "controller " + id_ + ", " + formatReadable(toCivil(clock_.now(), zone())) + ", " +
         std::to_string(settings_.inForce().nodes().size()) + " nodes, " +
         std::to_string(settings_.pending().size()) + " writes pending\n";
}

}  // namespace lamp::controller
