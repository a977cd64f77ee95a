#include "pages/binding/date_field.h"

#include <algorithm>

#include "exchange/exchange_frame.h"

namespace lamp {
namespace {

constexpr std::u16string_view Mask = u"DD DD DDDD DD:DD:DD";
constexpr std::u16string_view MaskLayout = u"__/__/____ __:__:__";
constexpr char16_t EmptyPlace = u'0';
constexpr std::u16string_view ValidCharacters = u"1234567890";
constexpr std::size_t StampDigits = 14;

bool isStamp(std::u16string_view text) {
  return text.size() == StampDigits &&
         std::all_of(text.begin(), text.end(), [](char16_t c) { return c >= u'0' && c <= u'9'; });
}

}  // namespace

host::LayoutItem activationBox(int groupId, int editId) {
  return host::layout::box(groupId, {host::layout::control(editId)});
}

std::vector<host::ControlSpec> activationControls(int groupId, int editId) {
  return {host::group(groupId, "activationGroup", host::TextId::DateAndTime),
          host::edit(editId, "activation")};
}

XCBasicString stampAsDate(const XCBasicString& stamp) {
  return XCBasicString::Format(u"%s/%s/%s %s:%s:%s", stamp.Mid(6, 2), stamp.Mid(4, 2),
                               stamp.Mid(0, 4), stamp.Mid(8, 2), stamp.Mid(10, 2),
                               stamp.Mid(12, 2));
}

void DateField::initialise() {
  host::EditControl& edit = dialog_.Edit(editId_);
  edit.setMask({Mask, MaskLayout, EmptyPlace, ValidCharacters});
  edit.setText(XCDateTime::LTC().GetDateTime(1, false, u"/", u":"));
}

void DateField::showStamp(const XCBasicString& stamp) {
  if (isStamp(stamp)) showStampPieces(stamp);
}

void DateField::showStampPieces(const XCBasicString& stamp) {
  dialog_.SetDlgItemText(editId_, stampAsDate(stamp));
}

XCBasicString DateField::stamp() const {
  const host::EditControl& edit = dialog_.Edit(editId_);
  return activationStamp(edit.mask().places(edit.text()));
}

std::optional<XCBasicString> DateField::checkedStamp() {
  if (XCBasicString good = stamp(); !good.IsEmpty()) return good;
  dialog_.MessageBox(fault());
  dialog_.FocusAndSelectAll(editId_);
  return std::nullopt;
}

XCBasicString DateField::fault() const {
  return stamp().IsEmpty() ? XCLoadString(host::TextId::FieldInvalid) : XCBasicString();
}

}  // namespace lamp
