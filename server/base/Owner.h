// Owners of Windows resources: one policy a resource, closed exactly once.
#pragma once

#include <windows.h>

#include <utility>

namespace srv {

template <typename Policy>
class Owner
{
 public:
    using Type = typename Policy::Type;

    Owner() noexcept = default;
    explicit Owner(Type resource) noexcept : resource_(Policy::isNone(resource) ? Type{} : resource) {}
    Owner(Owner&& other) noexcept : resource_(other.release()) {}
    Owner& operator=(Owner&& other) noexcept
    {
        reset(other.release());
        return *this;
    }
    Owner(const Owner&) = delete;
    Owner& operator=(const Owner&) = delete;
    ~Owner() { reset(); }

    Type get() const noexcept { return resource_; }
    explicit operator bool() const noexcept { return resource_ != Type{}; }
    Type release() noexcept { return std::exchange(resource_, Type{}); }
    void reset(Type resource = Type{}) noexcept
    {
        if (Policy::isNone(resource)) resource = Type{};
        if (const Type old = std::exchange(resource_, resource); old != Type{}) Policy::close(old);
    }

    // For functions that hand a resource out through a pointer; what was owned before is closed.
    Type* put() noexcept
    {
        reset();
        return &resource_;
    }

 private:
    Type resource_{};
};

struct HandlePolicy
{
    using Type = HANDLE;
    static bool isNone(HANDLE handle) noexcept { return handle == INVALID_HANDLE_VALUE; }
    static void close(HANDLE handle) noexcept { CloseHandle(handle); }
};
using Handle = Owner<HandlePolicy>;

struct KeyPolicy
{
    using Type = HKEY;
    static bool isNone(HKEY) noexcept { return false; }
    static void close(HKEY key) noexcept { RegCloseKey(key); }
};
using Key = Owner<KeyPolicy>;

struct LocalPolicy
{
    using Type = void*;
    static bool isNone(void*) noexcept { return false; }
    static void close(void* memory) noexcept { LocalFree(memory); }
};
using LocalMemory = Owner<LocalPolicy>;

struct ServicePolicy
{
    using Type = SC_HANDLE;
    static bool isNone(SC_HANDLE) noexcept { return false; }
    static void close(SC_HANDLE handle) noexcept { CloseServiceHandle(handle); }
};
using ServiceHandle = Owner<ServicePolicy>;

}  // namespace srv
