// A registry key of a test's own, and registries that break.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "store/Registry.h"
#include "store/Store.h"

// The key is removed with the object.
class TestKey
{
 public:
    TestKey()
    {
        static unsigned count = 0;
        path_ = L"Software\\KxovaTests\\" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count);
    }
    ~TestKey() { registry().deleteKey(L""); }

    srv::WindowsRegistry registry() const { return {HKEY_CURRENT_USER, path_}; }
    const std::wstring& path() const { return path_; }

 private:
    std::wstring path_;
};

// What stands for the server's death.
struct Killed
{
};

// Passes everything on. What is done beside that, its descendants say.
class PassingRegistry : public srv::Registry
{
 public:
    explicit PassingRegistry(srv::Registry& real) : real_(real) {}

    LSTATUS createKey(const std::wstring& path) override { return real_.createKey(path); }
    LSTATUS deleteKey(const std::wstring& path) override { return real_.deleteKey(path); }
    LSTATUS setValue(const std::wstring& path, const std::wstring& name, DWORD type,
                     std::span<const std::uint8_t> data) override
    {
        return real_.setValue(path, name, type, data);
    }
    LSTATUS deleteValue(const std::wstring& path, const std::wstring& name) override
    {
        return real_.deleteValue(path, name);
    }
    LSTATUS subkeys(const std::wstring& path, std::vector<srv::Subkey>& found) override
    {
        return real_.subkeys(path, found);
    }
    LSTATUS values(const std::wstring& path, std::vector<srv::RawValue>& found) override
    {
        return real_.values(path, found);
    }
    LSTATUS mayChange(const std::wstring& path, bool toDelete) override { return real_.mayChange(path, toDelete); }
    LSTATUS flush() override { return real_.flush(); }

 protected:
    srv::Registry& real_;
};

// Asks before each call that changes something; deleting a tree is one such call a key.
class WatchedRegistry : public PassingRegistry
{
 public:
    // Gets the number of the call, from 0; may throw Killed, or return an error instead of the call.
    using Before = std::function<LSTATUS(unsigned call)>;

    WatchedRegistry(srv::Registry& real, Before before) : PassingRegistry(real), before_(std::move(before)) {}

    unsigned calls() const { return calls_; }

    LSTATUS createKey(const std::wstring& path) override
    {
        const LSTATUS status = before_(calls_++);
        return status != ERROR_SUCCESS ? status : real_.createKey(path);
    }
    LSTATUS deleteKey(const std::wstring& path) override
    {
        std::vector<srv::Subkey> below;
        real_.subkeys(path, below);
        for (const srv::Subkey& subkey : below)
            if (const LSTATUS status = deleteKey(path + L'\\' + subkey.name)) return status;
        const LSTATUS status = before_(calls_++);
        return status != ERROR_SUCCESS ? status : real_.deleteKey(path);
    }
    LSTATUS setValue(const std::wstring& path, const std::wstring& name, DWORD type,
                     std::span<const std::uint8_t> data) override
    {
        const LSTATUS status = before_(calls_++);
        return status != ERROR_SUCCESS ? status : real_.setValue(path, name, type, data);
    }
    LSTATUS deleteValue(const std::wstring& path, const std::wstring& name) override
    {
        const LSTATUS status = before_(calls_++);
        return status != ERROR_SUCCESS ? status : real_.deleteValue(path, name);
    }

 private:
    Before before_;
    unsigned calls_ = 0;
};

// A store over a registry, opened.
struct OpenStore
{
    srv::Log log{srv::Level::Error};
    srv::Changes changes;
    srv::Store store;

    explicit OpenStore(srv::Registry& registry) : store(registry, changes, log) {}
    OpenStore& open()
    {
        EXPECT_EQ(store.open(), 0u);
        return *this;
    }

    bool has(srv::Family family, std::wstring_view name) const
    {
        return store.read([&](const srv::Configuration& all) { return all.of(family).find(name) != nullptr; });
    }
    // The object's content; an empty one if there is no such object.
    srv::Content content(srv::Family family, std::wstring_view name) const
    {
        return store.read([&](const srv::Configuration& all) {
            const srv::Object* const object = all.of(family).find(name);
            return object ? object->content : srv::Content{};
        });
    }
};

inline srv::ValueTable table(std::initializer_list<std::pair<std::wstring_view, std::wstring_view>> values)
{
    srv::ValueTable result;
    for (const auto& [name, text] : values)
        result.set(name, text);
    return result;
}
