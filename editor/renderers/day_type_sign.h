#pragma once

#include <QtCore/QString>

#include "host/ui/controls/calendar_control.h"

namespace editor {

/// The one or two characters that stand for a day type on its days: the number at the end of its
/// name, by which people know it, or its identifier when the name ends otherwise.
QString dayTypeSign(const XCCalendar::DayType& type);

/// What a day type is called: its name, or its identifier when it has none.
QString dayTypeName(const XCCalendar::DayType& type);

}  // namespace editor
