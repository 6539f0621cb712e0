// Logical devices: functions that combine requests or keep a list.

#include <cstring>

#include "channel/kxOvascp.h"
#include "frame/ApiCall.h"
#include "frame/guarded.h"
#include "frame/valueEnumeration.h"
#include "kxovaapi.h"
#include "kxovaSS/extensionLibrary.h"
#include "kxstring32x.h"

namespace {

ListCache s_values;  // name, value, name, value, …

// One raw value; false when it cannot be read.
bool rawValue(const char* lpszLogDevice, const char* lpszParameter, char (&value)[textCapacity], long& result)
{
    unsigned long length = sizeof value;
    result = DCFG_LogDeviceGetValue(lpszLogDevice, lpszParameter, value, &length);
    return result == ERROR_SUCCESS;
}

}  // namespace

long LogDeviceCopy(const char* copyFrom, const char* copyTo)
{
    ApiCall call("LogDeviceCopy: ");
    KX_ENTRY(call, ">> copyfrom=%s to= %s", copyFrom, copyTo);
    if (!copyFrom) return ERROR_INVALID_PARAMETER;

    Reply reply = call.request(opcode::LogDeviceCopy, copyFrom, copyTo);
    if (reply.kindIsResult()) {
        // A result that cannot be read counts as success.
        std::uint32_t result = ERROR_SUCCESS;
        if (const std::uint32_t status = reply.data().ReadU32(&result); status != ERROR_SUCCESS) {
            KX_RESULT(call, "<< return - Error 0x%x", status);
            result = ERROR_SUCCESS;
        }
        return call.done(static_cast<long>(result));
    }
    if (reply.ended()) return reply.status();
    // The server made the copy and says so with another kind of reply; only then the copy is marked.
    DCFG_LogDeviceSetNdi(copyTo, "enable_delete", "true");
    return call.done(DCFG_LogDeviceSetNdi(copyTo, "hidden", "false"));
}

long DCFG_LogDeviceGetEnumValue(const char* lpszLogDevice, const char* lpszSubKey, unsigned long iValue, char* name,
                                unsigned long* nameLength, char* value, unsigned long* valueLength)
{
    ApiCall call("DCFG_LogDeviceGetEnumValue: ");
    return guarded([&]() -> long {
        KX_ENTRY(call, ">>lpszLogDevice=%s iValue=%d - Pid %d Tid %d", lpszLogDevice, dec(iValue), currentPid(),
                 currentTid());
        return enumerateValue(call, {s_values, opcode::LogDeviceValueList, listCapacity, LogDeviceGetEnumValue},
                              lpszLogDevice, lpszSubKey, iValue, name, nameLength, value, valueLength);
    });
}

long LogDeviceGetAsicType(const char* lpszLogDevice, char* buffer, unsigned long* length)
{
    constexpr char specialBoard[] = "*TVRA010";
    constexpr char specialDevice[] = "255";
    constexpr char specialType[] = "IBC_16_B";

    ApiCall call("LogDeviceGetAsicType: ");
    KX_ENTRY(call, "lpszLogDevice=%s", lpszLogDevice);
    if (!length) return ERROR_INVALID_PARAMETER;
    const unsigned long capacity = *length;

    char deviceId[textCapacity] = {};
    long result = ERROR_SUCCESS;
    if (!rawValue(lpszLogDevice, "DeviceID", deviceId, result)) return call.done(result);
    result = DCFG_GetBoardAttribute(deviceId, "Asic_Type", buffer, length);
    KX_DETAIL(call, "lRet=%x ASIC=%.*s", hex(result), textLength(buffer, &capacity), buffer);
    if (result != ERROR_SUCCESS || _stricmp(deviceId, specialBoard) != 0) return call.done(result);

    char device[textCapacity] = {};
    if (!rawValue(lpszLogDevice, "Device", device, result)) return call.done(ERROR_SUCCESS);
    if (std::strcmp(device, specialDevice) != 0) return call.done(ERROR_SUCCESS);
    *length = capacity;
    return call.done(copyOut(specialType, buffer, length));
}

long LogDeviceFromDeviceIDEnum(const char* lpszDeviceID, unsigned long iValue, char* logDevice,
                               unsigned long* logDeviceLength, char* unit, unsigned long* unitLength)
{
    const ModuleContext context;
    return guarded([&]() -> long {
        const unsigned long capacity = logDeviceLength ? *logDeviceLength : 0;
        unsigned long matches = 0;
        for (unsigned long i = 0;; ++i) {
            if (logDeviceLength) *logDeviceLength = capacity;
            if (LogDeviceGetEnum(nullptr, i, logDevice, logDeviceLength) != ERROR_SUCCESS || !logDevice) {
                return DCFG_ERR_NO_MORE_ITEMS;
            }
            // A buffer that is exactly full holds no terminator.
            const std::string name(logDevice, logDeviceLength ? *logDeviceLength : 0);
            char deviceId[textCapacity] = {};
            long result = ERROR_SUCCESS;
            if (!rawValue(name.c_str(), "DeviceID", deviceId, result)) continue;
            if (!lpszDeviceID || _stricmp(deviceId, lpszDeviceID) != 0 || matches++ != iValue) continue;

            const unsigned long unitCapacity = unitLength ? *unitLength : 0;
            if (DCFG_LogDeviceGetValue(name.c_str(), "Unit", unit, unitLength) == ERROR_SUCCESS) return ERROR_SUCCESS;
            if (unitLength) *unitLength = unitCapacity;
            return copyOut("", unit, unitLength);
        }
    });
}

long LogDeviceCallDLL(HWND hWnd, const char* lpszLogDevice)
{
    ApiCall call("LogDeviceCallDLL: ");
    return guarded([&]() -> long {
        KX_ENTRY(call, ">> lpszLogDevice=%s", lpszLogDevice);
        CString function;
        if (const long result = DCFG_LogDeviceGetNdi(lpszLogDevice, "PropSheet", &function);
            result != ERROR_SUCCESS) {
            KX_RESULT(call, "<< return ERROR=%d DLL=%s", static_cast<int>(result),
                      static_cast<const char*>(function));
            return result;
        }
        if (function.FindOneOf(", ;") < 0) {
            KX_RESULT(call, "<< return ERROR=%d DLL=%s", DCFG_ERR_CALL_DLL, static_cast<const char*>(function));
            return DCFG_ERR_CALL_DLL;
        }
        const CString library = sFirstFromSeperatedListOneOf(&function, ", ;");
        const long result = ExtensionLibrary::suspicious(library)
                                ? long{DCFG_ERR_CANT_FIND_DLL}
                                : DCFG_LogDeviceCallDLL(hWnd, library, function, lpszLogDevice, lpszLogDevice);
        KX_RESULT(call, "<< return =%d ", static_cast<int>(result));
        return result;
    });
}
