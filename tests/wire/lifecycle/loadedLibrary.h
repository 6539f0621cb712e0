// The library, loaded for one test and unloaded behind it; the scripted channel library stays.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <stdexcept>
#include <string>

#include "fakeChannel.h"
#include "kxovaapi.h"
#include "traceCapture.h"

class LoadedLibrary
{
 public:
    LoadedLibrary() : module_(LoadLibraryA("kxovaapi.dll"))
    {
        if (!module_) throw std::runtime_error("kxovaapi.dll does not load: " + std::to_string(GetLastError()));
    }
    ~LoadedLibrary() { unload(); }
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;

    void unload()
    {
        if (module_) FreeLibrary(module_);
        module_ = nullptr;
    }

    // The exported function of the type that its declaration gives it.
    template <typename Function>
    Function* find(const char* name) const
    {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
    }

    long deleteDevice(const char* name) const { return find<decltype(LogDeviceDel)>("LogDeviceDel")(name); }
    long exists(const char* name) const { return find<decltype(LogDeviceExists)>("LogDeviceExists")(name, 0); }

 private:
    HMODULE module_;
};

class LifecycleTest : public testing::Test
{
 protected:
    LifecycleTest() : channel(*fakeChannel()) { channel.reset(); }
    FakeChannel& channel;
};

inline HWND eventWindow()
{
    return FindWindowA("KXOVAAPIWOW", nullptr);
}

// The call that asks for the window waits only a moment for it; on a busy machine it comes up later.
inline HWND awaitEventWindow()
{
    constexpr DWORD bound = 20000;
    for (const DWORD start = GetTickCount(); !eventWindow() && GetTickCount() - start < bound;)
        Sleep(1);
    return eventWindow();
}
