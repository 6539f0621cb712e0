#include "kxLegacy/enumTexts.h"

#include "frame/internal.h"
#include "frame/ListCache.h"
#include "frame/LocalCall.h"
#include "kxovaapi.h"
#include "kxstring32x.h"

namespace {

constexpr std::uint32_t specializedCapacity = 2048;

// Where the display texts of a parameter's values are.
struct TextResource
{
    CString folder;
    CString subfolder;
    CString prefix;
};

bool rawValue(const char* lpszLogDevice, const char* lpszParameter, CString& value)
{
    return DCFG_LogDeviceGetValue(lpszLogDevice, lpszParameter, &value) == ERROR_SUCCESS;
}

TextResource resourceOf(const char* lpszParameter, const CString& deviceId, const CString& cpType)
{
    if (_stricmp(lpszParameter, "baudrate") == 0) return {"Boards", deviceId, "BaudrateResource"};
    if (_stricmp(lpszParameter, "busparam") == 0) return {"Protocols", cpType, "BusparamResource"};
    return {};
}

CString osLanguage()
{
    CString name;
    CString extension;
    CString code;
    DCFG_GetLanguage(name, extension);
    ConvertTALUNToOsLanguage(extension, &code);
    return code;
}

CString translated(const TextResource& resource, const CString& language, const char* item, const CString& key)
{
    const CString id = resource.prefix.IsEmpty() ? CString() : sKeyConcat(resource.prefix, key);
    char text[textCapacity] = {};
    unsigned long length = sizeof text;
    if (DCFG_BoardGetResourceString(resource.folder, resource.subfolder, id, language, text, &length) !=
        ERROR_SUCCESS) {
        return item;
    }
    return key + "/" + CString(text, static_cast<int>(length));
}

void appendItems(CStringList& list, const std::vector<char>& block)
{
    for (const std::string& item : splitNames(block.data(), block.size()))
        list.AddTail(item.c_str());
}

void enumList(ApiCall& call, opcode::Code code, std::uint32_t capacity, const char* lpszLogDevice,
              const char* lpszParameter, CStringList* list)
{
    guarded([&]() -> long {
        KX_ENTRY(call, ">>lpszLogDevice=%s lpszParameter=%s", lpszLogDevice, lpszParameter);
        if (!lpszLogDevice || !lpszParameter || !list) return ERROR_INVALID_PARAMETER;
        std::vector<char> block;
        const Reply reply = requestEnumList(call, code, capacity, lpszLogDevice, lpszParameter, block);
        if (reply.ok()) appendItems(*list, block);
        return reply.done();
    });
}

}  // namespace

Reply requestEnumList(ApiCall& call, opcode::Code code, std::uint32_t capacity, const char* lpszLogDevice,
                      const char* lpszParameter, std::vector<char>& block)
{
    block.assign(capacity, 0);
    unsigned long length = capacity;
    Reply reply = call.request(code, lpszLogDevice, lpszParameter, capacity);
    block.resize(reply.orInvalidResponse().list(block.data(), &length).ok() ? length : 0);
    return reply;
}

void DCFG_TranslateValueList(const char* lpszLogDevice, const char* lpszParameter, const char* block,
                             unsigned long length, CStringList& list)
{
    const LocalCall call("DCFG_TranslateValueList: ");
    KXTRACE(call.name(), TRC_PA, ">>LogDevice %s Parameter %s", lpszLogDevice, lpszParameter);
    CString deviceId;
    CString cpType;
    if (!rawValue(lpszLogDevice, "DeviceID", deviceId) || !rawValue(lpszLogDevice, "CP_TYPE", cpType)) return;

    const CString language = osLanguage();
    const TextResource resource = resourceOf(lpszParameter, deviceId, cpType);
    for (const std::string& item : splitList(block, length)) {
        const CString key = sFirstFromSeperatedListOneOf(CString(item.c_str()), "/");
        if (!key.IsEmpty()) list.AddTail(translated(resource, language, item.c_str(), key));
    }
}

void DCFG_LogDeviceGetMostSpecializedEnumList(const char* lpszLogDevice, const char* lpszParameter, CStringList* list)
{
    ApiCall call("DCFG_LogDeviceGetMostSpecializedEnumList: ");
    enumList(call, opcode::LogDeviceGetMostSpecializedEnumList, specializedCapacity, lpszLogDevice, lpszParameter,
             list);
}

void DCFG_LogDeviceGetAverageEnumList(const char* lpszLogDevice, const char* lpszParameter, CStringList* list)
{
    ApiCall call("DCFG_LogDeviceGetAverageEnumList: ");
    enumList(call, opcode::LogDeviceGetAverageEnumList, largeListCapacity, lpszLogDevice, lpszParameter, list);
}

long DCFG_LogDeviceGetEnumStringLang(const char* lpszLogDevice, const char* lpszParameter, const char* lpszValue,
                                     CString* text)
{
    ApiCall call("DCFG_LogDeviceGetEnumStringLang: ");
    return guarded([&]() -> long {
        KX_ENTRY(call, ">>lpszLogDevice=%s lpszParameter=%s", lpszLogDevice, lpszParameter);
        if (!lpszLogDevice || !lpszParameter || !text) return ERROR_INVALID_PARAMETER;

        CString sIsValue = lpszValue;
        if (!lpszValue) {
            const long lRet = DCFG_LogDeviceGetValue(lpszLogDevice, lpszParameter, &sIsValue);
            KX_DETAIL(call, "lRet %x sIsValue=%s", hex(lRet), sIsValue.GetString());
            if (lRet != ERROR_SUCCESS) return lRet;
        }

        std::vector<char> block;
        const Reply reply = requestEnumList(call, opcode::LogDeviceGetMostSpecializedEnumList, specializedCapacity,
                                            lpszLogDevice, lpszParameter, block);
        if (!reply.ok()) return reply.done();
        CStringList items;
        DCFG_TranslateValueList(lpszLogDevice, lpszParameter, block.data(), static_cast<unsigned long>(block.size()),
                                items);
        // A device without board or protocol still has what the items say themselves.
        if (items.IsEmpty()) appendItems(items, block);

        for (POSITION at = items.GetHeadPosition(); at;) {
            CString sText = items.GetNext(at);
            const CString sValue = sFirstFromSeperatedListOneOf(&sText, "/");
            KX_DETAIL(call, "sValue %s sIsValue=%s", sValue.GetString(), sIsValue.GetString());
            if (sValue.CompareNoCase(sIsValue) != 0) continue;
            *text = sText;
            KX_RESULT(call, "<< ok");
            return ERROR_SUCCESS;
        }
        return call.fail(DCFG_ERR_NO_MORE_ITEMS, "<< DCFG_ERR_NO_MORE_ITEMS");
    });
}
