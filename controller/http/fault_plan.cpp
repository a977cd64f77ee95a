#include "controller/http/fault_plan.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <regex>

namespace lamp::controller {
namespace {

enum class Argument { None, Text, Number, Bytes };

struct FaultRule {
  const char* name;
  FaultKind kind;
  Argument argument;
  long missing;  // the number where none is given
};

constexpr long kHoldSeconds = 120;

constexpr std::array kRules = {
    FaultRule{"no-answer", FaultKind::NoAnswer, Argument::Number, kHoldSeconds},
    FaultRule{"delay", FaultKind::Delay, Argument::Number, 1},
    FaultRule{"close-mid-reply", FaultKind::CloseMidReply, Argument::None, 0},
    FaultRule{"truncated-xml", FaultKind::TruncatedXml, Argument::None, 0},
    FaultRule{"garbage", FaultKind::Garbage, Argument::None, 0},
    FaultRule{"wrong-section", FaultKind::WrongSection, Argument::None, 0},
    FaultRule{"no-section", FaultKind::NoSection, Argument::None, 0},
    FaultRule{"empty", FaultKind::Empty, Argument::None, 0},
    FaultRule{"refuse", FaultKind::Refuse, Argument::Text, 0},
    FaultRule{"refuse-every-second-write", FaultKind::RefuseEverySecondWrite, Argument::None, 0},
    FaultRule{"apply-lose-reply", FaultKind::ApplyLoseReply, Argument::None, 0},
    FaultRule{"restart-mid-command", FaultKind::RestartMidCommand, Argument::None, 0},
    FaultRule{"clock-jump", FaultKind::ClockJump, Argument::Number, 3600},
    FaultRule{"oversize", FaultKind::Oversize, Argument::Bytes, 70L * 1024 * 1024},
    FaultRule{"deep", FaultKind::Deep, Argument::Number, 10000},
    FaultRule{"dtd", FaultKind::Dtd, Argument::None, 0},
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

bool readBytes(const std::string& text, long& number) {
  static const std::regex kSize("([0-9]{1,10})(KiB|MiB)?");
  std::smatch match;
  if (!std::regex_match(text, match, kSize) || !readLong(match[1], number)) return false;
  if (match[2] == "KiB") number *= 1024;
  if (match[2] == "MiB") number *= 1024 * 1024;
  return number <= kMostBytes;
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
  static const std::regex kForm("([a-z-]+)(:([^]*?))?(@([0-9]{1,6}))?(#([0-9]{1,6}))?");
  std::smatch match;
  if (!std::regex_match(text, match, kForm)) {
    return "\"" + text + "\" is no fault; write NAME[:ARGUMENT][@COMMAND][#COUNT]";
  }
  const std::string name = match[1];
  const auto rule = std::find_if(kRules.begin(), kRules.end(),
                                 [&](const FaultRule& each) { return name == each.name; });
  if (rule == kRules.end()) return "\"" + name + "\" is no fault; there are " + names();
  fault.kind = rule->kind;
  fault.text = text;
  fault.argument = match[3];
  if (match[5].matched) fault.command = std::stoi(match[5]);
  if (match[7].matched) fault.remaining = std::stoi(match[7]);
  return readArgument(*rule, match[2].matched, fault);
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
