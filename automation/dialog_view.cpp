#include "automation/dialog_view.h"

#include <cstdio>

namespace automation {
namespace {

using host::Control;
using host::ControlKind;
using Text = std::u16string_view;

constexpr host::Colour DefaultColour{};  // texts are black

const char* wordFor(ControlKind kind) {
  switch (kind) {
    case ControlKind::label:
      return "label";
    case ControlKind::group:
      return "group";
    case ControlKind::button:
      return "button";
    case ControlKind::radio:
      return "radio";
    case ControlKind::check:
      return "check";
    case ControlKind::edit:
      return "edit";
    case ControlKind::combo:
      return "combo";
    case ControlKind::list:
      return "list";
    case ControlKind::ip:
      return "ip";
    case ControlKind::year:
      return "year";
    case ControlKind::image:
      return "image";
  }
  return "label";
}

std::string hex(host::Colour colour) {
  char text[8];
  std::snprintf(text, sizeof text, "#%02X%02X%02X", unsigned{colour.red}, unsigned{colour.green},
                unsigned{colour.blue});
  return text;
}

std::string day(const XCDateTime& date) {
  char text[48];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d", date.Year(), date.Month(), date.Day());
  return text;
}

void describe(JsonWriter& out, const host::EditControl& edit) {
  out.member("limit", edit.limit()).member("digitsOnly", edit.isDigitsOnly());
  out.member("password", edit.isPassword()).member("readOnly", edit.isReadOnly());
  out.name("selection").beginList();
  out.value(edit.selectionFrom()).value(edit.selectionTo()).endList();
}

void describe(JsonWriter& out, const host::ComboControl& combo) {
  out.name("items").beginList();
  for (const host::ComboControl::Item& item : combo.items()) out.value(Text(item.text));
  out.endList().name("selected");
  if (combo.selected())
    out.value(*combo.selected());
  else
    out.null();
}

void describeRow(JsonWriter& out, const host::ListControl& list, std::size_t row) {
  out.beginObject().name("cells").beginList();
  for (std::size_t column = 0; column < list.columns().size(); ++column)
    out.value(Text(list.cell(row, column)));
  out.endList().member("selected", list.isSelected(row));
  if (const auto colour = list.colour(row); colour && *colour != DefaultColour)
    out.member("colour", hex(*colour));
  if (const auto swatch = list.swatch(row)) out.member("swatch", hex(*swatch));
  out.endObject();
}

void describe(JsonWriter& out, const host::ListControl& list) {
  out.name("columns").beginList();
  for (const host::ListColumn& column : list.columns()) out.value(Text(column.caption));
  out.endList().name("rows").beginList();
  for (std::size_t row = 0; row < list.rowCount(); ++row) describeRow(out, list, row);
  out.endList().name("sorted");
  if (const auto sorted = list.sorted())
    out.beginObject()
        .member("column", sorted->column)
        .member("descending", sorted->descending)
        .endObject();
  else
    out.null();
}

void describe(JsonWriter& out, const XCCalendar& calendar) {
  const auto first = calendar.FirstEnabledDay();
  const auto last = calendar.LastEnabledDay();
  if (!first || !last) {
    out.name("from").null().name("to").null().name("days").beginObject().endObject();
    return;
  }
  out.member("from", day(*first)).member("to", day(*last));
  out.name("days").beginObject();
  for (XCDateTime at = *first; at <= *last; at = at.AddDays(1)) {
    const XCCalendar::DayType* type = calendar.TypeOf(at);
    out.member(day(at), type ? Text(type->id) : Text());
  }
  out.endObject();
}

// What a person reads in the control.
XCBasicString shownText(const Control& control) {
  if (const auto* edit = dynamic_cast<const host::EditControl*>(&control);
      edit && edit->isPassword())
    return XCBasicString(std::u16string(edit->text().Length(), u'*'));
  if (const auto* combo = dynamic_cast<const host::ComboControl*>(&control))
    return combo->selected() ? combo->items()[*combo->selected()].text : XCBasicString();
  return control.text();
}

void describeControl(JsonWriter& out, const Control& control) {
  out.beginObject().name("id");
  writeControlId(out, control);
  out.member("name", control.name()).member("kind", wordFor(control.kind()));
  out.member("text", Text(shownText(control)));
  out.member("enabled", control.isEnabled()).member("visible", control.isVisible());
  if (!control.isEnabled() && !control.disabledReason().IsEmpty())
    out.member("reason", Text(control.disabledReason()));
  switch (control.kind()) {
    case ControlKind::edit:
      describe(out, dynamic_cast<const host::EditControl&>(control));
      break;
    case ControlKind::combo:
      describe(out, dynamic_cast<const host::ComboControl&>(control));
      break;
    case ControlKind::check:
    case ControlKind::radio:
      out.member("on", dynamic_cast<const host::CheckControl&>(control).isOn());
      break;
    case ControlKind::list:
      describe(out, dynamic_cast<const host::ListControl&>(control));
      break;
    case ControlKind::year:
      describe(out, dynamic_cast<const XCCalendar&>(control));
      break;
    case ControlKind::button:
    case ControlKind::image:
      out.member("image", dynamic_cast<const host::ImageControl&>(control).image());
      break;
    default:
      break;
  }
  out.endObject();
}

}  // namespace

void writeControlId(JsonWriter& out, const Control& control) {
  if (control.hasNumber())
    out.value(control.id());
  else
    out.value(control.name());
}

void describeDialog(JsonWriter& out, const XCBaseDlg& dialog) {
  out.name("controls").beginList();
  for (const auto& control : dialog.Controls()) describeControl(out, *control);
  out.endList().name("focus");
  if (dialog.Focus() != nullptr)
    writeControlId(out, *dialog.Focus());
  else
    out.null();
}

}  // namespace automation
