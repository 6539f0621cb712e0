// Owner of a Windows handle: one policy per kind of resource, one line per owner.
#pragma once

#include <windows.h>

#include <utility>

namespace platform {

template <typename Policy>
class Owner
{
 public:
    using Handle = typename Policy::Handle;

    Owner() noexcept = default;
    explicit Owner(Handle handle) noexcept : handle_(handle) {}
    Owner(Owner&& other) noexcept : handle_(other.release()) {}
    Owner& operator=(Owner&& other) noexcept
    {
        reset(other.release());
        return *this;
    }
    ~Owner() { reset(); }

    Handle get() const noexcept { return handle_; }
    explicit operator bool() const noexcept { return handle_ != Policy::none(); }
    Handle release() noexcept { return std::exchange(handle_, Policy::none()); }

    void reset(Handle handle = Policy::none()) noexcept
    {
        const Handle old = std::exchange(handle_, handle);
        if (old != Policy::none()) Policy::close(old);
    }

    // For functions that fill a handle in; what was owned is closed before.
    Handle* put() noexcept
    {
        reset();
        return &handle_;
    }

 private:
    Handle handle_ = Policy::none();
};

struct KernelObjectPolicy
{
    using Handle = HANDLE;
    static Handle none() noexcept { return nullptr; }
    static void close(Handle handle) noexcept { CloseHandle(handle); }
};

struct FilePolicy
{
    using Handle = HANDLE;
    static Handle none() noexcept { return INVALID_HANDLE_VALUE; }
    static void close(Handle handle) noexcept { CloseHandle(handle); }
};

struct RegistryKeyPolicy
{
    using Handle = HKEY;
    static Handle none() noexcept { return nullptr; }
    static void close(Handle handle) noexcept { RegCloseKey(handle); }
};

struct LibraryPolicy
{
    using Handle = HMODULE;
    static Handle none() noexcept { return nullptr; }
    static void close(Handle handle) noexcept { FreeLibrary(handle); }
};

template <typename T>
struct ViewPolicy
{
    using Handle = T*;
    static Handle none() noexcept { return nullptr; }
    static void close(Handle view) noexcept { UnmapViewOfFile(view); }
};

using KernelObject = Owner<KernelObjectPolicy>;  // events, threads, processes
using File = Owner<FilePolicy>;                  // files, pipes
using RegistryKey = Owner<RegistryKeyPolicy>;
using Library = Owner<LibraryPolicy>;
template <typename T>
using View = Owner<ViewPolicy<T>>;  // shared memory

}  // namespace platform
