// Logical names: the requests of the family, row by row, then the functions with a logic of their own.

#include <cstring>

#include "frame/ApiCall.h"
#include "frame/guarded.h"
#include "frame/valueEnumeration.h"
#include "kxovaapi.h"

namespace {

ListCache s_values;  // name, value, name, value, …

}  // namespace

long LogNameExists(const char* lpszLogName)
{
    ApiCall call("LogNameExists: ");
    KX_ENTRY(call, ">>lpszLogName=%s ", lpszLogName);
    return call.send(opcode::LogNameExists, lpszLogName, 0UL).done("<< result= 0x%x");
}

long LogNameGetValue(const char* lpszLogName, const char* lpszParameter, char* buffer, unsigned long* length)
{
    ApiCall call("LogNameGetValue: ");
    KX_ENTRY(call, ">>lpszLogName=%s  lpszParameter=%s", lpszLogName, lpszParameter);
    return call.request(opcode::LogNameGetValue, lpszLogName, lpszParameter, textCapacity)
        .orInvalidResponse()
        .text(buffer, length)
        .done();
}

long LogNameSetValue(const char* lpszLogName, const char* lpszParameter, const char* lpszValue)
{
    ApiCall call("LogNameSetValue: ");
    KX_ENTRY(call, ">>lpszLogName=%s  lpszParameter=%s lpszValue=%s", lpszLogName, lpszParameter, lpszValue);
    return call.send(opcode::LogNameSetValue, lpszLogName, lpszParameter, lpszValue).done("<< result= 0x%x ");
}

long LogNameDelValue(const char* lpszLogName, const char* lpszParameter)
{
    ApiCall call("LogNameDelValue: ");
    KX_ENTRY(call, ">>lpszLogName %s lpszParameter %s", lpszLogName, lpszParameter);
    if (missing(lpszLogName) || missing(lpszParameter)) {
        return call.fail(ERROR_INVALID_PARAMETER, "<< return ERROR invalid params");
    }
    return call.send(opcode::LogNameDelValue, lpszLogName, lpszParameter).done("<< result= 0x%x ");
}

long LogNameGetEnum(unsigned long iValue, char* buffer, unsigned long* length)
{
    ApiCall call("LogNameGetEnum: ");
    KX_ENTRY(call, ">>iValue=%d ", dec(iValue));
    return call.request(opcode::LogNameGetEnum, iValue, textCapacity).orInvalidResponse().text(buffer, length).done();
}

long LogNameGetEnumValue(const char* lpszLogName, unsigned long iValue, char* name, unsigned long* nameLength,
                         char* value, unsigned long* valueLength)
{
    ApiCall call("LogNameGetEnumValue: ");
    KX_ENTRY(call, ">>iValue=%d ", dec(iValue));
    return call.request(opcode::LogNameGetEnumValue, lpszLogName, iValue, textCapacity, textCapacity)
        .orInvalidResponse()
        .text(name, nameLength)
        .text(value, valueLength)
        .done();
}

long LogNameCreate(const char* lpszLogName)
{
    ApiCall call("LogNameCreate: ");
    KX_ENTRY(call, ">>lpszLogName=%s ", lpszLogName);
    if (!lpszLogName) return call.fail(ERROR_INVALID_PARAMETER, "<< return ERROR invalid params");
    const Reply reply = call.send(opcode::LogNameCreate, lpszLogName);
    // Whoever makes a name may delete it, until somebody protects it.
    if (reply.ok()) LogNameSetValue(lpszLogName, "enable_delete", "true");
    return reply.done("<< result= 0x%x");
}

