// Handle functions: the registry of this machine below an open key, in this process. The path is taken as it is.

#include <cstring>
#include <string>

#include "frame/ApiCall.h"
#include "frame/guarded.h"
#include "frame/ListCache.h"
#include "kxovaapi.h"
#include "platform/support/win_handle.h"

namespace {

CCriticalSection s_lock;  // one creation, read or write at a time

long openKey(HKEY parent, const char* lpszKey, platform::RegistryKey& key, unsigned long access)
{
    HKEY opened = nullptr;
    const long result = KxBRegOpen(parent, lpszKey, opened, access);
    if (result == ERROR_SUCCESS) key.reset(opened);
    return result;
}

// A value as it is stored. Another process may make it longer between the two questions.
long readValue(HKEY key, const char* name, DWORD& type, std::string& data)
{
    for (;;) {
        DWORD size = 0;
        long result = RegQueryValueExA(key, name, nullptr, &type, nullptr, &size);
        if (result != ERROR_SUCCESS) return result;
        data.resize(size);
        result = RegQueryValueExA(key, name, nullptr, &type, reinterpret_cast<BYTE*>(data.data()), &size);
        if (result == ERROR_MORE_DATA) continue;
        if (result == ERROR_SUCCESS) data.resize(size);
        return result;
    }
}

long asText(DWORD type, std::string& data)
{
    switch (type) {
        case REG_SZ:
        case REG_EXPAND_SZ:
            // A stored text need not have a terminator.
            data.resize(strnlen(data.data(), data.size()));
            return ERROR_SUCCESS;
        case REG_DWORD: {
            DWORD number = 0;
            if (data.size() != sizeof number) return ERROR_INVALID_DATA;
            std::memcpy(&number, data.data(), sizeof number);
            data = std::to_string(number);
            return ERROR_SUCCESS;
        }
        default:
            return ERROR_UNSUPPORTED_TYPE;
    }
}

}  // namespace

long KxBRegOpen(HKEY parent, const char* lpszKey, HKEY& key, unsigned long access)
{
    ApiCall call("KxBRegOpen: ");
    KX_ENTRY(call, ">> lpszKey=%s access=%x", lpszKey, hex(access));
    return call.done(RegOpenKeyExA(parent, lpszKey, 0, access, &key));
}

long KxBRegKeyExists(HKEY parent, const char* lpszKey, unsigned long access)
{
    ApiCall call("KxBRegKeyExists: ");
    KX_ENTRY(call, ">> lpszKey=%s access=%x", lpszKey, hex(access));
    platform::RegistryKey key;
    return call.done(openKey(parent, lpszKey, key, access));
}

long KxBRegCreateKey(HKEY parent, const char* lpszKey)
{
    ApiCall call("KxBRegCreateKey: ");
    return guarded([&]() -> long {
        CSingleLock lock(&s_lock, TRUE);
        KX_ENTRY(call, ">> lpszKey=%s", lpszKey);
        platform::RegistryKey key;
        return call.done(RegCreateKeyExA(parent, lpszKey, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_READ | KEY_WRITE,
                                         nullptr, key.put(), nullptr));
    });
}

long KxBRegGetValue(HKEY parent, const char* lpszKey, const char* lpszParameter, CString& value)
{
    ApiCall call("KxBRegGetValue: ");
    return guarded([&]() -> long {
        CSingleLock lock(&s_lock, TRUE);
        KX_ENTRY(call, ">> lpszKey=%s lpszParameter=%s", lpszKey, lpszParameter);
        platform::RegistryKey key;
        std::string data;
        DWORD type = REG_NONE;
        long result = openKey(parent, lpszKey, key, KEY_QUERY_VALUE);
        if (result == ERROR_SUCCESS) result = readValue(key.get(), lpszParameter, type, data);
        if (result == ERROR_SUCCESS) result = asText(type, data);
        if (result == ERROR_SUCCESS) value = CString(data.c_str());
        return call.done(result);
    });
}

long KxBRegGetValue(HKEY parent, const char* lpszKey, const char* lpszParameter, char* buffer, unsigned long* length)
{
    const ModuleContext context;
    return guarded([&]() -> long {
        if (!buffer || !length) return ERROR_INVALID_PARAMETER;
        CString text;
        const long result = KxBRegGetValue(parent, lpszKey, lpszParameter, text);
        return result == ERROR_SUCCESS ? copyOut(text.GetString(), buffer, length) : result;
    });
}

long KxBRegSetValue(HKEY parent, const char* lpszKey, const char* lpszParameter, const char* lpszValue)
{
    ApiCall call("KxBRegSetValue: ");
    return guarded([&]() -> long {
        CSingleLock lock(&s_lock, TRUE);
        KX_ENTRY(call, ">> lpszKey=%s lpszParameter=%s lpszValue=%s", lpszKey, lpszParameter, lpszValue);
        if (!lpszValue) return ERROR_INVALID_PARAMETER;
        platform::RegistryKey key;
        long result = openKey(parent, lpszKey, key, KEY_SET_VALUE);
        if (result == ERROR_SUCCESS) {
            result = RegSetValueExA(key.get(), lpszParameter, 0, REG_SZ, reinterpret_cast<const BYTE*>(lpszValue),
                                    static_cast<DWORD>(std::strlen(lpszValue) + 1));
        }
        return call.done(result);
    });
}
