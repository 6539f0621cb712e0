#include "library/bind.h"

#include <windows.h>

#include "library/references.h"
#include "results.h"

namespace {

std::string fault;

}  // namespace

extern "C" void kxovaNotLoaded()
{
    throw LibraryFailure(fault);
}

void bindLibrary()
{
    // No message box of the system: the sentence is this program's.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    const HMODULE library = LoadLibraryA("kxovaapi.dll");
    if (!library) {
        fault = "kxovaapi.dll cannot be loaded: " + windowsText(static_cast<long>(GetLastError()));
        return;
    }
    for (const KxovaReference* reference = kxovaReferences; reference->name; ++reference) {
        if (const FARPROC function = GetProcAddress(library, reference->name)) {
            *reference->address = reinterpret_cast<KxovaFunction>(function);
        } else if (fault.empty()) {
            fault = std::string("kxovaapi.dll is of another version: it lacks ") + reference->name;
        }
    }
}

const std::string& bindingFault() noexcept
{
    return fault;
}
