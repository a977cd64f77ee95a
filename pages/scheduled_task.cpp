#include "pages/scheduled_task.h"

#include <algorithm>
#include <string>
#include <utility>

#include "exchange/exchange_frame.h"
#include "pages/binding/date_field.h"

namespace lamp {

using Node = XmlDocument::XmlNode;

namespace {

constexpr std::size_t StartLength = 15;   // 14 digits and the season's letter
constexpr std::size_t PeriodLength = 14;  // as a stamp without letter
constexpr std::size_t PartLength = 2;
constexpr std::u16string_view TypedStart = u"00/00/0000 00:00:00";  // 0 for a digit

constexpr std::u16string_view NewTask =
    uR"(<TP TpTar="%s" TpHi="%ls" TpPer="00000001000000" TpCompl="Y" TpNode="" TpPrio="2">)"
    uR"(<TpPro TpReq="L03" TpSend="Y" TpStore="Y"></TpPro></TP>)";
constexpr std::u16string_view NewAction = uR"(<TpPro TpReq="L03" TpSend="Y" TpStore="Y"></TpPro>)";

// The year's four digits stand in front of the parts.
constexpr std::size_t placeOf(PeriodPart part) {
  return 4 + PartLength * static_cast<std::size_t>(part);
}

bool isDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

bool isTypedStart(std::u16string_view text) {
  return std::equal(
      text.begin(), text.end(), TypedStart.begin(), TypedStart.end(),
      [](char16_t c, char16_t model) { return model == u'0' ? isDigit(c) : c == model; });
}

// The leading decimal digits of a task's number without leading zeros, however many they are; none
// for 0, for a negative number and for a text that is no number.
std::u16string digitsOf(const Node& task) {
  const XCBasicString number = task.getAttribute(task_name::Number);
  if (number.ToInt() <= 0) return {};
  const auto isNotZero = [](char16_t c) { return c >= u'1' && c <= u'9'; };
  const std::u16string& text = number.str();
  const auto first = std::find_if(text.begin(), text.end(), isNotZero);
  return {first, std::find_if_not(first, text.end(), isDigit)};
}

// Negative, 0 or positive; of two texts as digitsOf makes them.
int compareDigits(const std::u16string& a, const std::u16string& b) {
  return a.size() != b.size() ? (a.size() < b.size() ? -1 : 1) : a.compare(b);
}

XCBasicString nextNumber(const Node& section) {
  std::u16string next;
  for (const Node& task : section.Children())
    if (std::u16string digits = digitsOf(task); compareDigits(next, digits) < 0)
      next = std::move(digits);
  std::size_t at = next.size();
  while (at > 0 && next[at - 1] == u'9') next[--at] = u'0';
  if (at == 0)
    next.insert(0, 1, u'1');
  else
    ++next[at - 1];
  return next;
}

void append(Node& parent, host::XmlName tag, const XCBasicString& xml) {
  XmlDocument piece;
  if (piece.Parse(xml.ToUtf8())) parent.NewChild(tag) = *piece.Root();
}

}  // namespace

bool isListedTask(const Node& task) {
  return !task.attribute(task_name::Period).empty();
}

XCBasicString taskStart(const Node& task) {
  const XCBasicString start = task.getAttribute(task_name::Start);
  return start.Length() == StartLength ? stampAsDate(start) : XCBasicString();
}

void setTaskStart(Node& task, const XCBasicString& typed) {
  XCBasicString start;
  if (isTypedStart(typed)) {
    const auto piece = [&](std::size_t from, std::size_t count) {
      return typed.Mid(from, count).ToInt();
    };
    start = timestamp(XCDateTime(piece(6, 4), piece(3, 2), piece(0, 2), piece(11, 2), piece(14, 2),
                                 piece(17, 2)));
  }
  task.setAttribute(task_name::Start, start);
}

std::optional<std::size_t> taskPeriod(const Node& task, PeriodPart part) {
  const XCBasicString piece = task.getAttribute(task_name::Period).Mid(placeOf(part), PartLength);
  if (piece.Length() != PartLength || !isDigit(piece[0]) || !isDigit(piece[1])) return std::nullopt;
  return static_cast<std::size_t>(piece.ToInt());
}

void setTaskPeriod(Node& task, PeriodPart part, int value) {
  std::u16string period = task.getAttribute(task_name::Period).str();
  if (period.size() != PeriodLength) return;
  period.replace(placeOf(part), PartLength, XCBasicString::Format(u"%02d", value).str());
  task.setAttribute(task_name::Period, period);
}

XCBasicString taskRequests(const Node& task) {
  XCBasicString requests;
  bool first = true;
  for (const Node& action : task.Children()) {
    if (!first) requests += u",";
    requests += action.getAttribute(task_name::Request);
    first = false;
  }
  return requests;
}

int compareTaskNumbers(const Node& a, const Node& b) {
  const int left = a.attribute(task_name::Number).toInt();
  const int right = b.attribute(task_name::Number).toInt();
  return left != right ? (left < right ? -1 : 1) : compareDigits(digitsOf(a), digitsOf(b));
}

std::size_t actionCount(const Node& task) {
  std::size_t count = 0;
  for (const Node& child : task.Children())
    if (child.TagName() == task_name::Action) ++count;
  return count;
}

bool holdsTask(const Node* section, const XCBasicString& number) {
  if (section == nullptr) return false;
  for (const Node& task : section->Children())
    if (task.TagName() == task_name::Task && task.attribute(task_name::Number) == number)
      return true;
  return false;
}

void appendTask(Node& section, const XCDateTime& today) {
  const XCDateTime midnight(today.Year(), today.Month(), today.Day());
  const XCBasicString start =
      XCBasicString::Format(u"%d%02d%02d000000%c", midnight.Year(), midnight.Month(),
                            midnight.Day(), seasonLetter(midnight));
  append(section, task_name::Task, XCBasicString::Format(NewTask, nextNumber(section), start));
}

void appendAction(Node& task) {
  append(task, task_name::Action, NewAction);
}

}  // namespace lamp
