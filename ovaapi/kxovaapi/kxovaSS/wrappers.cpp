// Exports that only forward to the functions of logical devices and logical names.

#include "frame/ApiCall.h"
#include "frame/guarded.h"
#include "frame/internal.h"
#include "kxovaapi.h"

namespace {

// Reads a text with one of the buffer forms and assigns it on success alone.
template <typename Read>
long intoString(CString* text, Read read)
{
    const ModuleContext context;
    return guarded([&]() -> long {
        if (!text) return ERROR_INVALID_PARAMETER;
        char buffer[textCapacity] = {};
        unsigned long length = sizeof buffer;
        const long result = read(buffer, &length);
        if (result == ERROR_SUCCESS) *text = CString(buffer, static_cast<int>(length));
        return result;
    });
}

}  // namespace

long DCFG_LogNameGetValue(const char* lpszLogName, const char* lpszParameter, CString& value)
{
    return intoString(&value, [&](char* buffer, unsigned long* length) {
        return LogNameGetValue(lpszLogName, lpszParameter, buffer, length);
    });
}

long DCFG_LogNameSetValue(const char* lpszLogName, const char* lpszParameter, const char* lpszValue)
{
    const ModuleContext context;
    return LogNameSetValue(lpszLogName, lpszParameter, lpszValue);
}

long DCFG_LogDeviceGetValue(const char* lpszLogDevice, const char* lpszParameter, CString* value)
{
    return intoString(value, [&](char* buffer, unsigned long* length) {
        return logDeviceGetValueRaw(lpszLogDevice, nullptr, lpszParameter, buffer, length);
    });
}

long DCFG_LogDeviceGetValue(const char* lpszLogDevice, const char* lpszParameter, char* buffer, unsigned long* length)
{
    const ModuleContext context;
    return logDeviceGetValueRaw(lpszLogDevice, nullptr, lpszParameter, buffer, length);
}

long DCFG_LogDeviceSetValue(const char* lpszLogDevice, const char* lpszParameter, const char* lpszValue)
{
    const ModuleContext context;
    return LogDeviceSetValue(lpszLogDevice, lpszParameter, lpszValue);
}

long DCFG_LogDeviceGetNdi(const char* lpszLogDevice, const char* lpszParameter, CString* value)
{
    return intoString(value, [&](char* buffer, unsigned long* length) {
        return LogDeviceGetNdiValue(lpszLogDevice, lpszParameter, buffer, length);
    });
}

long DCFG_LogDeviceGetNdi(const char* lpszLogDevice, const char* lpszParameter, char* buffer, unsigned long* length)
{
    const ModuleContext context;
    if (!lpszLogDevice) return ERROR_INVALID_PARAMETER;
    return LogDeviceGetNdiValue(lpszLogDevice, lpszParameter, buffer, length);
}

long DCFG_LogDeviceSetNdi(const char* lpszLogDevice, const char* lpszParameter, const char* lpszValue)
{
    const ModuleContext context;
    return LogDeviceSetNdiValue(lpszLogDevice, lpszParameter, lpszValue);
}

long DCFG_LogDeviceSetNdiEx(const char* lpszLogDevice, const char* lpszParameter, const char* lpszValue)
{
    const ModuleContext context;
    return LogDeviceSetNdiValue(lpszLogDevice, lpszParameter, lpszValue);
}

long DCFG_LogDeviceDelNdi(const char* lpszLogDevice, const char* lpszParameter)
{
    const ModuleContext context;
    return LogDeviceDelNdiValue(lpszLogDevice, lpszParameter);
}

long DCFG_LogDeviceDelNdiEx(const char* lpszLogDevice, const char* lpszParameter)
{
    const ModuleContext context;
    return LogDeviceDelNdiValue(lpszLogDevice, lpszParameter);
}
