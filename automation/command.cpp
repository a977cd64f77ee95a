#include "automation/command.h"

#include <limits>

#include "automation/refusal.h"

namespace automation {
namespace {

using nlohmann::json;

// Numbers of controls and rows lie far below.
constexpr std::int64_t MostCount = std::numeric_limits<std::int32_t>::max();

}  // namespace

Command::Command(const std::string& line) {
  try {
    values_ = json::parse(line);
  } catch (const json::parse_error& error) {
    throw Refusal(std::string("the line is no JSON: ") + error.what());
  }
  if (!values_.is_object()) throw Refusal("the line is no JSON object");
  word_ = utf8("do");
}

const json& Command::field(const char* name) const {
  const auto found = values_.find(name);
  if (found == values_.end()) throw Refusal("the field \"" + std::string(name) + "\" is missing");
  return *found;
}

void Command::wrong(const char* field, const char* wanted) {
  throw Refusal("the field \"" + std::string(field) + "\" must be " + wanted);
}

std::string Command::utf8(const char* name) const {
  const json& value = field(name);
  if (!value.is_string()) wrong(name, "a text");
  return value.get<std::string>();
}

XCBasicString Command::text(const char* name) const {
  return XCBasicString::FromUtf8(utf8(name));
}

bool Command::flag(const char* name) const {
  const json& value = field(name);
  if (!value.is_boolean()) wrong(name, "true or false");
  return value.get<bool>();
}

std::size_t Command::countOf(const json& value, const char* name) {
  if (!value.is_number_integer() ||
      (!value.is_number_unsigned() && value.get<std::int64_t>() < 0) ||
      value.get<std::uint64_t>() > static_cast<std::uint64_t>(MostCount))
    wrong(name, "a whole number from 0 on");
  return value.get<std::size_t>();
}

std::size_t Command::count(const char* name) const {
  return countOf(field(name), name);
}

std::size_t Command::count(const char* name, std::size_t absent) const {
  return has(name) ? count(name) : absent;
}

std::vector<std::size_t> Command::counts(const char* name) const {
  const json& list = field(name);
  if (!list.is_array()) wrong(name, "a list of whole numbers");
  std::vector<std::size_t> numbers;
  numbers.reserve(list.size());
  for (const json& value : list) numbers.push_back(countOf(value, name));
  return numbers;
}

std::vector<XCBasicString> Command::texts(const char* name) const {
  const json& list = field(name);
  if (!list.is_array()) wrong(name, "a list of texts");
  std::vector<XCBasicString> found;
  for (const json& value : list) {
    if (!value.is_string()) wrong(name, "a list of texts");
    found.push_back(XCBasicString::FromUtf8(value.get_ref<const std::string&>()));
  }
  return found;
}

std::variant<int, std::string> Command::control() const {
  const json& value = field("id");
  if (value.is_string()) return value.get<std::string>();
  if (!value.is_number_integer()) wrong("id", "the number or the name of a control");
  return static_cast<int>(countOf(value, "id"));
}

}  // namespace automation
