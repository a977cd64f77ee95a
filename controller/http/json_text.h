#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace lamp::controller {

/// `text` as a JSON string, quotes and all. Bytes that are no UTF-8 become U+FFFD.
std::string jsonString(std::string_view text);

/// Builds an object or a list as JSON text, member by member, in the order of the calls.
class JsonText {
 public:
  /// '{' for an object, '[' for a list.
  explicit JsonText(char opening) : text_(1, opening) {}

  JsonText& add(std::string_view name, std::string_view value) {
    return addRaw(name, jsonString(value));
  }
  JsonText& add(std::string_view name, const std::string& value) {
    return add(name, std::string_view(value));
  }
  JsonText& add(std::string_view name, const char* value) {
    return add(name, std::string_view(value));
  }
  JsonText& add(std::string_view name, bool value) {
    return addRaw(name, value ? "true" : "false");
  }
  JsonText& add(std::string_view name, int value) { return addRaw(name, std::to_string(value)); }
  JsonText& add(std::string_view name, std::size_t value) {
    return addRaw(name, std::to_string(value));
  }
  JsonText& add(std::string_view name, double value);
  JsonText& add(std::string_view name, const std::vector<std::string>& values);
  /// Adds a value that is JSON already. In a list the name is empty.
  JsonText& addRaw(std::string_view name, std::string_view value);

  /// The whole text, closed.
  std::string done() const { return text_ + (text_[0] == '{' ? '}' : ']'); }
  bool empty() const { return text_.size() == 1; }

 private:
  std::string text_;
};

}  // namespace lamp::controller
