// The machine, languages, extensions, ports, helpers.
#include "Function.h"

namespace {

// The documented room of what has no length of its own.
constexpr std::size_t versionsRoom = 5 * 260;
constexpr std::size_t languageRoom = 260;

void getBuffer(Arguments& a)
{
    char* buffer = a.buffer();
    KxRegGetBuffer(a.string(), buffer, *a.length());
}

void releaseBuffer(Arguments& a)
{
    char* buffer = a.buffer();
    KxRegReleaseBuffer(a.string(), buffer, *a.length());
}

}  // namespace

Functions machineFunctions()
{
    return {
        function("DCFG_SpezielleBerechnungen", DCFG_SpezielleBerechnungen),
        function("DCFG_SpezielleBerechnungenEx", DCFG_SpezielleBerechnungenEx),
        function("GetCurrentLogName", GetCurrentLogName),
        function("GetDefaultL7Timeout", GetDefaultL7Timeout),
        function("GetKXRTSVersion", GetKXRTSVersion, [](Arguments& a) { GetKXRTSVersion(a.bufferOf(versionsRoom)); }),
        function("GetKxOpusbxVid", GetKxOpusbxVid),
        function("InstDeviceGetEnum", InstDeviceGetEnum),
        function("Ova_Plausibilitaet", Ova_Plausibilitaet),
        function("_Z23DCFG_AliasRecalcNetType7CString", DCFG_AliasRecalcNetType),
        function("_Z24DCFG_AliasRecalcDeviceID7CString", DCFG_AliasRecalcDeviceID),
        function("_Z26DCFG_CurrentDateTimeCreatev", DCFG_CurrentDateTimeCreate),

        function("ConvertOsToTALUNLang", ConvertOsToTALUNLang,
                 [](Arguments& a) {
                     const char* const in = a.text();
                     ConvertOsToTALUNLang(in, a.bufferOf(languageRoom));
                 }),
        function("ConvertTALUNToOsLang", ConvertTALUNToOsLang,
                 [](Arguments& a) {
                     const char* const in = a.text();
                     ConvertTALUNToOsLang(in, a.bufferOf(languageRoom));
                 }),
        function("GetLanguage", GetLanguage, [](Arguments& a) { GetLanguage(a.bufferOf(1)); }),
        function("_Z13RegReadStringPKcS0_R7CString", RegReadString),
        function("_Z16DCFG_GetLanguageR7CStringS0_", DCFG_GetLanguage),
        function("_Z24ConvertOsToTALUNLanguage7CStringPS_", ConvertOsToTALUNLanguage),
        function("_Z24ConvertTALUNToOsLanguage7CStringPS_", ConvertTALUNToOsLanguage),
        function("_Z24DCFG_GetCmdLineParameter7CStringS_RS_i", DCFG_GetCmdLineParameter),
        function("_Z31DCFG_GetLanguageFromCommandline7CStringPS_S0_", DCFG_GetLanguageFromCommandline),

        function("DCFGM_IsInternalPrommerActive", DCFGM_IsInternalPrommerActive),
        function("DCFGM_IsPgWithInternalPrommer", DCFGM_IsPgWithInternalPrommer),
        function("DCFG_Aut9_Update", DCFG_Aut9_Update),
        function("DCFG_GetBoardState", DCFG_GetBoardState),
        function("DCFG_GetDeviceState", DCFG_GetDeviceState),
        function("DCFG_GetDeviceStateEx", DCFG_GetDeviceStateEx),
        function("_Z16DCFG_DLL_AddPagePKcS0_P14CPropertySheet", DCFG_DLL_AddPage),

        function("DCFG_GetPlatform", DCFG_GetPlatform),
        function("DCFG_IsTerminalServicesEnabled", DCFG_IsTerminalServicesEnabled),
        function("_Z11GetPortListR11CStringList9PORT_TYPE", GetPortList),
        function("_Z16DCFG_GetPortListR11CStringListPKc", DCFG_GetPortList),

        function("_Z10sKeyConcat7CStringS_", form<CString(CString, CString)>(sKeyConcat)),
        function("_Z10sKeyConcat7CStringS_S_", form<CString(CString, CString, CString)>(sKeyConcat)),
        function("_Z10sKeyConcat7CStringS_S_S_", form<CString(CString, CString, CString, CString)>(sKeyConcat)),
        function("_Z10sKeyConcat7CStringS_S_S_S_",
                 form<CString(CString, CString, CString, CString, CString)>(sKeyConcat)),
        function("_Z11nMessageBoxP4CWnd7CStringS1_mm",
                 form<int(CWnd*, CString, CString, unsigned long, unsigned long)>(nMessageBox)),
        function("_Z11nMessageBoxP4CWnd7CStringS1_mmc",
                 form<int(CWnd*, CString, CString, unsigned long, unsigned long, char)>(nMessageBox)),
        function("_Z14KxRegGetBufferR7CStringRPcRm", KxRegGetBuffer, getBuffer),
        function("_Z14sLoadResStringj", sLoadResString),
        function("_Z18KxRegReleaseBufferR7CStringRPcm", KxRegReleaseBuffer, releaseBuffer),
        function("_Z28sFirstFromSeperatedListOneOf7CStringS_",
                 form<CString(CString, CString)>(sFirstFromSeperatedListOneOf)),
        function("_Z28sFirstFromSeperatedListOneOfP7CStringS_",
                 form<CString(CString*, CString)>(sFirstFromSeperatedListOneOf)),
    };
}
