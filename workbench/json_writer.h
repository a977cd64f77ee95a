#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace workbench {

/// Writes JSON straight into a text, in UTF-8 and without line breaks.
class JsonWriter {
 public:
  /// The text written so far, which the caller may take.
  std::string& text() { return out_; }

  JsonWriter& beginObject() { return open('{'); }
  JsonWriter& endObject() { return close('}'); }
  JsonWriter& beginList() { return open('['); }
  JsonWriter& endList() { return close(']'); }

  /// The name of an object's next member.
  JsonWriter& name(std::string_view name);

  JsonWriter& value(bool value);
  JsonWriter& value(int number) { return value(static_cast<std::int64_t>(number)); }
  JsonWriter& value(std::int64_t number);
  JsonWriter& value(std::size_t number) { return value(static_cast<std::int64_t>(number)); }
  /// UTF-8; malformed bytes become U+FFFD.
  JsonWriter& value(std::string_view text);
  JsonWriter& value(const char* text) { return value(std::string_view(text)); }
  JsonWriter& value(std::u16string_view text);
  JsonWriter& null();

  template <class Value>
  JsonWriter& member(std::string_view memberName, const Value& memberValue) {
    return name(memberName).value(memberValue);
  }
  /// Members that were written by another writer, without the braces around them.
  JsonWriter& members(std::string_view written);

 private:
  JsonWriter& open(char bracket);
  JsonWriter& close(char bracket);
  void separate();
  void quote(std::string_view valid);

  std::string out_;
  bool first_ = true;  // nothing stands yet in the object or list at hand
};

}  // namespace workbench
