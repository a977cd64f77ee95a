#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/export.h"
#include "host/text/basic_string.h"

namespace host {

/// A value of an element or attribute as it lies in its document: 16-bit text, kept in 8 bits
/// where it is ASCII. It refers to the document (or a copy of it) and must not outlive both.
class HOST_API XmlText {
 public:
  XmlText() = default;
  /// @p ascii must hold 7-bit characters only.
  static XmlText narrow(std::string_view ascii) {
    return XmlText(ascii.data(), static_cast<std::uint32_t>(ascii.size()));
  }
  static XmlText wide(std::u16string_view text) {
    return XmlText(text.data(), static_cast<std::uint32_t>(text.size()) | WideBit);
  }
  /// The two words that a document stores.
  XmlText(const void* data, std::uint32_t sizeAndWidth) : data_(data), size_(sizeAndWidth) {}

  const void* data() const { return data_; }
  std::uint32_t sizeAndWidth() const { return size_; }

  std::size_t size() const { return size_ & ~WideBit; }
  bool empty() const { return size() == 0; }
  bool isWide() const { return (size_ & WideBit) != 0; }
  std::string_view narrowView() const { return {static_cast<const char*>(data_), size()}; }
  std::u16string_view wideView() const { return {static_cast<const char16_t*>(data_), size()}; }

  char16_t operator[](std::size_t index) const {
    return isWide() ? wideView()[index]
                    : static_cast<char16_t>(static_cast<unsigned char>(narrowView()[index]));
  }

  XCBasicString toString() const;
  void appendUtf8(std::string& out) const;
  void appendTo(std::u16string& out) const;

  /// Ordinal comparison of the code units: negative, 0 or positive.
  int compare(XmlText other) const;
  /// The value of the leading decimal digits, as XCBasicString::ToInt.
  int toInt() const;

  friend bool operator==(XmlText a, XmlText b) { return a.equals(b); }
  friend bool operator==(XmlText a, std::u16string_view b) { return a.equals(wide(b)); }

  static constexpr std::uint32_t WideBit = 0x80000000U;
  static constexpr std::size_t MaxSize = 0x7FFFFFFF;

 private:
  // Most texts that are compared differ in their size or lie in the same place.
  bool equals(XmlText other) const {
    if (size() != other.size()) return false;
    return (data_ == other.data_ && size_ == other.size_) || hasSameUnits(other);
  }
  bool hasSameUnits(XmlText other) const;

  const void* data_ = nullptr;
  std::uint32_t size_ = 0;
};

}  // namespace host
