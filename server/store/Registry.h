// The few things that the store asks of the registry, as an interface so that tests can stop it at any step.
#pragma once

#include <windows.h>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/Lock.h"
#include "base/Owner.h"

namespace srv {

// A value as the registry holds it.
struct RawValue
{
    std::wstring name;
    DWORD type = REG_NONE;
    std::vector<std::uint8_t> data;
};

struct Subkey
{
    std::wstring name;
    std::uint64_t written = 0;  // when it was last written, as a file time
};

// Paths are relative to the store's root key and hold no empty parts; "" is the root itself. Each call is one step
// that happens wholly or not at all, except where it says otherwise. Results are Windows error numbers. Safe to use
// from any thread.
class Registry
{
 public:
    virtual ~Registry() = default;

    // An existing key is success.
    virtual LSTATUS createKey(const std::wstring& path) = 0;

    // The key with all that is below it, in several steps, the key itself last. An absent key is success.
    virtual LSTATUS deleteKey(const std::wstring& path) = 0;

    // ERROR_FILE_NOT_FOUND if there is no such key.
    virtual LSTATUS setValue(const std::wstring& path, const std::wstring& name, DWORD type,
                             std::span<const std::uint8_t> data) = 0;

    // An absent value or key is ERROR_FILE_NOT_FOUND.
    virtual LSTATUS deleteValue(const std::wstring& path, const std::wstring& name) = 0;

    // ERROR_FILE_NOT_FOUND if there is no such key.
    virtual LSTATUS subkeys(const std::wstring& path, std::vector<Subkey>& found) = 0;
    virtual LSTATUS values(const std::wstring& path, std::vector<RawValue>& found) = 0;

    // Whether the key's values may be changed, and `toDelete` the key itself deleted. An absent key is success.
    virtual LSTATUS mayChange(const std::wstring& path, bool toDelete) = 0;

    // Has what was written so far brought to the disk.
    virtual LSTATUS flush() = 0;
};

// The real one, in the 32-bit view. The root key is made when something is to be written and it is missing. It is kept
// open, because under Wine finding a key in the 32-bit view takes two requests for each part of its path; with an empty
// root, the hive itself, every path is looked up.
class WindowsRegistry : public Registry
{
 public:
    WindowsRegistry(HKEY hive, std::wstring root) : hive_(hive), root_(std::move(root)) {}

    LSTATUS createKey(const std::wstring& path) override;
    LSTATUS deleteKey(const std::wstring& path) override;
    LSTATUS setValue(const std::wstring& path, const std::wstring& name, DWORD type,
                     std::span<const std::uint8_t> data) override;
    LSTATUS deleteValue(const std::wstring& path, const std::wstring& name) override;
    LSTATUS subkeys(const std::wstring& path, std::vector<Subkey>& found) override;
    LSTATUS values(const std::wstring& path, std::vector<RawValue>& found) override;
    LSTATUS mayChange(const std::wstring& path, bool toDelete) override;
    LSTATUS flush() override;

    HKEY hive() const noexcept { return hive_; }
    const std::wstring& root() const noexcept { return root_; }

 private:
    struct From;

    template <typename Use>
    LSTATUS from(bool make, Use use);
    LSTATUS openRoot(bool make);
    LSTATUS open(const std::wstring& path, REGSAM access, Key& key);

    HKEY hive_;
    std::wstring root_;
    Lock lock_;  // shared while the root key is used
    Key rootKey_;
};

}  // namespace srv
