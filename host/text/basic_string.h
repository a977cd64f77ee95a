#pragma once

#include <compare>
#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

#include "host/export.h"

class XCBasicString;

namespace host {

/// One argument of XCBasicString::Format: an integer, a character or a text. It refers to the
/// text and must not outlive it.
class HOST_API FormatArgument {
 public:
  template <std::signed_integral Int>
  FormatArgument(Int value) : value_(static_cast<std::int64_t>(value)) {}
  template <std::unsigned_integral Int>
  FormatArgument(Int value) : value_(static_cast<std::uint64_t>(value)) {}
  FormatArgument(char value) : value_(static_cast<char16_t>(static_cast<unsigned char>(value))) {}
  FormatArgument(char16_t value) : value_(value) {}
  FormatArgument(std::u16string_view value) : value_(value) {}
  FormatArgument(const char16_t* value) : value_(std::u16string_view(value)) {}
  FormatArgument(const std::u16string& value) : value_(std::u16string_view(value)) {}
  FormatArgument(const XCBasicString& value);

  /// The argument as the conversion @p conversion ('s', 'd', 'u', 'c') writes it. An argument of
  /// another type than the conversion asks for is written in its own form.
  std::u16string text(char16_t conversion) const;
  bool isNumber() const { return value_.index() < 2; }

 private:
  std::variant<std::int64_t, std::uint64_t, char16_t, std::u16string_view> value_;
};

}  // namespace host

/// The host's wide string: UTF-16 code units, compared ordinally and with case.
class HOST_API XCBasicString {
 public:
  XCBasicString() = default;
  XCBasicString(const char16_t* text) : text_(text) {}
  XCBasicString(std::u16string_view text) : text_(text) {}
  XCBasicString(std::u16string text) : text_(std::move(text)) {}

  /// From UTF-8; each malformed byte sequence becomes one U+FFFD.
  static XCBasicString FromUtf8(std::string_view utf8);

  /// Fills the placeholders of @p format, in order, with @p arguments: %s, %ls, %d, %u and %c with
  /// an optional width and zero padding ("%02d"), %% for a percent sign. The arguments are
  /// checked by type: a placeholder without an argument yields nothing, an unknown one stays as it
  /// stands. Never pass a text that a user typed as the format.
  template <class... Arguments>
  static XCBasicString Format(std::u16string_view format, const Arguments&... arguments) {
    return FormatList(format, {host::FormatArgument(arguments)...});
  }
  static XCBasicString FormatList(std::u16string_view format,
                                  std::initializer_list<host::FormatArgument> arguments);

  std::size_t Length() const { return text_.size(); }
  bool IsEmpty() const { return text_.empty(); }
  void Empty() { text_.clear(); }
  const char16_t* c_str() const { return text_.c_str(); }
  const std::u16string& str() const { return text_; }
  operator std::u16string_view() const { return text_; }
  char16_t operator[](std::size_t index) const { return text_[index]; }

  /// @p count units from @p first; what lies beyond the end is left out.
  XCBasicString Mid(std::size_t first, std::size_t count = std::u16string::npos) const;
  XCBasicString Left(std::size_t count) const { return Mid(0, count); }

  /// The value of the leading decimal digits after blanks and an optional sign, 0 when there are
  /// none; held at the limits of int when it lies beyond them.
  int ToInt() const;

  std::string ToUtf8() const;

  XCBasicString& operator+=(std::u16string_view more) {
    text_ += more;
    return *this;
  }
  friend XCBasicString operator+(XCBasicString left, std::u16string_view right) {
    left += right;
    return left;
  }
  friend bool operator==(const XCBasicString& a, const XCBasicString& b) = default;
  friend std::strong_ordering operator<=>(const XCBasicString& a, const XCBasicString& b) = default;
  friend bool operator==(const XCBasicString& a, const char16_t* b) { return a.text_ == b; }
  friend bool operator==(const XCBasicString& a, std::u16string_view b) { return a.text_ == b; }
  friend bool operator==(const XCBasicString& a, const std::u16string& b) { return a.text_ == b; }

 private:
  std::u16string text_;
};

namespace host {

/// The value of the leading decimal digits of @p text, as XCBasicString::ToInt.
HOST_API int toInt(std::u16string_view text);

/// Decimal text of an integer.
HOST_API XCBasicString decimal(std::int64_t value);

}  // namespace host
