#include "exchange/exchange_frame.h"

namespace lamp {
namespace {

constexpr std::u16string_view BlankLine = u"\r\n\r\n";

int number(Command command) {
  return static_cast<int>(command);
}

XmlDocument::XmlNode& requestFor(XmlDocument& document, host::XmlName section) {
  return document.Create(element::DeviceCfg).NewChild(section);
}

// Weekdays count from 1 = Sunday.
int lastSundayOfMarch(int year) {
  return 31 - (XCDateTime(year, 3, 31).DayOfWeek() - 1);
}
int lastSundayOfOctober(int year) {
  return 32 - XCDateTime(year, 10, 31).DayOfWeek();
}

}  // namespace

XmlDocument::XmlNode& prepareRead(XmlDocument& document, host::XmlName section) {
  return requestFor(document, section);
}

const XmlDocument::XmlNode* sectionOf(const XmlDocument& reply, host::XmlName section) {
  if (reply.Root() == nullptr) return nullptr;
  const XmlDocument::XmlNode* lampData = reply.Root()->Node(element::ZelLamp.text());
  return lampData == nullptr ? nullptr : lampData->Node(section.text());
}

XmlDocument::XmlNode* sectionOf(XmlDocument& reply, host::XmlName section) {
  return const_cast<XmlDocument::XmlNode*>(
      sectionOf(static_cast<const XmlDocument&>(reply), section));
}

XmlDocument::XmlNode& beginWrite(XmlDocument& document, host::XmlName section) {
  return requestFor(document, section);
}

void putIfChanged(XmlDocument::XmlNode& element, host::XmlName attribute,
                  const XCBasicString& currentText, const XCBasicString& loadedText) {
  if (currentText != loadedText) element.setAttribute(attribute, currentText);
}

bool finishWrite(XCBaseDeviceCfg& page, const XmlDocument::XmlNode& element) {
  return element.attributeCount() == 0 || page.writeCfg(false);
}

XCBasicString failureText(const XCBaseDlg& dialog) {
  XCBasicString text = dialog.getErrorMsg();
  if (!text.IsEmpty()) text += BlankLine;
  text += XCLoadString(host::TextId::CommandNotAccepted);
  return text;
}

bool sendWithRetry(XCBaseDlg& dialog, Command command, XmlDocument& document) {
  while (!dialog.putCommand(number(command), &document, false)) {
    if (dialog.silentFailure()) return false;
    if (dialog.MessageBox(failureText(dialog), host::MessageButtons::retryCancel) != IDRETRY)
      return false;
  }
  return true;
}

bool sendOnce(XCBaseDlg& dialog, Command command, XmlDocument& document) {
  if (dialog.putCommand(number(command), &document, false)) return true;
  if (!dialog.silentFailure()) dialog.MessageBox(failureText(dialog));
  return false;
}

bool readWithMessage(XCBaseDlg& dialog, Command command, XmlDocument& document,
                     host::TextId withoutText) {
  if (dialog.getCommand(number(command), &document, true)) return true;
  if (dialog.silentFailure()) return false;
  dialog.MessageBox(dialog.getErrorMsg().IsEmpty() ? XCLoadString(withoutText)
                                                   : dialog.getErrorMsg());
  return false;
}

char16_t seasonLetter(const XCDateTime& moment) {
  const int year = moment.Year();
  const XCDateTime summerBegins(year, 3, lastSundayOfMarch(year), 3);
  const XCDateTime summerEnds(year, 10, lastSundayOfOctober(year), 2);
  return moment < summerBegins || moment >= summerEnds ? u'W' : u'S';
}

XCBasicString timestamp(const XCDateTime& moment) {
  return XCBasicString::Format(u"%04d%02d%02d%02d%02d%02d%c", moment.Year(), moment.Month(),
                               moment.Day(), moment.Hour(), moment.Minute(), moment.Second(),
                               seasonLetter(moment));
}

std::optional<XCDateTime> readMaskedDate(std::u16string_view maskedText) {
  constexpr std::size_t Digits = 14;
  if (maskedText.size() != Digits) return std::nullopt;
  const auto piece = [&](std::size_t from, std::size_t count) {
    return maskedText.substr(from, count);
  };
  const XCBasicString joined =
      XCBasicString::Format(u"%s/%s/%s %s:%s:%s", piece(0, 2), piece(2, 2), piece(4, 4),
                            piece(8, 2), piece(10, 2), piece(12, 2));
  XCDateTime moment;
  moment.SetDateTime(joined, 1, u':');
  if (!moment.isValidDate()) return std::nullopt;
  return moment;
}

XCBasicString activationStamp(std::u16string_view maskedText) {
  const std::optional<XCDateTime> moment = readMaskedDate(maskedText);
  return moment ? timestamp(*moment) : XCBasicString();
}

}  // namespace lamp
