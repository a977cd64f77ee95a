#include "host/services/identity.h"

#include <locale.h>
#include <wctype.h>

#include <algorithm>
#include <cctype>
#include <iterator>
#include <string>

#include "host/services/services.h"
#include "host/text/utf.h"

namespace {

constexpr std::size_t MaxIdCharacters = 64;

const XmlDocument::XmlNode* editedDevice = nullptr;

// The character classes of Unicode, whatever language the user's session speaks.
locale_t unicodeLocale() {
  static const locale_t unicode = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  return unicode;
}

bool isLetterOrDigit(char32_t c) {
  if (unicodeLocale() == nullptr) return c < 0x80 && std::isalnum(static_cast<int>(c)) != 0;
  return ::iswalnum_l(static_cast<wint_t>(c), unicodeLocale()) != 0;
}

char32_t folded(char32_t c) {
  if (unicodeLocale() == nullptr)
    return c < 0x80 ? static_cast<char32_t>(std::tolower(static_cast<int>(c))) : c;
  return static_cast<char32_t>(::towlower_l(static_cast<wint_t>(c), unicodeLocale()));
}

}  // namespace

std::u32string host::foldedText(std::u16string_view text) {
  std::u32string out;
  for (std::size_t at = 0; at < text.size();) out += folded(nextCodePoint(text, at));
  return out;
}

XCGuid NewGUID() {
  XCGuid guid{host::services().ids().next()};
  guid.bytes[6] = static_cast<std::uint8_t>((guid.bytes[6] & 0x0F) | 0x40);
  guid.bytes[8] = static_cast<std::uint8_t>((guid.bytes[8] & 0x3F) | 0x80);
  return guid;
}

XCBasicString guidtow(const XCGuid& guid) {
  constexpr char16_t Hex[] = u"0123456789ABCDEF";
  std::u16string text = u"{";
  for (std::size_t i = 0; i < guid.bytes.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += u'-';
    text += Hex[guid.bytes[i] >> 4];
    text += Hex[guid.bytes[i] & 15];
  }
  text += u'}';
  return XCBasicString(std::move(text));
}

std::string EncodeBase64(std::string_view bytes) {
  constexpr char Alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  const auto byteAt = [&](std::size_t i) {
    return i < bytes.size() ? static_cast<unsigned>(static_cast<unsigned char>(bytes[i])) : 0U;
  };
  // Made at its full size at once and filled in place: a firmware image is many megabytes.
  std::string out((bytes.size() + 2) / 3 * 4, '=');
  char* at = out.data();
  for (std::size_t i = 0; i < bytes.size(); i += 3, at += 4) {
    const unsigned group = byteAt(i) << 16 | byteAt(i + 1) << 8 | byteAt(i + 2);
    at[0] = Alphabet[group >> 18];
    at[1] = Alphabet[(group >> 12) & 63];
    if (i + 1 < bytes.size()) at[2] = Alphabet[(group >> 6) & 63];
    if (i + 2 < bytes.size()) at[3] = Alphabet[group & 63];
  }
  return out;
}

std::string Utf16ToUtf8(std::u16string_view text) {
  return host::toUtf8(text);
}

bool IsValidId(std::u16string_view text, bool allowBlanks) {
  std::size_t characters = 0;
  bool onlyDots = true;
  bool malformed = false;
  char32_t last = 0;
  for (std::size_t at = 0; at < text.size(); ++characters) {
    last = host::nextCodePoint(text, at, &malformed);
    const bool blank = last == U' ';
    if (malformed || (blank && (!allowBlanks || characters == 0))) return false;
    if (!blank && last != U'_' && last != U'-' && last != U'.' && !isLetterOrDigit(last))
      return false;
    onlyDots = onlyDots && last == U'.';
  }
  return characters >= 1 && characters <= MaxIdCharacters && last != U' ' && !onlyDots;
}

bool IsNameAllowed(std::u16string_view name, const XmlDocument::XmlNode* commSystem) {
  if (commSystem == nullptr) return true;
  const std::u32string wanted = host::foldedText(name);
  for (const XmlDocument::XmlNode& device : commSystem->Children())
    if (&device != editedDevice && host::foldedText(device.Value("name")) == wanted) return false;
  return true;
}

bool host::isDeviceName(std::u16string_view name) {
  static const std::u32string reserved[] = {U"con", U"prn", U"aux", U"nul"};
  std::u32string stem = foldedText(name.substr(0, name.find(u'.')));
  while (!stem.empty() && stem.back() == U' ') stem.pop_back();
  if (std::find(std::begin(reserved), std::end(reserved), stem) != std::end(reserved)) return true;
  return stem.size() == 4 && (stem.starts_with(U"com") || stem.starts_with(U"lpt")) &&
         stem.back() >= U'1' && stem.back() <= U'9';
}

EditedDevice::EditedDevice(const XmlDocument::XmlNode* device) : before_(editedDevice) {
  editedDevice = device;
}

EditedDevice::~EditedDevice() {
  editedDevice = before_;
}
