#pragma once

#include <initializer_list>
#include <pugixml.hpp>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

#include "controller/model/refusal.h"

namespace lamp::controller {

/// What a value may look like.
enum class ValueKind {
  Text,      ///< anything, at most `longest` bytes
  Ascii,     ///< 7-bit printable characters without "<" and ">"
  Digits,    ///< decimal digits only; where `high` is above 0, a number from `low` to `high`
  Decimal,   ///< decimal number with an optional point, from `low` to `high`
  Choice,    ///< one character of `choices`
  ReadOnly,  ///< the controller's own; may not be written
  Ignored    ///< the controller's own; accepted, because pages send it back as they read it
};

/// The rule for one attribute.
struct ValueRule {
  const char* name;
  ValueKind kind;
  std::size_t longest = 256;
  long low = 0;
  long high = 0;
  const char* choices = "";
  bool mayBeEmpty = true;
};

/// A digits rule with bounds; an empty text is refused.
constexpr ValueRule boundedNumber(const char* name, long low, long high, std::size_t longest) {
  return ValueRule{name, ValueKind::Digits, longest, low, high, "", false};
}

/// A rule for a one-character code.
constexpr ValueRule oneOf(const char* name, const char* choices) {
  return ValueRule{name, ValueKind::Choice, 1, 0, 0, choices, false};
}

/// Why `value` breaks `rule` ("power is "101"; it must be a whole number from 0 to 100"), or an
/// empty text when it does not.
std::string faultOf(const ValueRule& rule, std::string_view value);

/// Judges every attribute of `element` for which `rules` has a rule; others pass. `where` opens the
/// text of the refusal.
Objection judgeAttributes(pugi::xml_node element, std::span<const ValueRule> rules,
                          std::string_view where);

/// True when `rules` says that the attribute is kept by the controller and never taken over.
bool isOwnAttribute(std::span<const ValueRule> rules, std::string_view name);

std::size_t countAttributes(pugi::xml_node element);

/// Finds the attributes of an element by name; those of a small one are looked through, because
/// that is faster.
class AttributeIndex {
 public:
  explicit AttributeIndex(pugi::xml_node element);
  /// Empty where there is none.
  pugi::xml_attribute find(std::string_view name) const;
  /// Notes and answers a new attribute of the element.
  pugi::xml_attribute add(pugi::xml_attribute attribute);

 private:
  static constexpr std::size_t FewAttributes = 16;

  pugi::xml_node element_;
  bool indexed_;
  std::size_t added_ = 0;
  std::unordered_map<std::string_view, pugi::xml_attribute> byName_;
};

/// Sets the attribute, adding it behind the others when it is missing.
void putAttribute(pugi::xml_node element, const char* name, const char* value);

/// Takes every attribute of `from` over to `to`, but not those named in `except`. Time grows with
/// the attributes of both.
void takeAttributes(pugi::xml_node from, pugi::xml_node to,
                    std::span<const char* const> except = {});

/// Whether `from` has an attribute, not one of `except`, that `to` lacks or has with another text.
bool saysMore(pugi::xml_node from, pugi::xml_node to, std::span<const char* const> except = {});

/// Objects where `kept` would have more than `MostAttributes` once it has taken over those of every
/// element in `sent`.
Objection judgeMerge(std::initializer_list<pugi::xml_node> sent, pugi::xml_node kept,
                     std::string_view where);

}  // namespace lamp::controller
