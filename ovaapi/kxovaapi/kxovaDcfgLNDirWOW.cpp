// The directory of the logical names.

#include <mutex>

#include "frame/directory.h"
#include "kxovaapi.h"

namespace {

ListCache s_names;
std::mutex s_mutex;

TextList fetchNames(ApiCall& call)
{
    TextList list;
    Reply reply = call.request(opcode::LogNameList, listCapacity);
    if (readList(reply, listCapacity, splitNames, list)) return list;
    if (!reply.ended()) KX_DETAIL(call, "server returned 0x%x", hex(reply.status()));
    return namesOneByOne(LogNameGetEnum);
}

}  // namespace

// The one function that serialises its callers for the whole enumeration step, and the one that lets an exception
// out: a mutex that cannot be locked is reported as std::system_error.
long DCFG_LogNameGetEnum(unsigned long iValue, char* buffer, unsigned long* length)
{
    const std::lock_guard lock(s_mutex);
    ApiCall call("DCFG_LogNameGetEnum: ");
    KX_ENTRY(call, ">> iValue=%d ", dec(iValue));
    if (!buffer || !length) return ERROR_INVALID_PARAMETER;
    ListCache::Handle list = s_names.get();
    if (!list) list = s_names.put(fetchNames(call));
    return directoryEntry(call, s_names, *list, iValue, buffer, length);
}
