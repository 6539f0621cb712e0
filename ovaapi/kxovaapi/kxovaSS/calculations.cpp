// A parameter that follows from others, settings and versions of this machine, and the time.

#include <windows.h>

#include <cstdlib>

#include "frame/ApiCall.h"
#include "frame/LocalCall.h"
#include "kxovaapi.h"

namespace {

constexpr int ttrAboveHighestAddress = 8;
constexpr int versionSlots = 5;

}  // namespace

void DCFG_SpezielleBerechnungen(const char* LogDev)
{
    const LocalCall call("DCFG_SpezielleBerechnungen: ");
    guarded([&]() -> long {
        KX_ENTRY(call, ">> LogDev=%s", LogDev);
        CString value;
        if (DCFG_LogDeviceGetValue(LogDev, "CP_TYPE", &value) != ERROR_SUCCESS || value != "MPI")
            return ERROR_SUCCESS;
        if (DCFG_LogDeviceGetValue(LogDev, "highest_adr", &value) != ERROR_SUCCESS) return ERROR_SUCCESS;
        CString ttr;
        ttr.Format("%i", std::atoi(value) + ttrAboveHighestAddress);
        KX_DETAIL(call, "TTR   %s", ttr.GetString());
        LogDeviceSetValue(LogDev, "ttr", ttr);
        return ERROR_SUCCESS;
    });
}

void DCFG_SpezielleBerechnungenEx(const char* LogDev)
{
    const ModuleContext context;
    DCFG_SpezielleBerechnungen(LogDev);
}

long GetDefaultL7Timeout(char* value, long* pcbValue)
{
    constexpr char key[] = R"(Software\TAVRONE\NORIX\LKM&BlockLibrary)";
    constexpr char parameter[] = "DEFAULT_TIMEOUT";
    const LocalCall call("GetDefaultL7Timeout: ");
    KX_ENTRY(call, ">> lpszKey=%s lpszParameter=%s pcbValue=%d", key, parameter, pcbValue ? dec(*pcbValue) : 0);
    if (!value || !pcbValue) return ERROR_INVALID_PARAMETER;
    HKEY opened = nullptr;
    LSTATUS result = RegOpenKeyExA(HKEY_LOCAL_MACHINE, key, 0, KEY_READ, &opened);
    if (result != ERROR_SUCCESS) return result;
    // The value without a name of a key below, which only the old query reads in one step.
    result = RegQueryValueA(opened, parameter, value, pcbValue);
    RegCloseKey(opened);
    return result;
}

long GetKxOpusbxVid(char* value, unsigned long* pLen)
{
    const ModuleContext context;
    return KxRegGetValue(R"(SYSTEM\CurrentControlSet\Services\kxopusbx64\Enum)", "0", value, pLen);
}

long GetCurrentLogName(char* value, unsigned long* pLen)
{
    const ModuleContext context;
    if (!value) return ERROR_INVALID_PARAMETER;
    return DCFG_SpecialGetValue("DCFG_CurrentLogName", value, pLen);
}

long Ova_Plausibilitaet(void)
{
    constexpr char error[] = "<< return - Error 0x%x ";
    ApiCall call("Ova_Plausibilitaet: ");
    KX_ENTRY(call, ">> start");
    call.failure(error);
    Reply reply = call.request(opcode::Plausibility);
    if (reply.kindIsResult()) return reply.result().done("<< return - 0x%x ");
    return reply.ended() ? reply.status() : call.done(ERROR_READ_FAULT, error);
}

long GetKXRTSVersion(char* versions)
{
    ApiCall call("GetKXRTSVersion: ");
    KX_ENTRY(call, ">> Start");
    if (!versions) {
        return call.fail(ERROR_INVALID_PARAMETER, "<< GetKXRTSVersion failed! Input Parameter == NULL");
    }
    Reply reply = call.request(opcode::GetRuntimeVersion);
    if (!reply.kindIsResult()) {
        if (reply.ended()) return reply.status();
        return call.fail(ERROR_READ_FAULT, "<< result= ERROR_READ_FAULT because ucHeader != 4");
    }
    reply.result();
    for (int slot = 0; slot < versionSlots; ++slot) {
        unsigned long length = textCapacity;
        reply.plainText(versions + slot * textCapacity, &length);
    }
    return reply.done();
}

CString DCFG_CurrentDateTimeCreate()
{
    const ModuleContext context;
    CString stamp;
    guarded([&]() -> long {
        SYSTEMTIME now;
        GetLocalTime(&now);
        stamp.Format("%04d/%02d/%02d %02d:%02d:%02d:%03d_", now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute,
                     now.wSecond, now.wMilliseconds);
        return ERROR_SUCCESS;
    });
    return stamp;
}