long LogNameDel(const char* lpszLogName)
{
    ApiCall call("LogNameDel: ");
    KX_ENTRY(call, ">>lpszLogName=%s ", lpszLogName);
    if (missing(lpszLogName)) return call.fail(ERROR_INVALID_PARAMETER, "<< return ERROR invalid params");

    // A buffer that stays as it is must not read as "true".
    char enableDelete[textCapacity] = "lalala";
    unsigned long length = sizeof enableDelete;
    if (LogNameGetValue(lpszLogName, "enable_delete", enableDelete, &length) != ERROR_SUCCESS) {
        return call.fail(DCFG_ERR_DELETE_DISABLED, "<< return EnableDelete=n.v");
    }
    if (_stricmp(enableDelete, "true") != 0) {
        return call.fail(DCFG_ERR_DELETE_DISABLED, "<< return EnableDelete=FALSE");
    }
    return call.send(opcode::LogNameDel, lpszLogName).done("<< result= 0x%x");
}

long DCFG_LogNameGetEnumValue(const char* lpszLogName, const char* lpszSubKey, unsigned long iValue, char* name,
                              unsigned long* nameLength, char* value, unsigned long* valueLength)
{
    ApiCall call("DCFG_LogNameGetEnumValue: ");
    return guarded([&]() -> long {
        KX_ENTRY(call, ">>lpszLogName %s iValue=%d - Pid %d Tid %d", lpszLogName, dec(iValue), currentPid(),
                 currentTid());
        if (!name || !nameLength || !value || !valueLength) return ERROR_INVALID_PARAMETER;
        return enumerateValue(call, {s_values, opcode::LogNameValueList, largeListCapacity, LogNameGetEnumValue},
                              lpszLogName, lpszSubKey, iValue, name, nameLength, value, valueLength);
    });
}

long LogNameGetLogDevice(const char* lpszLogName, char* buffer, unsigned long* length)
{
    ApiCall call("LogNameGetLogDevice: ");
    KX_ENTRY(call, ">>lpszLogName=%s ", lpszLogName);
    if (missing(lpszLogName)) return call.fail(ERROR_INVALID_PARAMETER, "<< return ERROR invalid params");
    return LogNameGetValue(lpszLogName, "LogDevice", buffer, length);
}

long LogNameSetLogDevice(const char* lpszLogName, const char* lpszLogDevice)
{
    ApiCall call("LogNameSetLogDevice: ");
    KX_ENTRY(call, ">>lpszLogName=%s  lpszLogDevice=%s", lpszLogName, lpszLogDevice);
    if (!lpszLogDevice) return call.fail(ERROR_INVALID_PARAMETER, "<< return ERROR invalid params");

    // A name points at a device that exists, or at none.
    const bool named = *lpszLogDevice != 0;
    if (named && LogDeviceExists(lpszLogDevice, 0) != ERROR_SUCCESS) return DCFG_ERR_NOT_FOUND;

    const long result = LogNameSetValue(lpszLogName, "LogDevice", lpszLogDevice);
    if (result == ERROR_SUCCESS) {
        KX_DETAIL(call, "LogNameSetValue %d LN %s -> LD %s", static_cast<int>(result), lpszLogName, lpszLogDevice);
    }
    if (named) {
        char type[textCapacity] = {};
        unsigned long length = sizeof type;
        if (DCFG_LogDeviceGetValue(lpszLogDevice, "CP_TYPE", type, &length) == ERROR_SUCCESS) {
            LogNameSetValue(lpszLogName, "CP_TYPE", type);
        }
    }
    KX_RESULT(call, "<< return %d", static_cast<int>(result));
    return result;
}

long LogNameLock(const char* lpszLogName)
{
    ApiCall call("LogNameLock: ");
    KX_ENTRY(call, ">>lpszLogName=%s ", lpszLogName);
    return call.fail(ERROR_CALL_NOT_IMPLEMENTED, "ERROR_CALL_NOT_IMPLEMENTED");
}

long LogNameUnlock(const char* lpszLogName, unsigned long nIgnore)
{
    ApiCall call("LogNameUnlock: ");
    KX_ENTRY(call, ">>lpszLogName=%s nIgnore=0x%x", lpszLogName, hex(nIgnore));
    return call.fail(ERROR_CALL_NOT_IMPLEMENTED, "ERROR_CALL_NOT_IMPLEMENTED");
}
