// Operation codes of the requests to the configuration server, each under the name of the operation it asks for.
// An operation that several exported functions share stands here once.
#pragma once

#include <cstdint>

namespace wire::opcode {

using Code = std::uint16_t;

// Path-based registry requests; they travel on the server pipe, all others on the channel.
inline constexpr Code RegDelete = 1;  // a key alone, or a key and a value name
inline constexpr Code RegCreateKey = 2;
inline constexpr Code RegSetValue = 3;
inline constexpr Code RegEnumKey = 21;
inline constexpr Code RegGetValue = 22;
inline constexpr Code RegEnumValue = 23;

// Panel
inline constexpr Code PanelInstall = 5;
inline constexpr Code PanelDeinstall = 6;
inline constexpr Code LldpDelValue = 204;
inline constexpr Code LldpGetEnumValue = 205;

// Notifications
inline constexpr Code NotifyRegister = 26;
inline constexpr Code NotifyUnregister = 27;
inline constexpr Code HardwareChangeRegister = 256;
inline constexpr Code HardwareChangeUnregister = 257;
inline constexpr Code HardwareChangeGet = 258;

// The channel library's own requests; see wire/notifications.h
inline constexpr Code NotifyChannel = 496;
inline constexpr Code NotifyListen = 497;
inline constexpr Code NotifyRenewBegin = 498;
inline constexpr Code NotifyRenew = 499;
inline constexpr Code HardwareChangeRenew = 500;
inline constexpr Code NotifyRenewEnd = 501;
inline constexpr Code NotifyPush = 502;  // from the server: no request

// Logical devices
inline constexpr Code LogDeviceGetValue = 33;
inline constexpr Code LogDeviceSetValue = 34;
inline constexpr Code LogDeviceDelValue = 35;
inline constexpr Code LogDeviceGetEnum = 36;
inline constexpr Code LogDeviceGetEnumValue = 37;  // also TemplateExistsEx: see below
inline constexpr Code LogDeviceUpdateWithTemp = 40;
inline constexpr Code LogDeviceExists = 42;
inline constexpr Code LogDeviceCreateFromDef = 43;
inline constexpr Code LogDeviceGetParamDesc = 44;
inline constexpr Code LogDeviceCreateTemp = 45;
inline constexpr Code LogDeviceDelTemp = 47;
inline constexpr Code LogDeviceCopy = 49;
inline constexpr Code LogDeviceDel = 50;
inline constexpr Code LogDeviceSetBusparams = 51;
inline constexpr Code LogDeviceGetNdiValue = 114;
inline constexpr Code LogDeviceSetNdiValue = 115;
inline constexpr Code LogDeviceDelNdiValue = 116;
inline constexpr Code LogDeviceGetEnumNdiValue = 118;
inline constexpr Code LogDeviceGetMostSpecializedEnumList = 119;
inline constexpr Code LogDeviceGetAverageEnumList = 120;
inline constexpr Code LogDeviceSetProfile = 121;
inline constexpr Code LogDeviceGetValueLang = 122;
inline constexpr Code LogDeviceList = 208;
inline constexpr Code LogDeviceValueList = 215;
inline constexpr Code LogDeviceGetValueRaw = 217;

// Logical names
inline constexpr Code LogNameSetValue = 65;
inline constexpr Code LogNameGetValue = 66;
inline constexpr Code LogNameDelValue = 67;
inline constexpr Code LogNameCreate = 68;
inline constexpr Code LogNameDel = 69;
inline constexpr Code LogNameGetEnum = 72;
inline constexpr Code LogNameGetEnumValue = 73;
inline constexpr Code LogNameExists = 75;
inline constexpr Code LogNameGetValueLang = 90;
inline constexpr Code LogNameList = 209;
inline constexpr Code LogNameValueList = 219;

// Templates and parameter metadata
inline constexpr Code TemplateExistsEx = 37;  // the same code as LogDeviceGetEnumValue, with other fields
inline constexpr Code TemplateGetEnumValueRaw = 99;
inline constexpr Code TemplateGetEnum = 128;
inline constexpr Code TemplateGetEnumNoPrefix = 129;
inline constexpr Code TemplateExists = 133;
inline constexpr Code TemplateKeyExists = 135;
inline constexpr Code DefaultLogDeviceGetEnumValue = 144;
inline constexpr Code DefaultLogDeviceGetValue = 145;
inline constexpr Code GetParameterMetaData = 202;
inline constexpr Code SetParameterMetaData = 203;

// Boards
inline constexpr Code HasUninitializedInstances = 88;
inline constexpr Code BoardGetValueRaw = 96;
inline constexpr Code BoardGetResourceString = 134;
inline constexpr Code BoardGetEnumValue = 160;
inline constexpr Code BoardGetAttribute = 161;
inline constexpr Code BoardGetAttributeLang = 162;
inline constexpr Code BoardGetMapEx = 163;
inline constexpr Code BoardGetNotSupported = 164;
inline constexpr Code EnumInstBoard = 192;
inline constexpr Code BoardGetEnum2 = 193;
inline constexpr Code EnumAvailableBoards = 194;
inline constexpr Code GetBoardInfo = 195;
inline constexpr Code EnumConfiguration = 196;
inline constexpr Code EnumAdapters = 197;
inline constexpr Code BoardScan = 199;
inline constexpr Code UpdateLogdevicesForDevice = 200;
inline constexpr Code CreateAllLogdevices = 201;
inline constexpr Code GetBoardInfoEx = 207;
inline constexpr Code SilentRestart = 288;

// Protocols, profiles, special values
inline constexpr Code CanSaveParameters = 81;
inline constexpr Code ProfileCollectionExists = 87;
inline constexpr Code ProtocolGetValueRaw = 97;
inline constexpr Code DefDeviceGetValueRaw = 98;
inline constexpr Code SpecialSetValue = 138;
inline constexpr Code SpecialGetValue = 139;
inline constexpr Code ProtocolGetEnumValue = 176;
inline constexpr Code ProtocolGetValue = 177;
inline constexpr Code ProtocolGetEnumBusprofiles = 178;
inline constexpr Code ProtocolGetEnumBaudrate = 179;

// Versions and checks
inline constexpr Code GetRuntimeVersion = 214;
inline constexpr Code Plausibility = 292;

}  // namespace wire::opcode
