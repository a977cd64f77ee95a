#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "host/export.h"
#include "host/text/basic_string.h"
#include "host/xml/xml_holder.h"

using XCWideChar = char16_t;

/// A globally unique id, RFC 9562 version 4.
struct XCGuid {
  std::array<std::uint8_t, 16> bytes{};
};

/// A new id from the program's source of ids.
HOST_API XCGuid NewGUID();

/// The braced text form, "{01234567-89AB-4CDE-8F01-23456789ABCD}".
HOST_API XCBasicString guidtow(const XCGuid& guid);

/// Base64 of RFC 4648, with padding and without line breaks.
HOST_API std::string EncodeBase64(std::string_view bytes);

/// The UTF-8 form of wide text; an unpaired surrogate becomes U+FFFD.
HOST_API std::string Utf16ToUtf8(std::u16string_view text);

/// Whether a text may name something that is also a file: 1 to 64 characters; letters and digits of
/// any script, "_", "-", ".", and, when @p allowBlanks, blanks, but none at either end; not only
/// dots.
HOST_API bool IsValidId(std::u16string_view text, bool allowBlanks);

/// Whether no device below @p commSystem has the name, compared without
/// case. The device whose dialog is open does not count (see
/// EditedDevice).
HOST_API bool IsNameAllowed(std::u16string_view name, const XmlDocument::XmlNode* commSystem);

namespace host {

/// The characters of a text with their case taken away, whatever language the session speaks: two
/// texts that differ only in case give the same.
HOST_API std::u32string foldedText(std::u16string_view text);

/// Whether a file of this name, with any ending, would be a device on some system: "CON",
/// "nul.txt", "COM1". Such names are used nowhere, so that a folder can be carried from one system
/// to another.
HOST_API bool isDeviceName(std::u16string_view name);

}  // namespace host

/// While it lives, IsNameAllowed leaves @p device out of the comparison: a device may change the
/// case of its own name.
class HOST_API EditedDevice {
 public:
  explicit EditedDevice(const XmlDocument::XmlNode* device);
  EditedDevice(const EditedDevice&) = delete;
  EditedDevice& operator=(const EditedDevice&) = delete;
  ~EditedDevice();

 private:
  host::ConstXmlAnchor before_;
};
