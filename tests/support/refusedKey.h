// A registry key that refuses, as long as this lives, everybody everything, or what a list of rights says; its owner can
// take that back, as everywhere. `refuses()` says whether the system heeds it: an administrator may be above such lists.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <sddl.h>

#include <string>
#include <vector>

class RefusedKey
{
 public:
    static constexpr char everything[] = "D:(D;;KA;;;WD)";
    static constexpr char writing[] = "D:(A;;KR;;;WD)";

    RefusedKey(HKEY hive, const std::wstring& path, const char* rights = everything) : hive_(hive), path_(path)
    {
        constexpr REGSAM access = READ_CONTROL | WRITE_DAC | KEY_WOW64_32KEY;
        EXPECT_EQ(RegOpenKeyExW(hive, path.c_str(), 0, access, &key_), ERROR_SUCCESS);
        DWORD size = 0;
        RegGetKeySecurity(key_, DACL_SECURITY_INFORMATION, nullptr, &size);
        before_.resize(size);
        EXPECT_EQ(RegGetKeySecurity(key_, DACL_SECURITY_INFORMATION, before_.data(), &size), ERROR_SUCCESS);
        PSECURITY_DESCRIPTOR descriptor = nullptr;
        EXPECT_TRUE(
            ConvertStringSecurityDescriptorToSecurityDescriptorA(rights, SDDL_REVISION_1, &descriptor, nullptr));
        EXPECT_EQ(RegSetKeySecurity(key_, DACL_SECURITY_INFORMATION, descriptor), ERROR_SUCCESS);
        LocalFree(descriptor);
    }
    ~RefusedKey() { giveBack(); }
    RefusedKey(const RefusedKey&) = delete;
    RefusedKey& operator=(const RefusedKey&) = delete;

    bool refuses() const
    {
        HKEY opened = nullptr;
        if (RegOpenKeyExW(hive_, path_.c_str(), 0, KEY_WRITE | KEY_WOW64_32KEY, &opened) != ERROR_SUCCESS)
            return true;
        RegCloseKey(opened);
        return false;
    }

    void giveBack()
    {
        if (!key_) return;
        EXPECT_EQ(RegSetKeySecurity(key_, DACL_SECURITY_INFORMATION, before_.data()), ERROR_SUCCESS);
        RegCloseKey(key_);
        key_ = nullptr;
    }

 private:
    HKEY hive_;
    std::wstring path_;
    HKEY key_ = nullptr;
    std::vector<unsigned char> before_;
};
