// Bus profiles, and the values that a logical device takes from the definition of its protocol.

#include <string_view>

#include "frame/ApiCall.h"
#include "frame/guarded.h"
#include "frame/internal.h"
#include "frame/ListCache.h"
#include "kxLegacy/kxLegacyKeys.h"
#include "kxovaapi.h"
#include "kxstring32x.h"

namespace {

// Callers name the collections of bus parameters, the server numbers them.
struct ProfileName
{
    const char* marker;
    const char* named;
    const char* numbered;
};

constexpr ProfileName profileNames[] = {
    {"\\dp\\", "busparam\\dp", "busparam\\0"},
    {"\\std\\", "busparam\\std", "busparam\\1"},
    {"\\uni\\", "busparam\\uni", "busparam\\2"},
    {"\\user\\", "busparam\\user", "busparam\\3"},
};

CString numberedProfile(const char* path)
{
    CString numbered = path;
    if (numbered.Find("busparam") < 0) return numbered;
    for (const ProfileName& name : profileNames) {
        if (numbered.Find(name.marker) >= 0) numbered.Replace(name.named, name.numbered);
    }
    return numbered;
}

// Where the definition of a protocol keeps the values that hold for its parameters.
CString profilePath(const CString& cpType)
{
    return sKeyConcat(keys::protocolDefinitions, cpType, "Params");
}

// Appends what an enumeration yields up to its end; nothing when it ends otherwise.
template <typename Enumerate>
long appendAll(CStringList& list, Enumerate enumerate)
{
    CStringList found;
    for (unsigned long i = 0;; ++i) {
        char text[textCapacity] = {};
        unsigned long length = sizeof text;
        const long result = enumerate(i, text, &length);
        if (result == DCFG_ERR_NO_MORE_ITEMS) break;
        if (result != ERROR_SUCCESS) return result;
        found.AddTail(CString(text, static_cast<int>(length)));
    }
    list.AddTail(&found);
    return ERROR_SUCCESS;
}

void appendItems(CStringList& list, CString items)
{
    while (!items.IsEmpty()) {
        CString item = sFirstFromSeperatedListOneOf(&items, ",;");
        if (!item.Trim().IsEmpty()) list.AddTail(item);
    }
}

}  // namespace

long DCFG_ProfileCollectionExists(const char* lpszProfile, const char* lpszParameter, const char* lpszValue)
{
    ApiCall call("DCFG_ProfileCollectionExists: ");
    return guarded([&]() -> long {
        const auto traceArguments = [&](const char* parameter) {
            KX_ENTRY(call, ">>lpszProfile=%s lpszParameter=%s lpszValue=%s", lpszProfile, parameter, lpszValue);
        };
        traceArguments(lpszParameter);
        const CString numbered = lpszParameter ? numberedProfile(lpszParameter) : CString();
        const char* const parameter = lpszParameter ? numbered.GetString() : nullptr;
        traceArguments(parameter);
        return call.request(opcode::ProfileCollectionExists, lpszProfile, parameter, lpszValue)
            .orInvalidResponse()
            .done();
    });
}

long DCFG_ProtocolGetEnumBusprofilesLang(const char* ProtocolFile, unsigned long index, const char* lpszLanguage,
                                         char* value, unsigned long* pLen)
{
    ApiCall call("DCFG_ProtocolGetEnumBusprofilesLang: ");
    return guarded([&]() -> long {
        KX_ENTRY(call, ">> ProtocolFile %s index=%d ", ProtocolFile, dec(index));
        if (!ProtocolFile || !value || !pLen) return ERROR_INVALID_PARAMETER;
        char profile[textCapacity] = {};
        unsigned long profileLength = sizeof profile;
        long result = DCFG_ProtocolGetEnumBusprofiles(ProtocolFile, index, profile, &profileLength);
        if (result != ERROR_SUCCESS) return call.done(result);

        const unsigned long capacity = *pLen;
        const CString id = sKeyConcat("BusparamResource", profile);
        result = DCFG_BoardGetResourceString("Protocols", ProtocolFile, id, lpszLanguage, value, pLen);
        if (result == ERROR_SUCCESS || result == DCFG_ERR_BUFFER_TOO_SHORT) return call.done(result);
        // A profile without a text in any language is shown as the protocol names it.
        *pLen = capacity;
        return call.done(copyOut(profile, value, pLen));
    });
}

