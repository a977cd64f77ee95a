#include "host/xml/xml_text.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "host/text/utf.h"

namespace host {

XCBasicString XmlText::toString() const {
  if (isWide()) return XCBasicString(wideView());
  std::u16string out;
  appendTo(out);
  return XCBasicString(std::move(out));
}

void XmlText::appendUtf8(std::string& out) const {
  if (isWide())
    host::appendUtf8(out, wideView());
  else
    out += narrowView();
}

void XmlText::appendTo(std::u16string& out) const {
  if (isWide()) {
    out += wideView();
    return;
  }
  const std::string_view ascii = narrowView();
  const std::size_t before = out.size();
  out.resize(before + ascii.size());
  std::transform(ascii.begin(), ascii.end(), out.begin() + static_cast<std::ptrdiff_t>(before),
                 [](char c) { return static_cast<char16_t>(static_cast<unsigned char>(c)); });
}

// Of texts of one size.
bool XmlText::hasSameUnits(XmlText other) const {
  if (empty()) return true;
  if (isWide() == other.isWide())
    return std::memcmp(data_, other.data_, isWide() ? size() * 2 : size()) == 0;
  const auto [wide, narrow] = isWide() ? std::pair(*this, other) : std::pair(other, *this);
  const std::u16string_view units = wide.wideView();
  return std::equal(units.begin(), units.end(), narrow.narrowView().begin(),
                    [](char16_t a, char b) { return a == static_cast<unsigned char>(b); });
}

int XmlText::compare(XmlText other) const {
  if (!isWide() && !other.isWide()) return narrowView().compare(other.narrowView());
  const std::size_t common = std::min(size(), other.size());
  for (std::size_t i = 0; i < common; ++i) {
    const int difference = int((*this)[i]) - int(other[i]);
    if (difference != 0) return difference;
  }
  return size() < other.size() ? -1 : int(size() > other.size());
}

int XmlText::toInt() const {
  if (!isWide() && size() <= 9) {
    int number = 0;
    const std::string_view digits = narrowView();
    std::size_t at = 0;
    while (at < digits.size() && digits[at] >= '0' && digits[at] <= '9')
      number = 10 * number + (digits[at++] - '0');
    if (at == digits.size() && at > 0) return number;
  }
  // Numbers are short: what lies beyond 32 characters can't change a value held at int's limits
  // unless it is padded with more blanks or zeros than anyone writes.
  char16_t buffer[32];
  if (size() > std::size(buffer)) return toString().ToInt();
  for (std::size_t i = 0; i < size(); ++i) buffer[i] = (*this)[i];
  return host::toInt({buffer, size()});
}

}  // namespace host
