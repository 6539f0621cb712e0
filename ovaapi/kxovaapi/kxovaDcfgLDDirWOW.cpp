// The directory of the logical devices.

#include "frame/directory.h"
#include "frame/guarded.h"
#include "kxovaapi.h"

namespace {

ListCache s_devices;

TextList fetchDevices(ApiCall& call)
{
    TextList list;
    Reply reply = call.request(opcode::LogDeviceList, listCapacity);
    if (readList(reply, listCapacity, splitNames, list)) return list;
    return namesOneByOne([](unsigned long i, char* name, unsigned long* length) {
        return LogDeviceGetEnum(nullptr, i, name, length);
    });
}

}  // namespace

long DCFG_LogDeviceGetEnum(unsigned long iValue, char* buffer, unsigned long* length)
{
    ApiCall call("DCFG_LogDeviceGetEnum: ");
    return guarded([&]() -> long {
        KX_ENTRY(call, ">> iValue=%d ", dec(iValue));
        if (!buffer || !length) return ERROR_INVALID_PARAMETER;
        ListCache::Handle list = s_devices.get();
        if (!list) list = s_devices.put(fetchDevices(call));
        return directoryEntry(call, s_devices, *list, iValue, buffer, length);
    });
}
