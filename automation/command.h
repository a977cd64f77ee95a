#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "host/text/basic_string.h"

#include <nlohmann/json.hpp>

namespace automation {

/// One command as it was read: the word and its fields, taken by type. A field that is missing or
/// of another type is a Refusal that names it. Fields that no word asks for are passed over.
class Command {
 public:
  /// Reads a line; a Refusal when it is no JSON object with the text "do".
  explicit Command(const std::string& line);

  const std::string& word() const { return word_; }

  XCBasicString text(const char* field) const;
  std::string utf8(const char* field) const;
  bool flag(const char* field) const;
  /// A whole number from 0 on.
  std::size_t count(const char* field) const;
  /// As count(), with a default for a field that is missing.
  std::size_t count(const char* field, std::size_t absent) const;
  std::vector<std::size_t> counts(const char* field) const;
  std::vector<XCBasicString> texts(const char* field) const;
  bool has(const char* field) const { return values_.contains(field); }

  /// The field "id": a control's number or its name.
  std::variant<int, std::string> control() const;

 private:
  const nlohmann::json& field(const char* name) const;
  [[noreturn]] static void wrong(const char* field, const char* wanted);
  static std::size_t countOf(const nlohmann::json& value, const char* field);

  nlohmann::json values_;
  std::string word_;
};

}  // namespace automation
