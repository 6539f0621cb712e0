#include "trcEvents.h"

#include "trcPlatform.h"
#include "trcText.h"

namespace trc {

void reportToEventLog(WORD type, DWORD event, std::string_view first, std::string_view second) noexcept
{
    constexpr WORD category = 1;
    char texts[2][256];
    copyCut(texts[0], first);
    copyCut(texts[1], second);
    const char* strings[] = {texts[0], texts[1]};
    const HANDLE log = trcPlatform.registerEventSource(nullptr, "Kxotrc");
    if (!log) return;
    trcPlatform.reportEvent(log, type, category, event, nullptr, second.empty() ? 1 : 2, 0, strings, nullptr);
    trcPlatform.deregisterEventSource(log);
}

}  // namespace trc
