#pragma once

#include <optional>

#include "host/time/date_time.h"
#include "host/xml/xml_document.h"

// A scheduled task as it lies in its section: the element `TP`, its attributes, and its actions,
// the elements `TpPro` below it.

namespace lamp {

namespace task_name {
inline const host::XmlName Task("TP");
inline const host::XmlName Number("TpTar");
inline const host::XmlName Start("TpHi");
inline const host::XmlName Period("TpPer");
inline const host::XmlName FillHoles("TpCompl");
inline const host::XmlName Priority("TpPrio");
inline const host::XmlName Action("TpPro");
inline const host::XmlName Request("TpReq");
inline const host::XmlName Send("TpSend");
inline const host::XmlName Store("TpStore");
}  // namespace task_name

/// The parts of a task's period that can be chosen, in their order.
enum class PeriodPart { months, days, hours, minutes };

/// Whether a task is listed: one whose period is empty is to be deleted.
bool isListedTask(const XmlDocument::XmlNode& task);

/// The task's start as "day/month/year hour:minute:second"; empty when it does not have the 15
/// characters of a stamp.
XCBasicString taskStart(const XmlDocument::XmlNode& task);
/// Takes the start as the user typed it. A text that is not 19 characters of the form of taskStart
/// empties the start; whether the date exists is left to the controller.
void setTaskStart(XmlDocument::XmlNode& task, const XCBasicString& typed);

/// The number in a part of the task's period, none where there are not two digits.
std::optional<std::size_t> taskPeriod(const XmlDocument::XmlNode& task, PeriodPart part);
/// Replaces one part, 0 to 99, of a period of 14 characters; any other period stays as it is.
void setTaskPeriod(XmlDocument::XmlNode& task, PeriodPart part, int value);

/// The order of two tasks by their numbers, negative, 0 or positive. Numbers have any length; a
/// text that is no number counts as 0.
int compareTaskNumbers(const XmlDocument::XmlNode& a, const XmlDocument::XmlNode& b);

/// The requests of all actions, joined by ",".
XCBasicString taskRequests(const XmlDocument::XmlNode& task);
std::size_t actionCount(const XmlDocument::XmlNode& task);

/// Whether the section, which may be none, holds a task with this number.
bool holdsTask(const XmlDocument::XmlNode* section, const XCBasicString& number);

/// Appends a task that starts at the midnight of @p today and repeats daily, with one action. Its
/// number follows the highest in the section, also among those to be deleted.
void appendTask(XmlDocument::XmlNode& section, const XCDateTime& today);
/// Appends an action that requests the node list, sends and stores it.
void appendAction(XmlDocument::XmlNode& task);

}  // namespace lamp
