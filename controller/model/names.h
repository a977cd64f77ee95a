#pragma once

// Names of elements and attributes on the wire, each once. Those of a section whose attributes are
// only ever listed (the general section) stand in that section's table of rules.
namespace lamp::controller::names {

inline constexpr const char* kDeviceCfg = "deviceCfg";
inline constexpr const char* kAdvancedCfg = "advancedCfg";
inline constexpr const char* kMain = "main";
inline constexpr const char* kZelLamp = "ZelLamp";
inline constexpr const char* kId = "Id";

inline constexpr const char* kFh = "Fh";
inline constexpr const char* kActDate = "ActDate";
inline constexpr const char* kType = "type";

inline constexpr const char* kGeneral = "L01";
inline constexpr const char* kTasks = "L02";
inline constexpr const char* kNodeList = "L03";
inline constexpr const char* kNodeTable = "L04";
inline constexpr const char* kNodePower = "L05";
inline constexpr const char* kIntervalPrograms = "L06";
inline constexpr const char* kAlarmThresholds = "L07";
inline constexpr const char* kLastRemoval = "L08";
inline constexpr const char* kAlarmReport = "L09";
inline constexpr const char* kLastSelection = "L11";
inline constexpr const char* kInputsOutputs = "L13";
inline constexpr const char* kUsageReport = "L15";
inline constexpr const char* kClockPrograms = "L17";
inline constexpr const char* kTaskCommand = "E02";
inline constexpr const char* kClockCommand = "C06";
inline constexpr const char* kDate = "date";

// General section.
inline constexpr const char* kModel = "Mod";
inline constexpr const char* kFirmwareVersion = "Vf";
inline constexpr const char* kInputsDetected = "InputsDetected";
inline constexpr const char* kTimeZone = "TimeZone";
inline constexpr const char* kAddress = "ipCom";
inline constexpr const char* kPort = "PortWS";
inline constexpr const char* kMailUser = "mailUser";
inline constexpr const char* kMailPassword = "mailPassword";

// Firmware.
inline constexpr const char* kFirmwareCommand = "E03";
inline constexpr const char* kFirmwareFile = "firmwareFile";
inline constexpr const char* kFirmware = "Firmware";
inline constexpr const char* kNewVersion = "version";

// Tasks.
inline constexpr const char* kTask = "TP";
inline constexpr const char* kTaskNumber = "TpTar";
inline constexpr const char* kTaskStart = "TpHi";
inline constexpr const char* kTaskPeriod = "TpPer";
inline constexpr const char* kTaskFillHoles = "TpCompl";
inline constexpr const char* kTaskNode = "TpNode";
inline constexpr const char* kTaskPriority = "TpPrio";
inline constexpr const char* kAction = "TpPro";
inline constexpr const char* kActionRequest = "TpReq";
inline constexpr const char* kActionSend = "TpSend";
inline constexpr const char* kActionStore = "TpStore";

// Nodes.
inline constexpr const char* kNode = "Node";
inline constexpr const char* kNodeId = "nodeId";
inline constexpr const char* kReference = "Reference";
inline constexpr const char* kLatitude = "latitude";
inline constexpr const char* kLongitude = "longitude";
inline constexpr const char* kBlackList = "BlackList";
inline constexpr const char* kInterval = "Interval";
inline constexpr const char* kTime = "time";
inline constexpr const char* kPower = "power";
inline constexpr const char* kHour = "hour";
inline constexpr const char* kMinute = "min";
inline constexpr const char* kAlarms = "Alarms";
inline constexpr const char* kNodeVersion = "vf";

// Inputs and outputs.
inline constexpr const char* kInput = "Input";
inline constexpr const char* kOutput = "Output";
inline constexpr const char* kDir = "Dir";
inline constexpr const char* kValue = "Value";
inline constexpr const char* kSpontaneous = "SponEnable";
inline constexpr const char* kSunset = "Ocaso";
inline constexpr const char* kSunrise = "Orto";
inline constexpr const char* kFollowNodes = "SincNode";
inline constexpr const char* kForcedOn = "On";
inline constexpr const char* kForcedOff = "Off";
inline constexpr const char* kSunriseOffset = "offsetSunRise";
inline constexpr const char* kSunsetOffset = "offsetSunSet";

}  // namespace lamp::controller::names
