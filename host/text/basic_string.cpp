#include "host/text/basic_string.h"

#include <algorithm>
#include <limits>

#include "host/text/utf.h"

namespace host {
namespace {

std::u16string widen(const std::string& ascii) {
  return {ascii.begin(), ascii.end()};
}

struct Placeholder {
  bool zeroPadded = false;
  std::size_t width = 0;
  char16_t conversion = 0;
  std::size_t end = 0;
};

constexpr std::size_t WidestField = 4096;

// Reads what follows a percent sign at @p at; conversion 0 when it is no placeholder.
Placeholder readPlaceholder(std::u16string_view format, std::size_t at) {
  Placeholder found;
  if (at < format.size() && format[at] == u'0') {
    found.zeroPadded = true;
    ++at;
  }
  while (at < format.size() && format[at] >= u'0' && format[at] <= u'9') {
    found.width = std::min(found.width * 10 + std::size_t(format[at] - u'0'), WidestField);
    ++at;
  }
  if (at < format.size() && format[at] == u'l') ++at;
  if (at < format.size() && std::u16string_view(u"sduc").find(format[at]) != std::u16string::npos) {
    found.conversion = format[at];
    found.end = at + 1;
  }
  return found;
}

void appendPadded(std::u16string& out, const std::u16string& text, const Placeholder& place,
                  bool number) {
  const std::size_t missing = place.width > text.size() ? place.width - text.size() : 0;
  const bool zeros = place.zeroPadded && number;
  const bool sign = zeros && !text.empty() && text.front() == u'-';
  if (sign) out += u'-';
  out.append(missing, zeros ? u'0' : u' ');
  out.append(text, sign ? 1 : 0);
}

}  // namespace

FormatArgument::FormatArgument(const XCBasicString& value) : value_(std::u16string_view(value)) {}

std::u16string FormatArgument::text(char16_t conversion) const {
  if (const auto* value = std::get_if<std::int64_t>(&value_)) {
    if (conversion == u'u') return widen(std::to_string(static_cast<std::uint32_t>(*value)));
    if (conversion == u'c') return std::u16string(1, static_cast<char16_t>(*value));
    return widen(std::to_string(*value));
  }
  if (const auto* value = std::get_if<std::uint64_t>(&value_)) return widen(std::to_string(*value));
  if (const auto* value = std::get_if<char16_t>(&value_)) {
    if (conversion == u'd' || conversion == u'u') return widen(std::to_string(int(*value)));
    return std::u16string(1, *value);
  }
  return std::u16string(std::get<std::u16string_view>(value_));
}

int toInt(std::u16string_view text) {
  std::size_t at = 0;
  while (at < text.size() && (text[at] == u' ' || (text[at] >= u'\t' && text[at] <= u'\r'))) ++at;
  const bool negative = at < text.size() && text[at] == u'-';
  if (at < text.size() && (text[at] == u'-' || text[at] == u'+')) ++at;
  constexpr std::int64_t Least = std::numeric_limits<int>::min();
  constexpr std::int64_t Most = std::numeric_limits<int>::max();
  std::int64_t value = 0;
  for (; at < text.size() && text[at] >= u'0' && text[at] <= u'9'; ++at)
    value = std::min<std::int64_t>(value * 10 + (text[at] - u'0'), Most + 1);
  return static_cast<int>(std::clamp(negative ? -value : value, Least, Most));
}

XCBasicString decimal(std::int64_t value) {
  return XCBasicString(widen(std::to_string(value)));
}

}  // namespace host

XCBasicString XCBasicString::FromUtf8(std::string_view utf8) {
  return XCBasicString(host::toUtf16(utf8));
}

XCBasicString XCBasicString::FormatList(std::u16string_view format,
                                        std::initializer_list<host::FormatArgument> arguments) {
  std::u16string out;
  auto argument = arguments.begin();
  for (std::size_t at = 0; at < format.size();) {
    if (format[at] != u'%') {
      out += format[at++];
      continue;
    }
    if (at + 1 < format.size() && format[at + 1] == u'%') {
      out += u'%';
      at += 2;
      continue;
    }
    const host::Placeholder place = host::readPlaceholder(format, at + 1);
    if (place.conversion == 0) {
      out += format[at++];
      continue;
    }
    if (argument != arguments.end()) {
      host::appendPadded(out, argument->text(place.conversion), place, argument->isNumber());
      ++argument;
    }
    at = place.end;
  }
  return XCBasicString(std::move(out));
}

XCBasicString XCBasicString::Mid(std::size_t first, std::size_t count) const {
  if (first >= text_.size()) return {};
  return XCBasicString(text_.substr(first, count));
}

int XCBasicString::ToInt() const {
  return host::toInt(text_);
}

std::string XCBasicString::ToUtf8() const {
  return host::toUtf8(text_);
}
