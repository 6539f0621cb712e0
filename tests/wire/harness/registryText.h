// Texts below HKEY_LOCAL_MACHINE for one test; while a TraceCapture lives this is the test's own registry. The
// value goes with the object; keys that were made for it stay.
#pragma once

#include <windows.h>

#include <string>

class RegistryText
{
 public:
    RegistryText(const std::string& key, const std::string& name, const std::string& text)
        : RegistryText(key, name, REG_SZ, text.c_str(), static_cast<DWORD>(text.size() + 1))
    {}
    RegistryText(const std::string& key, const std::string& name, DWORD type, const void* data, DWORD size)
        : key_(key), name_(name)
    {
        HKEY opened = nullptr;
        RegCreateKeyExA(HKEY_LOCAL_MACHINE, key.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &opened, nullptr);
        RegSetValueExA(opened, name.c_str(), 0, type, static_cast<const BYTE*>(data), size);
        RegCloseKey(opened);
    }
    RegistryText(RegistryText&& other) noexcept : key_(std::move(other.key_)), name_(std::move(other.name_))
    {
        other.key_.clear();
    }
    ~RegistryText()
    {
        if (key_.empty()) return;
        HKEY opened = nullptr;
        if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, key_.c_str(), 0, KEY_SET_VALUE, &opened) == ERROR_SUCCESS) {
            RegDeleteValueA(opened, name_.c_str());
            RegCloseKey(opened);
        }
    }

 private:
    std::string key_;
    std::string name_;
};
