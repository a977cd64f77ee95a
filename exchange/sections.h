#pragma once

#include "host/xml/xml_name.h"

// The names of the exchange with the controller. Every section, element and attribute name that
// more than one page uses stands here, once.

namespace lamp {

namespace section {
inline const host::XmlName GeneralRead("L01");
inline const host::XmlName GeneralWrite("E01");
inline const host::XmlName TasksRead("L02");
inline const host::XmlName TasksWrite("E02");
inline const host::XmlName NodeListRead("L03");
inline const host::XmlName FirmwareWrite("E03");
inline const host::XmlName NodesRead("L04");
inline const host::XmlName NodesWrite("E04");
inline const host::XmlName PowerRead("L05");
inline const host::XmlName PowerWrite("E05");
inline const host::XmlName IntervalProgramsRead("L06");
inline const host::XmlName IntervalProgramsWrite("E06");
inline const host::XmlName AlarmsRead("L07");
inline const host::XmlName AlarmsWrite("E07");
inline const host::XmlName NodeRemovalWrite("E08");
inline const host::XmlName BlacklistWrite("E09");
inline const host::XmlName NodeCommandWrite("E11");
inline const host::XmlName InputsRead("L13");
inline const host::XmlName InputsWrite("E13");
inline const host::XmlName ClockProgramsRead("L17");
inline const host::XmlName ClockProgramsWrite("E17");
inline const host::XmlName ClockWrite("C06");
}  // namespace section

namespace element {
inline const host::XmlName DeviceCfg("deviceCfg");
inline const host::XmlName ZelLamp("ZelLamp");
inline const host::XmlName Node("Node");
inline const host::XmlName Interval("Interval");
}  // namespace element

namespace attribute {
inline const host::XmlName Id("Id");
inline const host::XmlName NodeId("nodeId");
inline const host::XmlName Reference("Reference");
inline const host::XmlName Latitude("latitude");
inline const host::XmlName Longitude("longitude");
inline const host::XmlName Stamp("Fh");
inline const host::XmlName ActivationDate("ActDate");
inline const host::XmlName InputsDetected("InputsDetected");
inline const host::XmlName Date("date");
inline const host::XmlName ControllerAddress("ipCom");
inline const host::XmlName WebServicePort("PortWS");
}  // namespace attribute

}  // namespace lamp
