// A library that is loaded by its name for one call.
#pragma once

#include <windows.h>

#include <cstring>

class ExtensionLibrary
{
 public:
    // A name with a path in it could come from anywhere; the system is to decide where a library lies.
    static bool suspicious(const char* name) noexcept { return std::strchr(name, '\\') != nullptr; }

    explicit ExtensionLibrary(const char* name) noexcept : module_(LoadLibraryA(name)) {}
    ~ExtensionLibrary() { unload(); }
    ExtensionLibrary(const ExtensionLibrary&) = delete;
    ExtensionLibrary& operator=(const ExtensionLibrary&) = delete;

    HMODULE module() const noexcept { return module_; }

    // NULL: there is none of this name.
    template <typename Function>
    Function* find(const char* name) const noexcept
    {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
    }

    void unload() noexcept
    {
        if (module_) FreeLibrary(module_);
        module_ = nullptr;
    }

    // Leaves the library loaded.
    void keep() noexcept { module_ = nullptr; }

 private:
    HMODULE module_;
};
