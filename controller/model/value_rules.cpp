#include "controller/model/value_rules.h"

#include <algorithm>
#include <cstdlib>

namespace lamp::controller {
namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

std::string bounds(const ValueRule& rule) {
  return std::to_string(rule.low) + " to " + std::to_string(rule.high);
}

std::string faultOfDigits(const ValueRule& rule, std::string_view value) {
  const bool digits = std::all_of(value.begin(), value.end(), isDigit);
  if (rule.high == 0) {
    return digits ? "" : "it must consist of digits";
  }
  const bool fits = digits && std::atol(std::string(value).c_str()) >= rule.low &&
                    std::atol(std::string(value).c_str()) <= rule.high;
  return fits ? "" : "it must be a whole number from " + bounds(rule);
}

std::string faultOfDecimal(const ValueRule& rule, std::string_view value) {
  const std::string_view magnitude = value.substr(!value.empty() && value[0] == '-' ? 1 : 0);
  const auto points = std::count(magnitude.begin(), magnitude.end(), '.');
  const bool form = std::any_of(magnitude.begin(), magnitude.end(), isDigit) && points <= 1 &&
                    std::all_of(magnitude.begin(), magnitude.end(),
                                [](char c) { return isDigit(c) || c == '.'; });
  const double number = form ? std::strtod(std::string(value).c_str(), nullptr) : 0.0;
  const bool fits =
      form && number >= static_cast<double>(rule.low) && number <= static_cast<double>(rule.high);
  return fits ? "" : "it must be a decimal number from " + bounds(rule);
}

std::string faultOfAscii(std::string_view value) {
  const bool fits = std::all_of(value.begin(), value.end(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x20U && byte < 0x7FU && c != '<' && c != '>';
  });
  return fits ? "" : "it must hold 7-bit characters only, without \"<\" and \">\"";
}

std::string faultOfChoice(const ValueRule& rule, std::string_view value) {
  const std::string_view choices = rule.choices;
  if (value.size() == 1 && choices.find(value[0]) != std::string_view::npos) return "";
  std::string text = "it must be ";
  for (std::size_t i = 0; i < choices.size(); ++i) {
    if (i > 0) text += i + 1 == choices.size() ? " or " : ", ";
    text += quoted(choices.substr(i, 1));
  }
  return text;
}

std::string complaint(const ValueRule& rule, std::string_view value) {
  if (rule.kind == ValueKind::Ignored) return "";
  if (rule.kind == ValueKind::ReadOnly) return "it is the controller's own and can't be written";
  if (value.empty()) return rule.mayBeEmpty ? "" : "it must not be empty";
  if (value.size() > rule.longest) {
    return "it must have at most " + std::to_string(rule.longest) + " characters";
  }
  switch (rule.kind) {
    case ValueKind::Digits:
      return faultOfDigits(rule, value);
    case ValueKind::Decimal:
      return faultOfDecimal(rule, value);
    case ValueKind::Ascii:
      return faultOfAscii(value);
    case ValueKind::Choice:
      return faultOfChoice(rule, value);
    default:
      return "";
  }
}

const ValueRule* findRule(std::span<const ValueRule> rules, std::string_view name) {
  const auto found = std::find_if(rules.begin(), rules.end(),
                                  [&](const ValueRule& rule) { return name == rule.name; });
  return found == rules.end() ? nullptr : &*found;
}

}  // namespace

std::string faultOf(const ValueRule& rule, std::string_view value) {
  const std::string text = complaint(rule, value);
  if (text.empty()) return text;
  return std::string(rule.name) + " is " + quoted(value) + "; " + text;
}

Objection judgeAttributes(pugi::xml_node element, std::span<const ValueRule> rules,
                          std::string_view where) {
  for (const pugi::xml_attribute attribute : element.attributes()) {
    const ValueRule* rule = findRule(rules, attribute.name());
    if (rule == nullptr) continue;
    const std::string fault = faultOf(*rule, attribute.value());
    if (!fault.empty()) return unacceptable(where, fault);
  }
  return std::nullopt;
}

bool isOwnAttribute(std::span<const ValueRule> rules, std::string_view name) {
  const ValueRule* rule = findRule(rules, name);
  return rule != nullptr && (rule->kind == ValueKind::ReadOnly || rule->kind == ValueKind::Ignored);
}

void putAttribute(pugi::xml_node element, const char* name, const char* value) {
  pugi::xml_attribute attribute = element.attribute(name);
  if (!attribute) attribute = element.append_attribute(name);
  attribute.set_value(value);
}

void takeAttributes(pugi::xml_node from, pugi::xml_node to, std::span<const char* const> except) {
  for (const pugi::xml_attribute attribute : from.attributes()) {
    const std::string_view name = attribute.name();
    const bool skipped =
        std::any_of(except.begin(), except.end(), [&](const char* other) { return name == other; });
    if (!skipped) putAttribute(to, attribute.name(), attribute.value());
  }
}

}  // namespace lamp::controller
