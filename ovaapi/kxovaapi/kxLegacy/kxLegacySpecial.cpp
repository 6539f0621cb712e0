// Values with requests of their own, and the replication entries.

#include "frame/ApiCall.h"
#include "frame/guarded.h"
#include "kxLegacy/kxLegacyKeys.h"
#include "kxovaapi.h"
#include "kxstring32x.h"

namespace {

constexpr std::uint32_t valueMarker = 1;  // a constant that ends the requests for one value

}  // namespace

long DCFG_SpecialSetValue(const char* lpszParameter, const char* lpszValue)
{
    ApiCall call("DCFG_SpecialSetValue: ");
    KX_ENTRY(call, ">> lpszParameter=%s lpszValue=%s", lpszParameter, lpszValue);
    if (!lpszParameter || !lpszValue) return ERROR_INVALID_PARAMETER;
    return call.send(opcode::SpecialSetValue, lpszParameter, lpszValue).done();
}

long DCFG_GetBoardAttributeLang(const char* lpszDeviceId, const char* lpszParameter, const char* lpszLanguage,
                                char* value, unsigned long* pLen)
{
    ApiCall call("DCFG_GetBoardAttribute: ");  // traced as the form without a language
    KX_ENTRY(call, ">> lpszDeviceId=%s lpszParameter=%s", lpszDeviceId, lpszParameter);
    if (!lpszDeviceId || !lpszParameter || !value) return ERROR_INVALID_PARAMETER;
    return call.request(opcode::BoardGetAttributeLang, lpszDeviceId, lpszParameter, lpszLanguage, valueMarker)
        .orInvalidResponse()
        .plainText(value, pLen)
        .done();
}

long DCFG_GetDefaultLogDeviceValue(const char* lpszDefaultLogdevice, const char* lpszParameter, char* value,
                                   unsigned long* pLen)
{
    ApiCall call("DCFG_GetDefaultLogDeviceValue: ");
    KX_ENTRY(call, ">> lpszDefaultLogdevice=%s lpszParameter=%s", lpszDefaultLogdevice, lpszParameter);
    if (!lpszDefaultLogdevice || !lpszParameter || !value) return ERROR_INVALID_PARAMETER;
    return call
        .request(opcode::DefaultLogDeviceGetValue, lpszDefaultLogdevice, lpszParameter, Capacity{pLen}, valueMarker)
        .orInvalidResponse()
        .plainText(value, pLen)
        .done();
}

long DCFG_ReplicateEntry(const char* lpszEntryName, const char* lpszEntryValue)
{
    ApiCall call("DCFG_ReplicateEntry: ");
    return guarded([&]() -> long {
        KX_ENTRY(call, ">>lpszEntryName %s lpszEntryValue %s ", lpszEntryName, lpszEntryValue);
        const CString key = sKeyConcat(keys::logDevices, "DCFG_TEMP_LOG_DEVICE____REPLICATION");
        // Asked for by its whole path, which names no logical device: the device that collects the entries thus
        // counts as missing, and the function that would make it from a template does nothing any more.
        if (LogDeviceExists(key, 0) != ERROR_SUCCESS) {
            KX_DETAIL(call, "create Repl-Key=%s", key.GetString());
            DCFG_RegCopyKeyEx(key, key);
        }
        const long lRet = DCFG_RegSetValue(key, lpszEntryName, lpszEntryValue);
        KX_DETAIL(call, "<< return lRet=0x%x", hex(lRet));
        return lRet;
    });
}
