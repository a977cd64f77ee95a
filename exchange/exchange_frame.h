#pragma once

#include <optional>

#include "exchange/sections.h"
#include "host/dialogs/base_dlg.h"
#include "host/dialogs/device_cfg.h"
#include "host/time/date_time.h"
#include "host/xml/xml_document.h"

// The frame that every exchange with a controller shares: requests and replies, the rule of
// sending only what changed, the messages of failures, and the timestamp of activation dates.

namespace lamp {

/// The commands of the controller.
enum class Command : int {
  readSection = 1,
  writeSection = 2,
  setClock = 9,
  identify = 29,
  searchWrite = 30,
  uploadFirmware = 52,
  readNodeFile = 58,
};

/// Empties @p document and makes it the request for a section: root `deviceCfg` with one empty
/// child. Returns the child.
XmlDocument::XmlNode& prepareRead(XmlDocument& document, host::XmlName section);

/// The section of a reply, at "ZelLamp/" and its code below the root; none when it is not there.
XmlDocument::XmlNode* sectionOf(XmlDocument& reply, host::XmlName section);
const XmlDocument::XmlNode* sectionOf(const XmlDocument& reply, host::XmlName section);

/// Empties @p document and makes it a write: root `deviceCfg` with one child, which is returned.
XmlDocument::XmlNode& beginWrite(XmlDocument& document, host::XmlName section);

/// Sets the attribute only when the two texts differ.
void putIfChanged(XmlDocument::XmlNode& element, host::XmlName attribute,
                  const XCBasicString& currentText, const XCBasicString& loadedText);

/// Ends a field page's write: an element without attributes counts as written and nothing is sent;
/// otherwise the result of @p page's writeCfg.
bool finishWrite(XCBaseDeviceCfg& page, const XmlDocument::XmlNode& element);

/// Sends until it succeeds or the user gives up: each failure is shown with Retry and Cancel. False
/// after Cancel, and, without a message, when the user cancelled the exchange.
bool sendWithRetry(XCBaseDlg& dialog, Command command, XmlDocument& document);

/// Sends once; a failure is shown with OK.
bool sendOnce(XCBaseDlg& dialog, Command command, XmlDocument& document);

/// Reads once; a failure shows the error's own text, or @p withoutText when it has none. Nothing is
/// shown when the user cancelled.
bool readWithMessage(XCBaseDlg& dialog, Command command, XmlDocument& document,
                     host::TextId withoutText = host::TextId::ReadFailed);

/// What a failed command shows: the error's text, a blank line when there is one, and text 329.
XCBasicString failureText(const XCBaseDlg& dialog);

/// "S" in summer time, "W" otherwise, for the moment itself: summer time runs from the last Sunday
/// of March at 03:00 to the last Sunday of October at 02:00. The two hours differ deliberately:
/// the controller counts by the clock before each change. For valid dates.
char16_t seasonLetter(const XCDateTime& moment);

/// A moment as the controller takes it: year, month, day, hour, minute and second as 14 digits, and
/// the season letter.
XCBasicString timestamp(const XCDateTime& moment);

/// The moment that a masked date-time field holds: @p maskedText is its 14 digits without
/// separators, day, month, year, hour, minute, second. None when that is no valid date.
std::optional<XCDateTime> readMaskedDate(std::u16string_view maskedText);

/// The timestamp of a masked date-time field's 14 digits; empty when they are no valid date.
XCBasicString activationStamp(std::u16string_view maskedText);

}  // namespace lamp
