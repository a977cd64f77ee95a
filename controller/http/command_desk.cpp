#include "controller/http/command_desk.h"

#include <strings.h>

#include <charconv>
#include <optional>

#include "controller/http/faulty_reply.h"

namespace lamp::controller {
namespace {

using std::chrono::seconds;

constexpr std::size_t Mebibyte = 1024UL * 1024UL;
constexpr std::size_t BodyLimit = 64 * Mebibyte;
constexpr seconds BodyTime{60};
// A firmware travels as base64 inside its document.
constexpr std::size_t FirmwareLimit = 256 * Mebibyte;
constexpr seconds FirmwareTime{300};
constexpr int FirmwareCommand = 52;

// The number in the path, or -1 where the path holds something else.
int commandNumber(std::string_view path) {
  const std::string_view text = path.substr(CommandFolder.size());
  int number = -1;
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number);
  return result.ec == std::errc() && result.ptr == end && number >= 0 ? number : -1;
}

// A media type is compared whole, without its parameters.
bool isXml(std::string type) {
  type = type.substr(0, type.find(';'));
  while (!type.empty() && (type.back() == ' ' || type.back() == '\t')) type.pop_back();
  return ::strcasecmp(type.c_str(), "application/xml") == 0 ||
         ::strcasecmp(type.c_str(), "text/xml") == 0;
}

bool isWrite(int command) {
  return command == 2 || command == 9 || command == 30 || command == FirmwareCommand;
}

// The refusal that the faults put in place of the controller's own answer.
std::optional<Refusal> refusalAsOrdered(const std::vector<Fault>& faults) {
  if (const Fault* fault = findFault(faults, FaultKind::Refuse))
    return Refusal{422, fault->argument.empty() ? "Refused on request." : fault->argument};
  if (findFault(faults, FaultKind::RefuseEverySecondWrite) != nullptr)
    return Refusal{422, "Every second write is refused on request. Nothing was changed."};
  return std::nullopt;
}

HttpReply withEnding(Reply reply, Ending ending) {
  if (ending == Ending::Half && reply.body.empty()) reply.body = "<deviceCfg/>";
  if (ending == Ending::Half) reply.type = "application/xml";
  HttpReply answer{reply.status, std::move(reply.type), std::move(reply.body)};
  answer.ending = ending;
  return answer;
}

}  // namespace

bool CommandDesk::admits(const HttpHead& head, std::size_t& mostBytes, seconds& mostTime,
                         HttpReply& reply) {
  const int command = commandNumber(head.path);
  mostBytes = command == FirmwareCommand ? FirmwareLimit : BodyLimit;
  mostTime = command == FirmwareCommand ? FirmwareTime : BodyTime;
  if (head.method != "POST") {
    reply = HttpReply::text(405, "Commands are sent with POST.");
    reply.headers.emplace_back("Allow", "POST");
    return false;
  }
  if (command < 0) {
    reply = HttpReply::text(404, "A command is a number.");
    return false;
  }
  return true;
}

// What waits as ordered waits without a thread.
HttpReply CommandDesk::answer(HttpRequest& request) {
  const int command = commandNumber(request.head.path);
  if (!request.body.empty() && !isXml(request.head.contentType))
    return HttpReply::text(415, "A command is one XML document; send it as application/xml.");
  std::vector<Fault> faults = service_.faults.take(command, isWrite(command));
  const Fault* delay = findFault(faults, FaultKind::Delay);
  const Fault* hold = findFault(faults, FaultKind::NoAnswer);
  if (delay == nullptr && hold == nullptr) return perform(command, request, faults);
  HttpReply reply;
  reply.wait =
      seconds{(delay == nullptr ? 0 : delay->number) + (hold == nullptr ? 0 : hold->number)};
  reply.afterwards = [this, command, &request, faults = std::move(faults)] {
    if (findFault(faults, FaultKind::NoAnswer) != nullptr) return HttpReply::broken();
    return perform(command, request, faults);
  };
  return reply;
}

HttpReply CommandDesk::perform(int command, HttpRequest& request,
                               const std::vector<Fault>& faults) {
  if (findFault(faults, FaultKind::RestartMidCommand) != nullptr) {
    service_.restart();
    return HttpReply::broken();
  }
  ShownText shown(request.body);
  Reply reply = carryOut(command, std::move(request.body), faults);
  record(command, std::move(shown), request.head.query, reply);
  if (findFault(faults, FaultKind::ApplyLoseReply) != nullptr) return HttpReply::broken();
  spoilReply(faults, reply);
  const bool half = findFault(faults, FaultKind::CloseMidReply) != nullptr;
  return withEnding(std::move(reply), half ? Ending::Half : Ending::Whole);
}

Reply CommandDesk::carryOut(int command, std::string body, const std::vector<Fault>& faults) {
  if (const Fault* jump = findFault(faults, FaultKind::ClockJump))
    service_.clock.jump(seconds{jump->number});
  if (const auto refusal = refusalAsOrdered(faults)) return Reply::refusal(*refusal);
  return service_.controller.perform(command, std::move(body));
}

void CommandDesk::record(int command, ShownText body, const std::string& query,
                         const Reply& reply) {
  LoggedCommand entry;
  entry.command = command;
  entry.date = service_.controller.date();
  entry.parameters = ShownText(query);
  entry.request = std::move(body);
  entry.status = reply.status;
  entry.reply = ShownText(reply.body);
  service_.log.add(std::move(entry));
}

}  // namespace lamp::controller
