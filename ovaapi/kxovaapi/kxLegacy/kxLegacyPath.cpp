// Path functions: a registry key by its path below HKEY_LOCAL_MACHINE. The server does the work; the requests travel
// over its pipe, with the path already mapped into the 32-bit view.

#include "frame/ApiCall.h"
#include "frame/guarded.h"
#include "kxLegacy/kxLegacyText.h"
#include "kxLegacy/kxLegacyWow64.h"
#include "kxovaapi.h"

namespace {

// Sends a request whose first field is the mapped key.
template <typename... Fields>
Reply requestForKey(ApiCall& call, opcode::Code code, const char* lpszKey, const Fields&... fields)
{
    std::string key = lpszKey;
    getWoW64Node(key);
    return call.requestOverPipe(code, key.c_str(), fields...);
}

}  // namespace

long KxRegDelKey(const char* lpszKey)
{
    ApiCall call("KxRegDelKey: ");
    return guarded([&]() -> long {
        if (!lpszKey) return ERROR_INVALID_PARAMETER;
        KX_ENTRY(call, ">> lpszKey=%s ", lpszKey);
        return requestForKey(call, opcode::RegDelete, lpszKey).orInvalidResponse().done();
    });
}

long KxRegDelValue(const char* lpszKey, const char* lpszParameter)
{
    ApiCall call("KxRegDelValue: ");
    return guarded([&]() -> long {
        if (!lpszKey || !lpszParameter) return ERROR_INVALID_PARAMETER;
        KX_ENTRY(call, ">> lpszKey=%s lpszParameter=%s ", lpszKey, lpszParameter);
        // The same operation as for a key: the second text makes it the deletion of a value.
        return requestForKey(call, opcode::RegDelete, lpszKey, lpszParameter).orInvalidResponse().done();
    });
}

long KxRegCreateKey(const char* lpszKey)
{
    ApiCall call("KxRegCreateKey: ");
    return guarded([&]() -> long {
        if (!lpszKey) return ERROR_INVALID_PARAMETER;
        KX_ENTRY(call, ">> lpszKey=%s ", lpszKey);
        return requestForKey(call, opcode::RegCreateKey, lpszKey).orInvalidResponse().done();
    });
}

long KxRegSetValue(const char* lpszKey, const char* lpszParameter, const char* lpszValue)
{
    ApiCall call("KxRegSetValue: ");
    return guarded([&]() -> long {
        if (!lpszKey || !lpszParameter || !lpszValue) return ERROR_INVALID_PARAMETER;
        KX_ENTRY(call, ">> lpszKey=%s lpszParameter=%s lpszValue=%s ", lpszKey, lpszParameter, lpszValue);
        return requestForKey(call, opcode::RegSetValue, lpszKey, lpszParameter, lpszValue).orInvalidResponse().done();
    });
}

long KxRegEnumKey(const char* lpszKey, unsigned long iValue, char* buffer, unsigned long* length)
{
    ApiCall call("KxRegEnumKey: ");
    return guarded([&]() -> long {
        if (!lpszKey || !buffer || !length) return ERROR_INVALID_PARAMETER;
        KX_ENTRY(call, ">> lpszKey=%s iValue=%d ", lpszKey, dec(iValue));
        return requestForKey(call, opcode::RegEnumKey, lpszKey, iValue)
            .orInvalidResponse()
            .plainText(buffer, length)
            .done();
    });
}

long KxRegGetValue(const char* lpszKey, const char* lpszParameter, char* buffer, unsigned long* length)
{
    ApiCall call("KxRegGetValue: ");
    return guarded([&]() -> long {
        if (!lpszKey || !lpszParameter || !buffer || !length) return ERROR_INVALID_PARAMETER;
        KX_ENTRY(call, ">> lpszKey=%s lpszParameter=%s ", lpszKey, lpszParameter);
        return requestForKey(call, opcode::RegGetValue, lpszKey, lpszParameter)
            .orInvalidResponse()
            .plainText(buffer, length)
            .done();
    });
}

long KxRegEnumValue(const char* lpszKey, unsigned long iValue, char* name, unsigned long* nameLength, char* value,
                    unsigned long* valueLength)
{
    ApiCall call("KxRegEnumValue: ");
    return guarded([&]() -> long {
        if (!lpszKey || !name || !nameLength || !value || !valueLength) return ERROR_INVALID_PARAMETER;
        KX_ENTRY(call, ">> lpszKey=%s iValue=%d ", lpszKey, dec(iValue));
        return requestForKey(call, opcode::RegEnumValue, lpszKey, iValue)
            .orInvalidResponse()
            .plainText(name, nameLength)
            .plainText(value, valueLength)
            .done();
    });
}

long KxRegEnumKey(const char* lpszKey, unsigned long iValue, CString& name)
{
    const ModuleContext context;
    return guarded([&] {
        return intoString(
            name, [&](char* buffer, unsigned long* length) { return KxRegEnumKey(lpszKey, iValue, buffer, length); });
    });
}

long KxRegGetValue(const char* lpszKey, const char* lpszParameter, CString& value)
{
    const ModuleContext context;
    return guarded([&] {
        return intoString(value, [&](char* buffer, unsigned long* length) {
            return KxRegGetValue(lpszKey, lpszParameter, buffer, length);
        });
    });
}

long KxRegEnumValue(const char* lpszKey, unsigned long iValue, CString& name, CString& value)
{
    const ModuleContext context;
    return guarded([&] {
        return intoString(value, [&](char* valueBuffer, unsigned long* valueLength) {
            return intoString(name, [&](char* nameBuffer, unsigned long* nameLength) {
                return KxRegEnumValue(lpszKey, iValue, nameBuffer, nameLength, valueBuffer, valueLength);
            });
        });
    });
}
