// Boards, protocols, panel, notifications.
#include "Function.h"

namespace {

void enumInstBoardEx(Arguments& a)
{
    auto* const info = static_cast<DcfgEnumInstBoardInfo*>(a.record(sizeof(DcfgEnumInstBoardInfo)));
    *info = {};
    info->size = sizeof *info;
    const auto give = [&](char*& text, unsigned long& length) {
        text = a.buffer();
        length = *a.length();
    };
    give(info->BoardName, info->BoardNameLength);
    give(info->BoardMap, info->BoardMapLength);
    give(info->DeviceId, info->DeviceIdLength);
    give(info->NetType, info->NetTypeLength);
    give(info->HardwareId, info->HardwareIdLength);
    give(info->HardwareInstanceId, info->HardwareInstanceIdLength);
    DCFG_EnumInstBoardEx(a.number(), info);
}

}  // namespace

Functions boardAndProtocolFunctions()
{
    return {
        function("DCFG_BoardGetEnum2", DCFG_BoardGetEnum2),
        function("DCFG_BoardGetMapEx", DCFG_BoardGetMapEx),
        function("DCFG_BoardGetNotSupported", DCFG_BoardGetNotSupported),
        function("DCFG_BoardGetValueRaw", DCFG_BoardGetValueRaw),
        function("DCFG_CreateAllLogdevices", DCFG_CreateAllLogdevices),
        function("DCFG_EnumAdapters", DCFG_EnumAdapters),
        function("DCFG_EnumAvailableBoards", DCFG_EnumAvailableBoards),
        function("DCFG_EnumConfiguration", DCFG_EnumConfiguration),
        function("DCFG_EnumInstBoard", DCFG_EnumInstBoard),
        function("DCFG_EnumInstBoardEx", DCFG_EnumInstBoardEx, enumInstBoardEx),
        function("DCFG_GetBoardAttribute", DCFG_GetBoardAttribute),
        function("DCFG_GetBoardInfo", DCFG_GetBoardInfo),
        function("DCFG_GetBoardInfoEx", DCFG_GetBoardInfoEx),
        function("DCFG_HasUninitializedInstances", DCFG_HasUninitializedInstances),
        function("DCFG_Scan", DCFG_Scan),
        function("DCFG_SilentRestart", DCFG_SilentRestart),
        function("DCFG_UpdateLogdevicesForDevice", DCFG_UpdateLogdevicesForDevice),

        function("DCFG_CanSaveParameters", DCFG_CanSaveParameters),
        function("DCFG_DefDeviceGetValueRaw", DCFG_DefDeviceGetValueRaw),
        function("DCFG_ProtocolGetEnumBaudrate", DCFG_ProtocolGetEnumBaudrate),
        function("DCFG_ProtocolGetEnumBusprofiles", DCFG_ProtocolGetEnumBusprofiles),
        function("DCFG_ProtocolGetValueRaw", DCFG_ProtocolGetValueRaw),
        function("DCFG_SpecialGetValue", DCFG_SpecialGetValue),
        function("DCFG_TemplateExists", DCFG_TemplateExists),
        function("DCFG_TemplateExistsEx", DCFG_TemplateExistsEx),
        function("DCFG_TemplateGetEnumNoPrefix", DCFG_TemplateGetEnumNoPrefix),
        function("DCFG_TemplateGetEnumValueRaw", DCFG_TemplateGetEnumValueRaw),
        function("DCFG_TemplateKeyExists", DCFG_TemplateKeyExists),

        function("LogNameGetValueLang", LogNameGetValueLang),
        function("Panel_LldpDelValue", Panel_LldpDelValue),
        function("Panel_LldpGetEnumValue", Panel_LldpGetEnumValue),
        function("Panel_SendDeinstall", Panel_SendDeinstall),
        function("Panel_SendGetList", Panel_SendGetList),
        function("Panel_SendInstall", Panel_SendInstall),

        function("LogDeviceFlush", LogDeviceFlush),
        function("LogDeviceNotifyChange", LogDeviceNotifyChange),
        function("LogDeviceUnregisterNotifyChange", LogDeviceUnregisterNotifyChange),
        function("LogNameNotifyChange", LogNameNotifyChange),
        function("LogNameUnregisterNotifyChange", LogNameUnregisterNotifyChange),
        function("OvaGetHardwareChanges", OvaGetHardwareChanges),
        function("OvaRegisterHardwareChanges", OvaRegisterHardwareChanges),
        function("OvaSetMessageTypeForHardwareChanges", OvaSetMessageTypeForHardwareChanges),
        function("OvaUnregisterHardwareChanges", OvaUnregisterHardwareChanges),
    };
}
