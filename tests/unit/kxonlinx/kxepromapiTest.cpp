#include "kxepromapi.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "support/win_handle.h"

extern "C" int kxepromapi_both_in_c(void);

namespace {

// HKEY_LOCAL_MACHINE is a key of the test's own in this process.
class Prommer : public testing::Test
{
 protected:
    static constexpr wchar_t machine[] = L"Software\\kxova-test-prommer";

    Prommer()
    {
        RegDeleteTreeW(HKEY_CURRENT_USER, machine);
        RegCreateKeyExW(HKEY_CURRENT_USER, machine, 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr,
                        root_.put(), nullptr);
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, root_.get());
    }

    ~Prommer() override
    {
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
        root_.reset();
        RegDeleteTreeW(HKEY_CURRENT_USER, machine);
    }

    void set(const wchar_t* valueName, DWORD type, const void* data, DWORD size)
    {
        platform::RegistryKey key;
        ASSERT_EQ(RegCreateKeyExW(root_.get(), L"SOFTWARE\\TAVRONE\\NORIX\\Prommer", 0, nullptr, REG_OPTION_VOLATILE,
                                  KEY_SET_VALUE, nullptr, key.put(), nullptr),
                  ERROR_SUCCESS);
        ASSERT_EQ(RegSetValueExW(key.get(), valueName, 0, type, static_cast<const BYTE*>(data), size), ERROR_SUCCESS);
    }

    void set(const wchar_t* valueName, DWORD value) { set(valueName, REG_DWORD, &value, sizeof value); }

 private:
    platform::RegistryKey root_;
};

TEST_F(Prommer, NothingConfigured_isNone)
{
    EXPECT_EQ(IsPgWithInternalPrommer(), 0);
    EXPECT_EQ(IsInternalPrommerActive(), 0);
}

TEST_F(Prommer, Present_isNotActiveByItself)
{
    set(L"InternalPrommer", 1);
    EXPECT_EQ(IsPgWithInternalPrommer(), 1);
    EXPECT_EQ(IsInternalPrommerActive(), 0);
}

TEST_F(Prommer, PresentAndActive_isBoth)
{
    set(L"InternalPrommer", 1);
    set(L"InternalPrommerActive", 7);
    EXPECT_EQ(IsPgWithInternalPrommer(), 1);
    EXPECT_EQ(IsInternalPrommerActive(), 1);
}

TEST_F(Prommer, ActiveWithoutProgrammer_isNotActive)
{
    set(L"InternalPrommer", 0);
    set(L"InternalPrommerActive", 1);
    EXPECT_EQ(IsInternalPrommerActive(), 0);
}

TEST_F(Prommer, ValueOfAnotherType_isNone)
{
    set(L"InternalPrommer", REG_SZ, L"1", 4);
    EXPECT_EQ(IsPgWithInternalPrommer(), 0);
}

TEST_F(Prommer, FromC_givesTheSame)
{
    set(L"InternalPrommer", 1);
    set(L"InternalPrommerActive", 1);
    EXPECT_EQ(kxepromapi_both_in_c(), 2);
}

}  // namespace
