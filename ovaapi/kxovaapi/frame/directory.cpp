#include "frame/directory.h"

long directoryEntry(ApiCall& call, ListCache& cache, const TextList& list, unsigned long iValue, char* buffer,
                    unsigned long* length)
{
    // Only the trace wants to see the entries that are passed; without it a long list costs no more an item than a
    // short one.
    if (TrcEnabled(TRC_DETAIL)) {
        for (unsigned long i = 0; i < list.size() && i <= iValue; ++i)
            KX_DETAIL(call, "1:i=%d LogDev=%s ", dec(i), list[i].c_str());
    }
    if (iValue < list.size()) return call.done(copyOut(list[iValue], buffer, length));
    cache.drop();
    return call.fail(DCFG_ERR_NO_MORE_ITEMS, "<< return DCFG_ERR_NO_MORE_ITEMS");
}