long DCFG_LogDeviceEnumSetProfile(const char* lpszLogDevice, const char* lpszParameter, const char* lpszValue)
{
    constexpr char noValue[] = "<< return ERROR DCFG_PROFILE_NO_VALUE";
    ApiCall call("DCFG_LogDeviceEnumSetProfile: ");
    return guarded([&]() -> long {
        KX_ENTRY(call, ">> lpszLogDevice=%s lpszParameter=%s", lpszLogDevice, lpszParameter);
        if (LogDeviceSetValue(lpszLogDevice, lpszParameter, lpszValue) != ERROR_SUCCESS) {
            return call.fail(DCFG_PROFILE_NO_VALUE, noValue);
        }
        CString cpType;
        if (DCFG_LogDeviceGetValue(lpszLogDevice, "CP_TYPE", &cpType) != ERROR_SUCCESS) {
            return call.fail(DCFG_PROFILE_NO_VALUE, noValue);
        }
        return call.done(DCFG_LogDeviceSetProfileR(lpszLogDevice, profilePath(cpType), lpszParameter),
                         "<< return %d");
    });
}

long DCFG_LogDeviceEnumSetProfileEx(const char* lpszLogDevice, const char* lpszParameter, const char* lpszValue)
{
    const ModuleContext context;
    return DCFG_LogDeviceEnumSetProfile(lpszLogDevice, lpszParameter, lpszValue);
}

long DCFG_LogDeviceGetLinkedValue(const char* lpszLogDevice, const char* lpszParameter, CString* value)
{
    ApiCall call("DCFG_LogDeviceGetLinkedValue: ");
    return guarded([&]() -> long {
        KX_ENTRY(call, ">> lpszLogDevice=%s lpszParameter=%s", lpszLogDevice, lpszParameter);
        if (!lpszLogDevice || !lpszParameter || !value) return ERROR_INVALID_PARAMETER;
        CString cpType;
        if (const long result = DCFG_LogDeviceGetValue(lpszLogDevice, "CP_TYPE", &cpType); result != ERROR_SUCCESS) {
            return call.done(result);
        }
        return call.done(DCFG_RegGetValue(profilePath(cpType), lpszParameter, value));
    });
}

long DCFG_LogDeviceGetValidEnumList(const char* lpszLogDevice, const char* lpszParameter, CStringList* list)
{
    ApiCall call("DCFG_LogDeviceGetValidEnumList: ");
    return guarded([&]() -> long {
        KX_ENTRY(call, ">> lpszLogDevice=%s lpszParameter=%s", lpszLogDevice, lpszParameter);
        if (!lpszLogDevice || !lpszParameter || !list) return ERROR_INVALID_PARAMETER;

        const bool profiles = _stricmp(lpszParameter, "busparam") == 0;
        const bool rates = _stricmp(lpszParameter, "baudrate") == 0;
        if (!profiles && !rates) {
            CString items;
            const long result = DCFG_LogDeviceGetLinkedValue(lpszLogDevice, lpszParameter, &items);
            if (result == ERROR_SUCCESS) appendItems(*list, items);
            return call.done(result);
        }

        CString cpType;
        if (const long result = DCFG_LogDeviceGetValue(lpszLogDevice, "CP_TYPE", &cpType); result != ERROR_SUCCESS) {
            return call.done(result);
        }
        if (profiles) {
            return call.done(appendAll(*list, [&](unsigned long i, char* text, unsigned long* length) {
                return DCFG_ProtocolGetEnumBusprofiles(cpType, i, text, length);
            }));
        }
        // A protocol without bus profiles has baud rates all the same; its devices have no such value.
        CString profile;
        DCFG_LogDeviceGetValue(lpszLogDevice, "busparam", &profile);
        return call.done(appendAll(*list, [&](unsigned long i, char* text, unsigned long* length) {
            return DCFG_ProtocolGetEnumBaudrate(cpType, profile, i, text, length);
        }));
    });
}
