#include "kxepromapi.h"

#include <windows.h>

namespace {

constexpr wchar_t keyName[] = L"SOFTWARE\\TAVRONE\\NORIX\\Prommer";

// Every other type, size or failure means: no such thing.
bool isSet(const wchar_t* valueName) noexcept
{
    DWORD value = 0;
    DWORD size = sizeof value;
    return RegGetValueW(HKEY_LOCAL_MACHINE, keyName, valueName, RRF_RT_REG_DWORD, nullptr, &value, &size) ==
               ERROR_SUCCESS &&
           value != 0;
}

}  // namespace

int IsPgWithInternalPrommer()
{
    return isSet(L"InternalPrommer");
}

int IsInternalPrommerActive()
{
    return IsPgWithInternalPrommer() && isSet(L"InternalPrommerActive");
}
