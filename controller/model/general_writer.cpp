#include <array>
#include <cstring>

#include "controller/model/names.h"
#include "controller/model/section_writer.h"
#include "controller/model/value_rules.h"

namespace lamp::controller {
namespace {

constexpr ValueRule digits(const char* name) {
  return ValueRule{name, ValueKind::Digits, 9, 0, 0, "", true};
}
constexpr ValueRule text(const char* name) {
  return ValueRule{name, ValueKind::Text};
}
constexpr ValueRule own(const char* name) {
  return ValueRule{name, ValueKind::ReadOnly};
}
constexpr ValueRule hour(const char* name) {
  return ValueRule{name, ValueKind::Digits, 2, 0, 23, "", true};
}

constexpr std::array kGeneralRules = {
    digits("AccInacTimeout"),
    digits("AccSimulMax"),
    text("IPNTP"),
    digits("NTPMaxDeviation"),
    text("IPftp"),
    text("FTPUser"),
    text("FTPPwd"),
    text("PathReports"),
    digits("RetryFtp"),
    digits("TimeBetwFtp"),
    oneOf("FtpServer", "NY"),
    oneOf("FtpsServer", "NY"),
    text("mailHost"),
    text(names::kMailUser),
    text(names::kMailPassword),
    text("mainMail"),
    text("destinationMail"),
    oneOf("Priority", "NY"),
    digits("TimeSendReq"),
    digits("TimeDisconNode"),
    digits("RetryDisconNode"),
    digits("TimeRetryInterval"),
    digits("ValuesCheckDelay"),
    digits("MaxOrderOutdate"),
    digits("TimeDelayRestart"),
    oneOf("activeFilterTime", "012"),
    hour("hourIni"),
    hour("hourEnd"),
    text("name"),
    oneOf("ReportFormat", "01"),
    oneOf("viewNodes", "NY"),
    oneOf(names::kTimeZone, "0123456"),
    text(names::kAddress),
    text("ipMask"),
    text("ipGtw"),
    oneOf("ipDhcp", "NY"),
    text("PrimaryDns"),
    text("SecondaryDns"),
    boundedNumber(names::kPort, 1, 65535, 5),
    own("ipLoc"),
    own("ipMaskLoc"),
    own("Pse"),
    own(names::kModel),
    own(names::kFirmwareVersion),
    own("VfComm"),
    own("Af"),
    own(names::kInputsDetected),
    own(names::kFh),
    own(names::kId),
};

// An emptied address would make the controller unreachable for good.
constexpr std::array kAddressRules = {
    ValueRule{names::kAddress, ValueKind::Ascii, 64, 0, 0, "", false}};

Objection judgeGeneral(pugi::xml_node element, const SectionView& store) {
  if (auto objection = judgeMerge({element}, store.section(names::kGeneral), element.name()))
    return objection;
  if (auto objection = judgeAttributes(element, kGeneralRules, element.name())) return objection;
  return judgeAttributes(element, kAddressRules, element.name());
}

void applyGeneral(pugi::xml_node element, SectionView& store, Moment) {
  takeSectionAttributes(element, store.sectionToChange(names::kGeneral));
}

Objection judgeNothing(pugi::xml_node, const SectionView&) {
  return std::nullopt;
}

// A section of which only its keeper knows the meaning is kept as it was sent.
void applyKept(pugi::xml_node element, SectionView& store, Moment) {
  pugi::xml_node section = store.sectionToChange(readSectionOf(element.name()).c_str());
  section.remove_children();
  takeSectionAttributes(element, section);
  for (const pugi::xml_node child : element.children()) section.append_copy(child);
}

void applyFirmware(pugi::xml_node element, SectionView& store, Moment) {
  putAttribute(store.sectionToChange(names::kGeneral), names::kFirmwareVersion,
               element.attribute(names::kNewVersion).value());
}

constexpr std::array kWriters = {
    SectionWriter{"E01", WriteTiming::AtOnce, judgeGeneral, applyGeneral},
    SectionWriter{"E10", WriteTiming::Dated, judgeNothing, applyKept},
    SectionWriter{"E12", WriteTiming::Dated, judgeNothing, applyKept},
    SectionWriter{"E14", WriteTiming::Dated, judgeNothing, applyKept},
    SectionWriter{"E16", WriteTiming::Dated, judgeNothing, applyKept},
};

}  // namespace

std::span<const SectionWriter> generalWriters() {
  return kWriters;
}

const SectionWriter& firmwareWriter() {
  static constexpr SectionWriter kWriter{names::kFirmwareCommand, WriteTiming::DatedUnseen,
                                         judgeNothing, applyFirmware};
  return kWriter;
}

}  // namespace lamp::controller
