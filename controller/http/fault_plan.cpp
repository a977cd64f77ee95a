#include "controller/http/fault_plan.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>

#include "controller/model/refusal.h"

namespace lamp::controller {
namespace {

enum class Argument { None, Text, Number, Bytes };

struct FaultRule {
  const char* name;
  FaultKind kind;
  Argument argument;
  long missing;  // the number where none is given
  const char* takes;
  const char* effect;
};

constexpr long kHoldSeconds = 120;

constexpr std::array kRules = {
    FaultRule{"no-answer", FaultKind::NoAnswer, Argument::Number, kHoldSeconds, "seconds",
              "nothing comes; the connection ends after a while"},
    FaultRule{"delay", FaultKind::Delay, Argument::Number, 1, "seconds", "the answer comes later"},
    FaultRule{"close-mid-reply", FaultKind::CloseMidReply, Argument::None, 0, "",
              "half of the reply, then the connection ends"},
    FaultRule{"truncated-xml", FaultKind::TruncatedXml, Argument::None, 0, "",
              "a whole reply with half a document"},
    FaultRule{"garbage", FaultKind::Garbage, Argument::None, 0, "", "bytes that are no text"},
    FaultRule{"wrong-section", FaultKind::WrongSection, Argument::None, 0, "",
              "the section under another name"},
    FaultRule{"no-section", FaultKind::NoSection, Argument::None, 0, "",
              "the controller without a section"},
    FaultRule{"empty", FaultKind::Empty, Argument::None, 0, "", "success without a document"},
    FaultRule{"refuse", FaultKind::Refuse, Argument::Text, 0, "text", "a refusal with this text"},
    FaultRule{"refuse-every-second-write", FaultKind::RefuseEverySecondWrite, Argument::None, 0, "",
              "the second, fourth, ... write is refused"},
    FaultRule{"apply-lose-reply", FaultKind::ApplyLoseReply, Argument::None, 0, "",
              "the command takes effect, no answer comes"},
    FaultRule{"restart-mid-command", FaultKind::RestartMidCommand, Argument::None, 0, "",
              "the controller begins again without the command"},
    FaultRule{"clock-jump", FaultKind::ClockJump, Argument::Number, 3600, "seconds",
              "the clock jumps with every command"},
    FaultRule{"oversize", FaultKind::Oversize, Argument::Bytes, 70L * 1024 * 1024,
              "size, such as 70MiB", "a reply of this size"},
    FaultRule{"deep", FaultKind::Deep, Argument::Number, 10000, "depth", "elements nested so deep"},
    FaultRule{"dtd", FaultKind::Dtd, Argument::None, 0, "", "a document type declaration"},
};

// A misspelt size must not take the machine's memory.
constexpr long kMostBytes = 1024L * 1024 * 1024;

std::string names() {
  std::string text;
  for (const FaultRule& rule : kRules) text += (text.empty() ? "" : ", ") + std::string(rule.name);
  return text;
}

bool readLong(const std::string& text, long& number) {
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number);
  return result.ec == std::errc() && result.ptr == end;
}

// A number of bytes, of KiB or of MiB.
bool readBytes(std::string text, long& number) {
  constexpr std::size_t kUnit = 3;
  long factor = 1;
  if (text.ends_with("KiB")) factor = 1024;
  if (text.ends_with("MiB")) factor = 1024 * 1024;
  if (factor > 1) text.resize(text.size() - kUnit);
  if (!readLong(text, number) || number < 0 || number > kMostBytes / factor) return false;
  number *= factor;
  return true;
}

// Cuts a mark and the one to six digits behind it off the end of the text, where they stand there.
void cutNumber(std::string& text, char mark, int& number) {
  constexpr std::size_t kMostDigits = 6;
  const std::size_t at = text.rfind(mark);
  if (at == std::string::npos) return;
  const std::string digits = text.substr(at + 1);
  const bool fits = !digits.empty() && digits.size() <= kMostDigits &&
                    digits.find_first_not_of("0123456789") == std::string::npos;
  if (!fits) return;
  number = std::atoi(digits.c_str());
  text.resize(at);
}

std::string readArgument(const FaultRule& rule, bool given, Fault& fault) {
  fault.number = rule.missing;
  if (!given) return "";
  switch (rule.argument) {
    case Argument::None:
      return std::string(rule.name) + " takes no argument";
    case Argument::Number:
      return readLong(fault.argument, fault.number) ? ""
                                                    : std::string(rule.name) + " takes a number";
    case Argument::Bytes:
      return readBytes(fault.argument, fault.number)
                 ? ""
                 : std::string(rule.name) + " takes a size up to 1024MiB";
    case Argument::Text:
      break;
  }
  return "";
}

}  // namespace

std::string parseFault(const std::string& text, Fault& fault) {
  std::string rest = text;
  cutNumber(rest, '#', fault.remaining);
  cutNumber(rest, '@', fault.command);
  const std::size_t colon = rest.find(':');
  const std::string name = rest.substr(0, colon);
  const auto rule = std::find_if(kRules.begin(), kRules.end(),
                                 [&](const FaultRule& each) { return name == each.name; });
  if (rule == kRules.end()) {
    return quoted(name) + " is no fault; write NAME[:ARGUMENT][@COMMAND][#COUNT]; there are " +
           names();
  }
  fault.kind = rule->kind;
  fault.text = text;
  if (colon != std::string::npos) fault.argument = rest.substr(colon + 1);
  return readArgument(*rule, colon != std::string::npos, fault);
}

std::vector<FaultDescription> describeFaults() {
  std::vector<FaultDescription> faults;
  for (const FaultRule& rule : kRules) {
    faults.push_back(FaultDescription{rule.name, rule.takes, rule.missing, rule.effect});
  }
  return faults;
}

void FaultPlan::add(Fault fault) {
  const std::lock_guard lock(mutex_);
  faults_.push_back(std::move(fault));
}

void FaultPlan::clear() {
  const std::lock_guard lock(mutex_);
  faults_.clear();
  writes_ = 0;
}

std::vector<std::string> FaultPlan::list() const {
  const std::lock_guard lock(mutex_);
  std::vector<std::string> texts;
  for (const Fault& fault : faults_) texts.push_back(fault.text);
  return texts;
}

std::vector<Fault> FaultPlan::take(int command, bool isWrite) {
  const std::lock_guard lock(mutex_);
  if (isWrite) ++writes_;
  std::vector<Fault> suffered;
  for (Fault& fault : faults_) {
    if (fault.remaining == 0 || (fault.command >= 0 && fault.command != command)) continue;
    if (fault.kind == FaultKind::RefuseEverySecondWrite && (!isWrite || writes_ % 2 == 1)) continue;
    if (fault.remaining > 0) --fault.remaining;
    suffered.push_back(fault);
  }
  std::erase_if(faults_, [](const Fault& fault) { return fault.remaining == 0; });
  return suffered;
}

const Fault* findFault(const std::vector<Fault>& faults, FaultKind kind) {
  const auto found = std::find_if(faults.begin(), faults.end(),
                                  [&](const Fault& fault) { return fault.kind == kind; });
  return found == faults.end() ? nullptr : &*found;
}

}  // namespace lamp::controller
