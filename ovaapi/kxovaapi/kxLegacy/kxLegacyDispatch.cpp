// Registry functions that look at the path first: what lies below the logical devices, the logical names or the
// definitions is answered by the functions of those objects, everything else by the path functions.

#include "frame/ApiCall.h"
#include "frame/guarded.h"
#include "frame/internal.h"
#include "frame/ListCache.h"
#include "kxLegacy/kxLegacyRoute.h"
#include "kxLegacy/kxLegacyText.h"
#include "kxovaapi.h"

namespace {

long definitionValue(const char* lpszKey, const Route& route, unsigned long iValue, char* name,
                     unsigned long* nameLength, char* value, unsigned long* valueLength)
{
    if (route.is("Boards")) return DCFG_BoardGetEnumValue(route.name, iValue, name, nameLength, value, valueLength);
    if (route.is("DefaultLogDevices")) {
        return DCFG_DefaultLogDeviceGetEnumValue(route.name, iValue, name, nameLength, value, valueLength);
    }
    if (!route.is("Protocols")) return ERROR_INVALID_PARAMETER;
    const auto parts = protocolPath(lpszKey);
    return DCFG_ProtocolGetEnumValue(parts[0].c_str(), parts[1].c_str(), parts[2].c_str(), parts[3].c_str(),
                                     parts[4].c_str(), iValue, name, nameLength, value, valueLength);
}

}  // namespace

long DCFG_RegGetEnumKey(const char* lpszKey, unsigned long iValue, char* buffer, unsigned long* length)
{
    ApiCall call("DCFG_RegGetEnumKey: ");
    KX_ENTRY(call, ">>lpszKey=%s iValue=%d", lpszKey, dec(iValue));
    if (!lpszKey) return ERROR_INVALID_PARAMETER;
    const Route route(lpszKey);
    switch (route.object) {
        case Route::logDevice:
            return call.done(LogDeviceGetEnum(nullptr, iValue, buffer, length));
        case Route::logName:
            return call.done(LogNameGetEnum(iValue, buffer, length));
        case Route::definition:
            return call.done(DCFG_TemplateGetEnumNoPrefix(route.templateClass, iValue, buffer, length));
        case Route::other:
            break;
    }
    return call.done(KxRegEnumKey(lpszKey, iValue, buffer, length));
}

long DCFG_RegGetEnumKey(const char* lpszKey, unsigned long iValue, CString* name)
{
    const ModuleContext context;
    return guarded([&]() -> long {
        if (!lpszKey || !name) return ERROR_INVALID_PARAMETER;
        return intoString<largeListCapacity>(*name, [&](char* buffer, unsigned long* length) {
            return DCFG_RegGetEnumKey(lpszKey, iValue, buffer, length);
        });
    });
}

long DCFG_RegGetEnumValue(const char* lpszKey, unsigned long iValue, char* name, unsigned long* nameLength,
                          char* value, unsigned long* valueLength)
{
    ApiCall call("DCFG_RegGetEnumValue: ");
    return guarded([&]() -> long {
        KX_ENTRY(call, ">>lpszKey=%s iValue=%d", lpszKey, dec(iValue));
        if (!lpszKey) return ERROR_INVALID_PARAMETER;
        const Route route(lpszKey);
        switch (route.object) {
            case Route::logDevice:
                return call.done(LogDeviceGetEnumValue(route.name, iValue, name, nameLength, value, valueLength));
            case Route::logName:
                return call.done(LogNameGetEnumValue(route.name, iValue, name, nameLength, value, valueLength));
            case Route::definition:
                return call.done(definitionValue(lpszKey, route, iValue, name, nameLength, value, valueLength));
            case Route::other:
                break;
        }
        return call.done(KxRegEnumValue(lpszKey, iValue, name, nameLength, value, valueLength));
    });
}

long DCFG_RegKeyExists(const char* lpszKey, unsigned long)
{
    constexpr char result[] = ">> return nErr=%d";
    ApiCall call("DCFG_RegKeyExists: ");
    KX_ENTRY(call, ">>lpszKey=%s", lpszKey);
    if (!lpszKey) return ERROR_INVALID_PARAMETER;
    const Route route(lpszKey);
    switch (route.object) {
        case Route::logDevice:
            return call.done(LogDeviceExists(route.name, 0), result);
        case Route::logName:
            return call.done(LogNameExists(route.name), result);
        case Route::definition:
            return call.done(DCFG_TemplateExists(route.templateClass, route.name, 0), result);
        case Route::other:
            break;
    }
    return call.done(DCFG_ERR_NOT_SUPPORTED, result);
}

long DCFG_RegSetValue(const char* lpszKey, const char* lpszParameter, const char* lpszValue)
{
    ApiCall call("DCFG_RegSetValue: ");
    KX_ENTRY(call, ">>lpszKey=%s lpszParameter=%s lpszValue=%s", lpszKey, lpszParameter, lpszValue);
    if (!lpszKey) return ERROR_INVALID_PARAMETER;
    // Two results, of which callers see the first alone: what a logical device or name answers stays in the trace,
    // and a path below the definitions, which are read-only, is accepted without effect.
    long nErr = ERROR_SUCCESS;
    long lRet = ERROR_SUCCESS;
    const Route route(lpszKey);
    switch (route.object) {
        case Route::logDevice:
            lRet = LogDeviceSetValue(route.name, lpszParameter, lpszValue);
            break;
        case Route::logName:
            lRet = LogNameSetValue(route.name, lpszParameter, lpszValue);
            break;
        case Route::definition:
            break;
        case Route::other:
            nErr = KxRegSetValue(lpszKey, lpszParameter, lpszValue);
            break;
    }
    KX_RESULT(call, "->return nErr=%x lRet=%d", hex(nErr), static_cast<int>(lRet));
    return nErr;
}

long DCFG_RegGetValue(const char* lpszKey, const char* lpszParameter, CString* value)
{
    ApiCall call("DCFG_RegGetValue: ");
    return guarded([&]() -> long {
        KX_ENTRY(call, ">>lpszKey=%s lpszParameter=%s psValue=%x", lpszKey, lpszParameter, hex(value));
        if (!lpszKey || !lpszParameter || !value) return ERROR_INVALID_PARAMETER;
        const Route route(lpszKey);
        const long nErr = intoString(*value, [&](char* buffer, unsigned long* length) {
            switch (route.object) {
                case Route::logDevice:
                    return DCFG_GetBoardAttribute(route.name, lpszParameter, buffer, length);
                case Route::logName:
                    return LogNameGetValue(route.name, lpszParameter, buffer, length);
                default:
                    return KxRegGetValue(lpszKey, lpszParameter, buffer, length);
            }
        });
        KX_RESULT(call, ">> return psValue=%s nErr=%x", value->GetString(), hex(nErr));
        return nErr;
    });
}

long DCFG_RegGetValue(const char* lpszKey, const char* lpszParameter, char* value, unsigned long* pLen)
{
    const ModuleContext context;
    return guarded([&]() -> long {
        if (!lpszKey || !lpszParameter || !value || !pLen) return ERROR_INVALID_PARAMETER;
        CString text;
        if (const long result = DCFG_RegGetValue(lpszKey, lpszParameter, &text); result != ERROR_SUCCESS)
            return result;
        return copyOut(text.GetString(), value, pLen);
    });
}

long DCFG_RegGetValueLang(const char* lpszKey, const char* lpszParameter, CString& value)
{
    const ModuleContext context;
    return DCFG_RegGetValue(lpszKey, lpszParameter, &value);
}
