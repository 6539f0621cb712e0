#include "frame/directory.h"

long directoryEntry(ApiCall& call, ListCache& cache, const TextList& list, unsigned long iValue, char* buffer,
                    unsigned long* length)
{
    for (unsigned long i = 0; i < list.size(); ++i) {
        KX_DETAIL(call, "1:i=%d LogDev=%s ", dec(i), list[i].c_str());
        if (i == iValue) return call.done(copyOut(list[i], buffer, length));
    }
    cache.drop();
    return call.fail(DCFG_ERR_NO_MORE_ITEMS, "<< return DCFG_ERR_NO_MORE_ITEMS");
}
