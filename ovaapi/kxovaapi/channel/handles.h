// Owners of Windows handles: one policy per kind of resource, one line per owner.
#pragma once

#include <windows.h>

#include <utility>

template <typename Policy>
class unique_resource
{
 public:
    using type = typename Policy::type;

    unique_resource() noexcept = default;
    explicit unique_resource(type value) noexcept : value_(value) {}
    unique_resource(unique_resource&& other) noexcept : value_(other.release()) {}
    unique_resource& operator=(unique_resource&& other) noexcept
    {
        reset(other.release());
        return *this;
    }
    ~unique_resource() { reset(); }

    type get() const noexcept { return value_; }
    explicit operator bool() const noexcept { return value_ != Policy::invalid(); }
    type release() noexcept { return std::exchange(value_, Policy::invalid()); }

    void reset(type value = Policy::invalid()) noexcept
    {
        const type old = std::exchange(value_, value);
        if (old != Policy::invalid()) Policy::close(old);
    }

    // For functions that fill a handle in; what was owned is closed first.
    type* put() noexcept
    {
        reset();
        return &value_;
    }

 private:
    type value_ = Policy::invalid();
};

struct KernelHandlePolicy
{
    using type = HANDLE;
    static HANDLE invalid() noexcept { return nullptr; }
    static void close(HANDLE handle) noexcept { CloseHandle(handle); }
};

struct FileHandlePolicy
{
    using type = HANDLE;
    static HANDLE invalid() noexcept { return INVALID_HANDLE_VALUE; }
    static void close(HANDLE handle) noexcept { CloseHandle(handle); }
};

struct RegistryKeyPolicy
{
    using type = HKEY;
    static HKEY invalid() noexcept { return nullptr; }
    static void close(HKEY key) noexcept { RegCloseKey(key); }
};

struct LibraryPolicy
{
    using type = HMODULE;
    static HMODULE invalid() noexcept { return nullptr; }
    static void close(HMODULE library) noexcept { FreeLibrary(library); }
};

using unique_handle = unique_resource<KernelHandlePolicy>;  // mutexes, events, threads
using unique_file = unique_resource<FileHandlePolicy>;      // files and pipes
using unique_hkey = unique_resource<RegistryKeyPolicy>;
using unique_library = unique_resource<LibraryPolicy>;
