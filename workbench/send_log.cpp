#include "workbench/send_log.h"

#include <cstdio>
#include <ctime>
#include <exception>
#include <utility>

#include "workbench/command_address.h"
#include "workbench/device_of.h"
#include "workbench/section_name.h"
#include "workbench/sha256.h"
#include "workbench/state_folder.h"
#include "workbench/upload_digest.h"
#include "workbench/wire/masked_document.h"
#include "workbench/wire/request_section.h"

namespace workbench {
namespace {

using Node = XmlDocument::XmlNode;

const host::XmlName FirmwareFile("firmwareFile");
const host::XmlName FirmwarePath("Firmware");

std::string digestText(std::string_view bytes) {
  return std::to_string(bytes.size()) + " bytes, SHA-256 " + sha256Text(bytes);
}

std::string shortened(std::string text) {
  return text.size() <= SendLog::LongestDocument ? std::move(text)
                                                 : "(not kept: " + digestText(text) + ")";
}

// The content of a file that goes along in a document, none for the others.
std::optional<JournalEntry::Upload> uploadOf(const Node& root) {
  const Node* content = root.Node("firmwareFile");
  if (content == nullptr) return std::nullopt;
  JournalEntry::Upload upload = uploadDigest(content->text());
  for (const Node& child : root.Children())
    if (const std::string path = child.getAttribute(FirmwarePath).ToUtf8(); !path.empty())
      upload.name = path.substr(path.find_last_of("/\\") + 1);
  return upload;
}

// What is sent beside the file's content.
std::string withoutContent(const Node& root, const Secrets& secrets) {
  XmlDocument rest;
  Node& copy = rest.Create(root.TagName());
  for (const Node& child : root.Children())
    if (child.TagName() != FirmwareFile) copy.NewChild(child.TagName()) = child;
  return maskedText(rest, secrets);
}

}  // namespace

std::string momentText(std::chrono::system_clock::time_point moment) {
  using namespace std::chrono;
  const auto whole = floor<seconds>(moment);
  const std::time_t time = system_clock::to_time_t(whole);
  std::tm utc{};
  ::gmtime_r(&time, &utc);
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d.%03dZ", utc.tm_year + 1900,
                utc.tm_mon + 1, utc.tm_mday, utc.tm_hour, utc.tm_min, utc.tm_sec,
                static_cast<int>(duration_cast<milliseconds>(moment - whole).count()));
  return text;
}

SendLog::SendLog(SendJournal journal, ExchangeRecord& record, std::string program, Now now)
    : journal_(std::move(journal)),
      record_(record),
      program_(std::move(program)),
      now_(std::move(now)),
      who_(nameOfUser()) {
  record_.setWitness([this](const host::ExchangeRequest& request, const ExchangeEntry& entry) {
    note(request, entry);
  });
}

SendLog::~SendLog() {
  record_.setWitness({});
}

// What was read last from the same controller; a document that is no longer kept is none.
std::string SendLog::lastReadOf(const std::string& section, const ExchangeEntry& before) const {
  if (section.empty()) return {};
  const CommandAddress controller = commandAddress(before.uri);
  for (std::size_t at = before.number - 1; at-- > 0;) {
    const ExchangeEntry& read = record_.entries()[at];
    if (read.kind == host::CommandKind::get && read.ok && read.section == section &&
        commandAddress(read.uri).shown == controller.shown)
      return read.reply.isKept() ? shortened(read.reply.text()) : std::string();
  }
  return {};
}

JournalEntry SendLog::made(const host::ExchangeRequest& request, const ExchangeEntry& entry) const {
  const DeviceName device = deviceOf(request.uriParameters.ToUtf8());
  JournalEntry made;
  made.when = momentText(now_() - entry.took);
  made.who = who_;
  made.program = program_;
  made.deviceId = device.id;
  made.deviceName = device.name;
  made.address = device.address;
  made.command = entry.command;
  made.section = entry.section;
  if (const Node* root = request.document != nullptr ? request.document->Root() : nullptr) {
    made.upload = uploadOf(*root);
    // Written from the request itself: the record may have had no room for a copy.
    made.document = shortened(made.upload ? withoutContent(*root, *entry.secrets)
                                          : maskedText(*request.document, *entry.secrets));
  }
  made.before = lastReadOf(readSectionOf(made.section), entry);
  made.ok = entry.ok;
  made.error = entry.error;
  made.milliseconds = entry.took.count();
  return made;
}

void SendLog::note(const host::ExchangeRequest& request, const ExchangeEntry& entry) {
  if (entry.kind != host::CommandKind::put) return;
  try {
    const JournalEntry line = made(request, entry);
    std::string cause;
    const bool kept = journal_.append(line, cause);
    if (!kept || !cause.empty()) tell(kept ? Outcome::kept : Outcome::lost, cause);
    if (onEntry) onEntry(line);
  } catch (const std::exception& error) {
    tell(Outcome::lost, error.what());
  }
}

void SendLog::tell(Outcome outcome, const std::string& problem) {
  const bool lost = outcome == Outcome::lost;
  if (std::exchange(lost ? toldOfLoss_ : toldOfProblem_, true)) return;
  if (onProblem) return onProblem(problem);
  std::fprintf(stderr, "%s: what is sent is %s: %s\n", program_.c_str(),
               lost ? "not put on record" : "put on record in one file that only grows",
               problem.c_str());
}

}  // namespace workbench
