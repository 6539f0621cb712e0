// The state of devices, from the setup-interface library, and of the EPROM programmer, from the programmer library.

#include <cstdint>

#include "frame/LocalCall.h"
#include "kxepromapi.h"
#include "kxova/extensions.h"
#include "kxova/results.h"
#include "kxovaSS/extensionLibrary.h"

namespace {

constexpr char setupInterface[] = "KXOSOINX.DLL";

using GetDeviceStateEx2 = long __cdecl(const char*, unsigned char*, unsigned long*, unsigned long*);
using GetDeviceState = long __cdecl(const char*, unsigned long*, unsigned long*);

// What the setup interface is asked for about a board. It defines the words that are not named here.
struct BoardStateRecord
{
    struct Text
    {
        char* buffer;
        std::uint32_t capacity;
    };

    std::uint32_t size;
    std::uint32_t request;
    Text texts[2];
    std::uint32_t reserved[5];
};

constexpr std::uint32_t boardRequest = 6;

unsigned int traced(const unsigned long* value) noexcept
{
    return value ? hex(*value) : 0;
}

}  // namespace

long DCFG_GetDeviceStateEx(const char* lpszHardwareId, unsigned char* arg2, unsigned long* pdwStatus,
                           unsigned long* pdwProblem)
{
    const LocalCall call("DCFG_GetDeviceStateEx: ");
    KX_ENTRY(call, ">>lpszHardwareId=%s", lpszHardwareId);
    KX_DETAIL(call, "## vor DLL_Load ");
    ExtensionLibrary library(setupInterface);
    if (!library.module()) {
        KX_RESULT(call, "error loading library %x", hex(GetLastError()));
        return DCFG_ERR_CANT_FIND_DLL;
    }
    GetDeviceStateEx2* const query = library.find<GetDeviceStateEx2>("SoinGetDeviceStateEx2");
    KX_DETAIL(call, "##hiDll=0x%x lpGetDevStateExFkt=0x%x ", hex(library.module()),
              hex(reinterpret_cast<const void*>(query)));
    long lRet = DCFG_ERR_CANT_START_DLL;
    if (query) {
        lRet = query(lpszHardwareId, arg2, pdwStatus, pdwProblem);
        KX_DETAIL(call, "lRet=0x%x dwStatus=0x%x dwProblem=0x%x", hex(lRet), traced(pdwStatus), traced(pdwProblem));
    }
    KX_DETAIL(call, "## vor FreeDllDLL_Load ");
    library.unload();
    KX_DETAIL(call, "## nach FreeDllDLL_Load ");
    KX_RESULT(call, "<<return lRet=0x%x", hex(lRet));
    return lRet;
}

long DCFG_GetDeviceState(const char* lpszHardwareId, unsigned long* pdwStatus, unsigned long* pdwProblem)
{
    const LocalCall call("DCFG_GetDeviceState: ");
    KX_ENTRY(call, ">>lpszHardwareId=%s ", lpszHardwareId);
    const ExtensionLibrary library(setupInterface);
    if (!library.module()) {
        KX_RESULT(call, "<<return DCFG_ERR_CANT_FIND_DLL");
        return DCFG_ERR_CANT_FIND_DLL;
    }
    GetDeviceState* const query = library.find<GetDeviceState>("SoinGetDeviceState");
    KX_DETAIL(call, "hiDll=0x%x lpGetDevStateFkt=0x%x ", hex(library.module()),
              hex(reinterpret_cast<const void*>(query)));
    long lRet = DCFG_ERR_CANT_START_DLL;
    if (query) {
        lRet = query(lpszHardwareId, pdwStatus, pdwProblem);
        KX_DETAIL(call, "lRet=0x%x dwStatus=0x%x dwProblem=0x%x", hex(lRet), traced(pdwStatus), traced(pdwProblem));
    }
    KX_RESULT(call, "<<return lRet=0x%x", hex(lRet));
    return lRet;
}

long DCFG_GetBoardState(const char* lpszHardwareId, unsigned long, unsigned long* pdwStatus,
                        unsigned long* pdwProblem)
{
    const ModuleContext context;
    static_assert(sizeof(BoardStateRecord) == 44);
    char texts[2][260] = {};
    BoardStateRecord record = {};
    record.size = sizeof record;
    record.request = boardRequest;
    for (int i = 0; i < 2; ++i)
        record.texts[i] = {texts[i], sizeof texts[i]};
    return DCFG_GetDeviceStateEx(lpszHardwareId, reinterpret_cast<unsigned char*>(&record), pdwStatus, pdwProblem);
}

int DCFGM_IsPgWithInternalPrommer(void)
{
    const ModuleContext context;
    return IsPgWithInternalPrommer();
}

int DCFGM_IsInternalPrommerActive(void)
{
    const ModuleContext context;
    return IsInternalPrommerActive();
}
