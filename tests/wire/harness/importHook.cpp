#include "importHook.h"

#include <windows.h>

#include <cstring>
#include <stdexcept>
#include <string>

namespace {

// The entry of the library's import table that holds a function's address.
const void** importSlot(const char* function)
{
    auto* const image = reinterpret_cast<BYTE*>(GetModuleHandleA("kxovaapi.dll"));
    if (!image) throw std::runtime_error("kxovaapi.dll is not loaded");
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(image);
    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(image + dos->e_lfanew);
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    const auto* module = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(image + directory.VirtualAddress);
    for (; module->Name; ++module) {
        const auto* name = reinterpret_cast<const IMAGE_THUNK_DATA*>(image + module->OriginalFirstThunk);
        auto* slot = reinterpret_cast<const void**>(image + module->FirstThunk);
        for (; name->u1.AddressOfData; ++name, ++slot) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
            const auto* const import = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(image + name->u1.AddressOfData);
            if (std::strcmp(import->Name, function) == 0) return slot;
        }
    }
    throw std::runtime_error(std::string("kxovaapi.dll does not import ") + function);
}

}  // namespace

ImportHook::ImportHook(const char* function, const void* replacement) : slot_(importSlot(function)), original_(*slot_)
{
    set(replacement);
}

void ImportHook::set(const void* target) const
{
    DWORD protection = 0;
    VirtualProtect(slot_, sizeof *slot_, PAGE_READWRITE, &protection);
    *slot_ = target;
    VirtualProtect(slot_, sizeof *slot_, protection, &protection);
}
