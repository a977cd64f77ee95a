#include "controller/model/value_rules.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "controller/xml/document_reader.h"

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

bool isOneOf(std::span<const char* const> names, std::string_view name) {
  return std::any_of(names.begin(), names.end(), [&](const char* other) { return name == other; });
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

std::size_t countAttributes(pugi::xml_node element) {
  const auto attributes = element.attributes();
  return static_cast<std::size_t>(std::distance(attributes.begin(), attributes.end()));
}

AttributeIndex::AttributeIndex(pugi::xml_node element)
    : element_(element), indexed_(countAttributes(element) > FewAttributes) {
  if (!indexed_) return;
  for (const pugi::xml_attribute attribute : element.attributes())
    byName_.emplace(attribute.name(), attribute);
}

pugi::xml_attribute AttributeIndex::find(std::string_view name) const {
  if (indexed_) {
    const auto found = byName_.find(name);
    return found == byName_.end() ? pugi::xml_attribute() : found->second;
  }
  for (const pugi::xml_attribute attribute : element_.attributes()) {
    if (name == attribute.name()) return attribute;
  }
  return {};
}

pugi::xml_attribute AttributeIndex::add(pugi::xml_attribute attribute) {
  if (indexed_) {
    byName_.emplace(attribute.name(), attribute);
  } else if (++added_ > FewAttributes) {
    *this = AttributeIndex(element_);
  }
  return attribute;
}

void putAttribute(pugi::xml_node element, const char* name, const char* value) {
  pugi::xml_attribute attribute = element.attribute(name);
  if (!attribute) attribute = element.append_attribute(name);
  attribute.set_value(value);
}

void takeAttributes(pugi::xml_node from, pugi::xml_node to, std::span<const char* const> except) {
  AttributeIndex present(to);
  for (const pugi::xml_attribute attribute : from.attributes()) {
    if (isOneOf(except, attribute.name())) continue;
    pugi::xml_attribute own = present.find(attribute.name());
    if (!own) own = present.add(to.append_attribute(attribute.name()));
    own.set_value(attribute.value());
  }
}

bool saysMore(pugi::xml_node from, pugi::xml_node to, std::span<const char* const> except) {
  const AttributeIndex present(to);
  for (const pugi::xml_attribute attribute : from.attributes()) {
    if (isOneOf(except, attribute.name())) continue;
    const pugi::xml_attribute own = present.find(attribute.name());
    if (!own || std::string_view(own.value()) != attribute.value()) return true;
  }
  return false;
}

Objection judgeMerge(std::initializer_list<pugi::xml_node> sent, pugi::xml_node kept,
                     std::string_view where) {
  std::size_t count = countAttributes(kept);
  for (const pugi::xml_node from : sent) count += countAttributes(from);
  if (count <= MostAttributes) return std::nullopt;
  AttributeIndex present(kept);
  count = countAttributes(kept);
  for (const pugi::xml_node from : sent) {
    for (const pugi::xml_attribute attribute : from.attributes())
      if (!present.find(attribute.name())) ++count;
  }
  if (count <= MostAttributes) return std::nullopt;
  return unacceptable(where, "it would have " + std::to_string(count) +
                                 " attributes, and may have " + std::to_string(MostAttributes));
}

}  // namespace lamp::controller
