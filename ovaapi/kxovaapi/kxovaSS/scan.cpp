// Hardware scan, creation of logical devices for found hardware, and the boards' not-supported lists.

#include <cstdio>

#include "channel/kxOvascp.h"
#include "frame/ApiCall.h"
#include "frame/guarded.h"
#include "frame/internal.h"
#include "frame/ListCache.h"
#include "kxovaapi.h"

namespace {

ListCache s_notSupported;

// Only the result reply says how it went; any other kind counts as done.
long resultOrDone(const ApiCall& call, Reply& reply)
{
    if (reply.kindIsResult()) return reply.result().done();
    return reply.ended() ? reply.status() : call.done(ERROR_SUCCESS);
}

}  // namespace

long DCFG_BoardScan()
{
    ApiCall call("DCFG_BoardScan: ");
    KX_ENTRY(call, ">> start");
    Reply reply = call.request(opcode::BoardScan);
    return resultOrDone(call, reply);
}

long DCFG_Scan(void)
{
    ApiCall call("DCFG_Scan: ");
    KX_ENTRY(call, ">> start");
    const long result = DCFG_BoardScan();
    KX_RESULT(call, "<< return %d", static_cast<int>(result));
    return result;
}

long DCFG_UpdateLogdevicesForDevice(const char* DevId, const char* Hwid)
{
    ApiCall call("DCFG_UpdateLogdevicesForDevice: ");
    KX_ENTRY(call, ">> DevId %s Hwid %s PID %d TID %d", DevId, Hwid, currentPid(), currentTid());
    Reply reply = call.request(opcode::UpdateLogdevicesForDevice, DevId, Hwid);
    return resultOrDone(call, reply);
}

long DCFG_CreateAllLogdevices(void)
{
    ApiCall call("DCFG_CreateAllLogdevices: ");
    KX_ENTRY(call, ">> start");
    return call.send(opcode::CreateAllLogdevices).done();
}

long DCFG_HasUninitializedInstances(void)
{
    ApiCall call("DCFG_HasUninitializedInstances: ");
    KX_ENTRY(call, ">> start");
    return call.send(opcode::HasUninitializedInstances).done();
}

long DCFG_BoardGetNotSupported(unsigned long iIndex, const char* BoardName, char* dst, unsigned long* pLen)
{
    ApiCall call("DCFG_BoardGetNotSupported: ");
    return guarded([&]() -> long {
        KX_ENTRY(call, ">> BoardName=%s ", BoardName);
        if (!BoardName) return ERROR_INVALID_PARAMETER;

        ListCache::Handle list = s_notSupported.get();
        if (!list) {
            char block[smallListCapacity] = {};
            unsigned long length = smallListCapacity;
            Reply reply = call.request(opcode::BoardGetNotSupported, BoardName, smallListCapacity);
            reply.orInvalidResponse().list(block, &length);
            if (reply.ended()) return reply.status();
            // A server that refuses leaves the block as it is: a list of empty texts. The result itself is traced
            // and not returned.
            reply.done();
            list = s_notSupported.put(splitNames(block, length));
        }
        for (unsigned long i = 0; i < list->size(); ++i) {
            const std::string& entry = (*list)[i];
            KX_DETAIL(call, "1:i=%d LogDev=%s ", dec(i), entry.c_str());
            if (i == iIndex) {
                if (dst && pLen) std::snprintf(dst, *pLen, "%s", entry.c_str());
                return call.done(ERROR_SUCCESS);
            }
        }
        s_notSupported.drop();
        return call.fail(DCFG_ERR_NO_MORE_ITEMS, "<< return DCFG_ERR_NO_MORE_ITEMS");
    });
}
