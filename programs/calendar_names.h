#pragma once

#include "host/xml/xml_name.h"

// The names of a calendar file's elements, once, and the device element's that names a calendar.

namespace lamp::calendar {

inline const host::XmlName Calendar("calendar");
inline const host::XmlName Revision("revision");
inline const host::XmlName Name("name");
inline const host::XmlName HasModule("hasIOmodule");
inline const host::XmlName Days("days");
inline const host::XmlName Day("day");
inline const host::XmlName Number("num");
inline const host::XmlName Year("year");

}  // namespace lamp::calendar
