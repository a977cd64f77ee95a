#include "editor/renderers/day_type_sign.h"

#include "editor/qt_text.h"

namespace editor {
namespace {

constexpr qsizetype LongestSign = 2;

}  // namespace

QString dayTypeSign(const XCCalendar::DayType& type) {
  const QString name = qtText(type.name);
  qsizetype from = name.size();
  while (from > 0 && name[from - 1].isDigit()) --from;
  const QString number = name.mid(from);
  if (!number.isEmpty() && number.size() <= LongestSign) return number;
  return qtText(type.id).left(LongestSign);
}

QString dayTypeName(const XCCalendar::DayType& type) {
  return type.name.IsEmpty() ? caption(host::TextId::DayType) + " " + qtText(type.id)
                             : qtText(type.name);
}

}  // namespace editor
