// Aliases of boards and net types, and the devices that are installed.

#include <algorithm>

#include "frame/ApiCall.h"
#include "frame/ListCache.h"
#include "frame/LocalCall.h"
#include "kxLegacy/kxLegacyKeys.h"
#include "kxLegacy/kxLegacyText.h"
#include "kxovaapi.h"
#include "kxstring32x.h"

namespace {

char boards[] = "Boards";

ListCache s_installed;

bool readAttribute(const CString& deviceId, const char* name, CString& value)
{
    return intoString(value, [&](char* buffer, unsigned long* length) {
               return DCFG_GetBoardAttribute(deviceId, name, buffer, length);
           }) == ERROR_SUCCESS;
}

// Visits the DeviceID of every board template until the visitor says that it has what it wants.
template <typename Visit>
void forEachBoard(Visit visit)
{
    for (unsigned long i = 0;; ++i) {
        char board[textCapacity] = {};
        unsigned long length = sizeof board;
        if (TemplateGetEnum(boards, i, board, &length) != ERROR_SUCCESS) return;
        CString deviceId;
        const long result = intoString(deviceId, [&](char* buffer, unsigned long* idLength) {
            return TemplateGetValue(boards, board, "DeviceID", buffer, idLength);
        });
        if (result == ERROR_SUCCESS && visit(deviceId)) return;
    }
}

// The DeviceIDs of what plug-and-play and the server's own scan have found.
TextList installedIds()
{
    TextList ids;
    for (unsigned long i = 0;; ++i) {
        char texts[6][textCapacity] = {};
        unsigned long lengths[6];
        std::fill(std::begin(lengths), std::end(lengths), sizeof texts[0]);
        unsigned long state = 0;
        if (DCFG_EnumInstBoard(i, texts[0], &lengths[0], texts[1], &lengths[1], texts[2], &lengths[2], texts[3],
                               &lengths[3], texts[4], &lengths[4], texts[5], &lengths[5], &state) != ERROR_SUCCESS) {
            return ids;
        }
        ids.emplace_back(texts[1]);
    }
}

TextList installedDevices()
{
    TextList names;
    const TextList ids = installedIds();
    forEachBoard([&](const CString& deviceId) {
        const bool installed = std::any_of(
            ids.begin(), ids.end(), [&](const std::string& id) { return deviceId.CompareNoCase(id.c_str()) == 0; });
        if (!installed) return false;
        CString name;
        for (const char* const attribute : {"Alias", "DescText"}) {
            if (name.IsEmpty()) readAttribute(deviceId, attribute, name);
        }
        names.emplace_back(name.IsEmpty() ? deviceId.GetString() : name.GetString());
        return false;
    });
    return names;
}

}  // namespace

CString DCFG_AliasRecalcDeviceID(CString sName)
{
    const ModuleContext context;
    CString found;
    guarded([&]() -> long {
        found = sName;
        forEachBoard([&](const CString& deviceId) {
            CString alias;
            if (!readAttribute(deviceId, "Alias", alias) || alias.CompareNoCase(sName) != 0) return false;
            found = deviceId;
            return true;
        });
        return ERROR_SUCCESS;
    });
    return found;
}

CString DCFG_AliasRecalcNetType(CString sName)
{
    const ModuleContext context;
    CString found;
    guarded([&]() -> long {
        found = sName;
        CString netType;
        CString alias;
        for (unsigned long i = 0; NetTypeGetEnum(i, &netType) == ERROR_SUCCESS; ++i) {
            const CString key = sKeyConcat(keys::protocolDefinitions, netType);
            if (KxRegGetValue(key, "Alias", alias) != ERROR_SUCCESS || alias.CompareNoCase(sName) != 0) continue;
            found = netType;
            break;
        }
        return ERROR_SUCCESS;
    });
    return found;
}

long InstDeviceGetEnum(unsigned long iValue, char* buffer, unsigned long* length)
{
    ApiCall call("InstDeviceGetEnum: ");
    return guarded([&]() -> long {
        KX_ENTRY(call, ">> iValue=%d ", dec(iValue));
        if (!buffer || !length) return ERROR_INVALID_PARAMETER;
        ListCache::Handle list = s_installed.get();
        if (!list) list = s_installed.put(installedDevices());
        if (iValue >= list->size()) {
            s_installed.drop();
            return call.fail(DCFG_ERR_NO_MORE_ITEMS, "<< return DCFG_ERR_NO_MORE_ITEMS");
        }
        return call.done(copyOut((*list)[iValue], buffer, length));
    });
}
