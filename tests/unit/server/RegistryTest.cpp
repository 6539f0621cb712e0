// Registry requests over the server pipe, in bytes: what they do, and that they do nothing elsewhere.
#include <gtest/gtest.h>

#include "refusedKey.h"
#include "TestServer.h"

using namespace bytes;

namespace {

constexpr std::u16string_view norix = u"software\\wow6432node\\TAVRONE\\NORIX";

std::u16string below(std::u16string_view path)
{
    return std::u16string(norix) + u"\\" + std::u16string(path);
}

struct RegistryTest : TestServer
{
    srv::Session pipe{2, srv::Via::Pipe, 4711};

    Bytes deleteKey(std::u16string_view path) { return ask(pipe, u16(1) + str(path)); }
    Bytes deleteValue(std::u16string_view path, std::u16string_view name)
    {
        return ask(pipe, u16(1) + str(path) + str(name));
    }
    Bytes create(std::u16string_view path) { return ask(pipe, u16(2) + str(path)); }
    Bytes setValue(std::u16string_view path, std::u16string_view name, std::u16string_view text)
    {
        return ask(pipe, u16(3) + str(path) + str(name) + str(text));
    }
    Bytes keyAt(std::u16string_view path, std::uint32_t index) { return ask(pipe, u16(21) + str(path) + u32(index)); }
    Bytes get(std::u16string_view path, std::u16string_view name)
    {
        return ask(pipe, u16(22) + str(path) + str(name));
    }
    Bytes valueAt(std::u16string_view path, std::uint32_t index)
    {
        return ask(pipe, u16(23) + str(path) + u32(index));
    }
    bool exists(const std::wstring& path)
    {
        std::vector<srv::Subkey> found;
        return product.subkeys(path, found) == ERROR_SUCCESS;
    }
};

TEST_F(RegistryTest, KeyAndValue_areMadeReadAndDeleted)
{
    EXPECT_EQ(setValue(below(u"DCFG"), u"LangExt", u"A"), reply(2));
    EXPECT_EQ(create(below(u"DCFG")), reply(0));
    EXPECT_EQ(create(below(u"DCFG")), reply(0));
    EXPECT_EQ(setValue(below(u"DCFG"), u"LangExt", u"A"), reply(0));
    EXPECT_EQ(get(below(u"dcfg"), u"langext"), reply(0, replyStr(u"A")));
    EXPECT_EQ(valueAt(below(u"DCFG"), 0), reply(0, replyStr(u"LangExt") + replyStr(u"A")));
    EXPECT_EQ(valueAt(below(u"DCFG"), 1), reply(259));
    EXPECT_EQ(deleteValue(below(u"DCFG"), u"LANGEXT"), reply(0));
    EXPECT_EQ(deleteValue(below(u"DCFG"), u"LangExt"), reply(2));
    EXPECT_EQ(get(below(u"DCFG"), u"LangExt"), reply(2));
    EXPECT_EQ(deleteKey(below(u"DCFG")), reply(0));
    EXPECT_EQ(deleteKey(below(u"DCFG")), reply(2));
    EXPECT_EQ(get(below(u"DCFG"), u"LangExt"), reply(2));
}

TEST_F(RegistryTest, DeletingAKey_takesEverythingBelowItAlong)
{
    create(u"SOFTWARE\\WOW6432Node\\TAVRONE\\TALUN\\2.0\\General");
    EXPECT_TRUE(exists(L"TALUN\\2.0\\General"));
    EXPECT_EQ(deleteKey(u"SOFTWARE\\WOW6432Node\\TAVRONE\\TALUN"), reply(0));
    EXPECT_FALSE(exists(L"TALUN"));
}

TEST_F(RegistryTest, UnnamedValue_isAValueLikeOthers)
{
    create(below(u"X"));
    EXPECT_EQ(setValue(below(u"X"), u"", u"1"), reply(0));
    EXPECT_EQ(get(below(u"X"), u""), reply(0, replyStr(u"1")));
    EXPECT_EQ(deleteValue(below(u"X"), u""), reply(0));
    EXPECT_EQ(deleteKey(below(u"X")), reply(0));
}

TEST_F(RegistryTest, Subkeys_areWalked)
{
    create(below(u"X\\a"));
    create(below(u"X\\b"));
    EXPECT_EQ(keyAt(below(u"X"), 0), reply(0, replyStr(u"a")));
    EXPECT_EQ(keyAt(below(u"X"), 1), reply(0, replyStr(u"b")));
    EXPECT_EQ(keyAt(below(u"X"), 2), reply(259));
    EXPECT_EQ(keyAt(below(u"Y"), 0), reply(2));
    EXPECT_EQ(valueAt(below(u"Y"), 0), reply(2));
}

TEST_F(RegistryTest, ValuesOfEveryType_areToldAsText)
{
    create(below(u"X"));
    const auto put = [&](const wchar_t* name, DWORD type, std::vector<std::uint8_t> data) {
        ASSERT_EQ(registry.setValue(L"X", name, type, data), ERROR_SUCCESS);
    };
    put(L"binary", REG_BINARY, {0x0A, 0xFF});
    put(L"dword", REG_DWORD, {1, 1, 0, 0});
    put(L"expand", REG_EXPAND_SZ, {'%', 0, 'a', 0, '%', 0, 0, 0});
    put(L"list", REG_MULTI_SZ, {'a', 0, 0, 0, 'b', 0, 0, 0, 0, 0});
    put(L"qword", REG_QWORD, {0, 0, 0, 0, 1, 0, 0, 0});
    EXPECT_EQ(get(below(u"X"), u"binary"), reply(0, replyStr(u"0AFF")));
    EXPECT_EQ(get(below(u"X"), u"dword"), reply(0, replyStr(u"257")));
    EXPECT_EQ(get(below(u"X"), u"expand"), reply(0, replyStr(u"%a%")));
    EXPECT_EQ(get(below(u"X"), u"list"), reply(0, replyStr(u"a,b")));
    EXPECT_EQ(get(below(u"X"), u"qword"), reply(0, replyStr(u"4294967296")));
}

TEST_F(RegistryTest, LogicalDevice_isMadeChangedAndDeletedInTheStore)
{
    EXPECT_EQ(create(below(u"LogDevices\\Dev")), reply(0));
    EXPECT_EQ(create(below(u"LogDevices\\Dev")), reply(0));
    EXPECT_EQ(setValue(below(u"LogDevices\\Dev"), u"CP_TYPE", u"MPI"), reply(0));
    EXPECT_EQ(value(u"Dev", u"CP_TYPE"), reply(0, replyStr(u"MPI")));
    EXPECT_EQ(setValue(below(u"logdevices\\DEV\\NDI"), u"hidden", u"true"), reply(0));
    EXPECT_EQ(ask(u16(114) + str(u"Dev") + str(u"hidden") + u32(260) + u32(1)), reply(0, replyStr(u"true")));
    set(u"Dev", u"Unit", u"1");
    EXPECT_EQ(get(below(u"LogDevices\\Dev"), u"Unit"), reply(0, replyStr(u"1")));
    EXPECT_EQ(valueAt(below(u"LogDevices\\Dev"), 1), reply(0, replyStr(u"Unit") + replyStr(u"1")));
    EXPECT_EQ(valueAt(below(u"LogDevices\\Dev"), 2), reply(259));
    EXPECT_EQ(keyAt(below(u"LogDevices"), 0), reply(0, replyStr(u"Dev")));
    EXPECT_EQ(keyAt(below(u"LogDevices"), 1), reply(259));
    EXPECT_EQ(keyAt(below(u"LogDevices\\Dev"), 0), reply(0, replyStr(u"Ndi")));
    EXPECT_EQ(deleteValue(below(u"LogDevices\\Dev"), u"CP_TYPE"), reply(0));
    EXPECT_EQ(value(u"Dev", u"CP_TYPE"), reply(8012));
    EXPECT_EQ(deleteKey(below(u"LogDevices\\Dev\\Ndi")), reply(0));
    EXPECT_EQ(deleteKey(below(u"LogDevices\\Dev\\Ndi")), reply(2));
    EXPECT_EQ(ask(u16(114) + str(u"Dev") + str(u"hidden") + u32(260) + u32(1)), reply(8012));
    EXPECT_EQ(deleteKey(below(u"LogDevices\\Dev")), reply(0));
    EXPECT_EQ(ask(u16(42) + str(u"Dev") + u32(0)), reply(8012));
}

TEST_F(RegistryTest, LogicalDeviceThatIsNotThere_is2)
{
    EXPECT_EQ(setValue(below(u"LogDevices\\none"), u"a", u"1"), reply(2));
    EXPECT_EQ(get(below(u"LogDevices\\none"), u"a"), reply(2));
    EXPECT_EQ(deleteValue(below(u"LogDevices\\none"), u"a"), reply(2));
    EXPECT_EQ(deleteKey(below(u"LogDevices\\none")), reply(2));
    EXPECT_EQ(keyAt(below(u"LogDevices\\none"), 0), reply(2));
    EXPECT_EQ(setValue(below(u"LogDevices\\none\\Ndi"), u"a", u"1"), reply(2));
    EXPECT_EQ(get(below(u"LogDevices\\none\\Ndi"), u"a"), reply(2));
}

TEST_F(RegistryTest, WhatTheStoreDoesNotTake_is87)
{
    create(below(u"LogDevices\\Dev"));
    EXPECT_EQ(setValue(below(u"LogDevices\\Dev"), u"", u"1"), reply(87));
    EXPECT_EQ(setValue(below(u"LogDevices\\Dev"), u"a", std::u16string(260, u'x')), reply(87));
    EXPECT_EQ(create(below(u"LogDevices\\a\tb")), reply(87));
    EXPECT_EQ(create(below(u"LogDevices\\DCFG_TEMP_LOG_DEVICE____1")), reply(87));
}

TEST_F(RegistryTest, LogicalName_isMadeChangedAndDeletedInTheStore)
{
    EXPECT_EQ(create(below(u"LogNames\\PLC")), reply(0));
    EXPECT_EQ(setValue(below(u"LogNames\\PLC"), u"LogDevice", u"Dev"), reply(0));
    EXPECT_EQ(ask(u16(66) + str(u"PLC") + str(u"LogDevice") + u32(260)), reply(0, replyStr(u"Dev")));
    EXPECT_EQ(keyAt(below(u"LogNames"), 0), reply(0, replyStr(u"PLC")));
    EXPECT_EQ(deleteKey(below(u"LogNames\\plc")), reply(0));
    EXPECT_EQ(ask(u16(75) + str(u"PLC") + u32(0)), reply(8012));
}

TEST_F(RegistryTest, KeyOfAllDevices_isEmptiedInOneStep)
{
    createDevice(u"a");
    createDevice(u"b");
    EXPECT_EQ(deleteKey(below(u"LogDevices")), reply(0));
    EXPECT_EQ(ask(u16(208) + u32(4080)), reply(0, u32(0)));
    EXPECT_EQ(deleteKey(below(u"LogDevices")), reply(0));
}

TEST_F(RegistryTest, FurtherKeyOfADevice_isMadeWithTheDevice)
{
    EXPECT_EQ(setValue(below(u"LogDevices\\Dev\\Mine"), u"a", u"1"), reply(2));
    EXPECT_EQ(create(below(u"LogDevices\\Dev\\Mine")), reply(0));
    EXPECT_EQ(ask(u16(42) + str(u"Dev") + u32(0)), reply(0));
    EXPECT_EQ(setValue(below(u"LogDevices\\Dev\\Mine"), u"a", u"1"), reply(0));
    EXPECT_EQ(get(below(u"LogDevices\\Dev\\Mine"), u"a"), reply(0, replyStr(u"1")));
    EXPECT_EQ(deleteKey(below(u"LogDevices\\Dev\\Mine")), reply(0));
    EXPECT_EQ(ask(u16(42) + str(u"Dev") + u32(0)), reply(0));
}

TEST_F(RegistryTest, ServersOwnKeys_areReadOnly)
{
    for (const char16_t* const own : {u"Journal", u"DEFDEVICES", u"Hardware\\x", u"Instances"}) {
        EXPECT_EQ(create(below(own)), reply(5));
        EXPECT_EQ(setValue(below(own), u"a", u"1"), reply(5));
        EXPECT_EQ(deleteValue(below(own), u"a"), reply(5));
        EXPECT_EQ(deleteKey(below(own)), reply(5));
        EXPECT_EQ(get(below(own), u"a"), reply(2));
    }
    EXPECT_EQ(deleteKey(norix), reply(5));
    EXPECT_EQ(deleteKey(u"SOFTWARE\\WOW6432Node\\TAVRONE"), reply(5));
}

TEST_F(RegistryTest, KeyThatRefusesTheServer_is5AndUnchangedUntilItRefusesNoMore)
{
    create(below(u"X\\Y"));
    setValue(below(u"X"), u"a", u"1");
    RefusedKey refused(HKEY_CURRENT_USER, key.path() + L"\\NORIX\\X");
    EXPECT_EQ(create(below(u"X")), reply(5));
    EXPECT_EQ(setValue(below(u"X"), u"a", u"2"), reply(5));
    EXPECT_EQ(get(below(u"X"), u"a"), reply(5));
    EXPECT_EQ(valueAt(below(u"X"), 0), reply(5));
    EXPECT_EQ(keyAt(below(u"X"), 0), reply(5));
    EXPECT_EQ(deleteValue(below(u"X"), u"a"), reply(5));
    EXPECT_EQ(deleteKey(below(u"X")), reply(5));
    refused.giveBack();
    EXPECT_EQ(valueAt(below(u"X"), 0), reply(0, replyStr(u"a") + replyStr(u"1")));
    EXPECT_EQ(keyAt(below(u"X"), 0), reply(0, replyStr(u"Y")));
    EXPECT_EQ(deleteKey(below(u"X")), reply(0));
}

TEST_F(RegistryTest, SystemsKeyThatRefusesTheServer_is5)
{
    ASSERT_EQ(system.createKey(L"HARDWARE\\DEVICEMAP\\SERIALCOMM"), ERROR_SUCCESS);
    RefusedKey refused(HKEY_CURRENT_USER, key.path() + L"\\Machine\\HARDWARE\\DEVICEMAP\\SERIALCOMM");
    EXPECT_EQ(valueAt(u"Hardware\\DeviceMap\\SerialComm", 0), reply(5));
    refused.giveBack();
    EXPECT_EQ(valueAt(u"Hardware\\DeviceMap\\SerialComm", 0), reply(259));
}

TEST_F(RegistryTest, SystemsKeys_areReadOnlyAndOnlyTheOnesNeeded)
{
    ASSERT_EQ(system.createKey(L"HARDWARE\\DEVICEMAP\\SERIALCOMM"), ERROR_SUCCESS);
    const std::uint8_t com1[] = {'C', 0, 'O', 0, 'M', 0, '1', 0, 0, 0};
    ASSERT_EQ(system.setValue(L"HARDWARE\\DEVICEMAP\\SERIALCOMM", L"\\Device\\Serial0", REG_SZ, com1), ERROR_SUCCESS);
    EXPECT_EQ(valueAt(u"Hardware\\DeviceMap\\SerialComm", 0),
              reply(0, replyStr(u"\\Device\\Serial0") + replyStr(u"COM1")));
    EXPECT_EQ(get(u"HARDWARE\\DEVICEMAP\\SERIALCOMM", u"\\Device\\Serial0"), reply(0, replyStr(u"COM1")));
    EXPECT_EQ(keyAt(u"Hardware\\DeviceMap", 0), reply(0, replyStr(u"SERIALCOMM")));
    EXPECT_EQ(get(u"SYSTEM\\CurrentControlSet\\Services\\kxopusbx64\\Enum", u"0"), reply(2));
    for (const char16_t* const path :
         {u"Hardware\\DeviceMap\\SerialComm", u"SYSTEM\\CurrentControlSet\\Services\\kxopusbx64\\Enum"}) {
        EXPECT_EQ(create(path), reply(5));
        EXPECT_EQ(setValue(path, u"a", u"1"), reply(5));
        EXPECT_EQ(deleteValue(path, u"\\Device\\Serial0"), reply(5));
        EXPECT_EQ(deleteKey(path), reply(5));
    }
}

TEST_F(RegistryTest, PathsAroundTheProductsKey_areRefusedForEverything)
{
    const std::u16string withZero = std::u16string(norix) + std::u16string(1, u'\0') + u"\\X";
    for (const std::u16string_view path : {
             std::u16string_view(u"SOFTWARE"),
             std::u16string_view(u"SOFTWARE\\"),
             std::u16string_view(u"SOFTWARE\\WOW6432Node"),
             std::u16string_view(u"SOFTWARE\\TAVRONE"),
             std::u16string_view(u"SOFTWARE\\TAVRONE\\NORIX\\X"),
             std::u16string_view(u"Software\\Tavrone\\WOW6432NODE\\X"),
             std::u16string_view(u"SOFTWARE\\WOW6432Node\\WOW6432Node\\TAVRONE\\X"),
             std::u16string_view(u"SOFTWARE\\WOW6432Node\\TAVRONE\\Wow6432Node\\X"),
             std::u16string_view(u"SOFTWARE\\WOW6432Node\\TAVRONE2\\X"),
             std::u16string_view(u"SOFTWARE\\WOW6432Node\\TAVRON"),
             std::u16string_view(u"SOFTWARE\\WOW6432Node\\TAVRONE \\X"),
             std::u16string_view(u"SOFTWARE\\WOW6432Node\\TAVRONE\\..\\Microsoft"),
             std::u16string_view(u"SOFTWARE\\WOW6432Node\\TAVRONE\\X\\..\\..\\Other"),
             std::u16string_view(u"SOFTWARE\\WOW6432Node\\TAVRONE\\.\\X"),
             std::u16string_view(u"SOFTWARE\\WOW6432Node\\.\\TAVRONE"),
             std::u16string_view(u"SOFTWARE/WOW6432Node/TAVRONE/X"),
             std::u16string_view(u"WOW6432Node\\TAVRONE\\X"),
             std::u16string_view(u"HKEY_LOCAL_MACHINE\\SOFTWARE\\WOW6432Node\\TAVRONE\\X"),
             std::u16string_view(u"SYSTEM\\CurrentControlSet\\Services"),
             std::u16string_view(u"SYSTEM\\CurrentControlSet\\Services\\kxopusbx64"),
             std::u16string_view(u"SYSTEM\\CurrentControlSet\\Services\\kxopusbx64\\Enum\\..\\Parameters"),
             std::u16string_view(u"HARDWARE"),
             std::u16string_view(u"HARDWARE\\DESCRIPTION"),
             std::u16string_view(u"SAM\\SAM"),
             std::u16string_view(u"\\"),
             std::u16string_view(withZero),
         }) {
        const std::string shown(path.begin(), path.end());
        EXPECT_EQ(create(path), reply(5)) << shown;
        EXPECT_EQ(setValue(path, u"a", u"1"), reply(5)) << shown;
        EXPECT_EQ(deleteValue(path, u"a"), reply(5)) << shown;
        EXPECT_EQ(deleteKey(path), reply(5)) << shown;
        EXPECT_EQ(keyAt(path, 0), reply(5)) << shown;
        EXPECT_EQ(get(path, u"a"), reply(5)) << shown;
        EXPECT_EQ(valueAt(path, 0), reply(5)) << shown;
    }
}

TEST_F(RegistryTest, OtherSpellingsOfAProductsKey_areThatKeyAndNoOther)
{
    create(below(u"X"));
    for (const std::u16string_view path : {
             std::u16string_view(u"SOFTWARE\\WOW6432NODE\\TAVRONE\\NORIX\\X"),
             std::u16string_view(u"software\\wow6432node\\tavrone\\norix\\x"),
             std::u16string_view(u"SOFTWARE\\WOW6432Node\\TAVRONE\\NORIX\\X\\"),
             std::u16string_view(u"\\SOFTWARE\\\\WOW6432Node\\TAVRONE\\\\NORIX\\X\\\\"),
         }) {
        EXPECT_EQ(setValue(path, u"a", u"1"), reply(0));
        EXPECT_EQ(get(below(u"X"), u"a"), reply(0, replyStr(u"1")));
        EXPECT_EQ(deleteValue(path, u"a"), reply(0));
    }
    EXPECT_EQ(deleteKey(u"SOFTWARE\\WOW6432Node\\TAVRONE\\NORIX\\"), reply(5));
    EXPECT_EQ(deleteKey(u"SOFTWARE\\WOW6432Node\\TAVRONE\\\\"), reply(5));
}

TEST_F(RegistryTest, FieldsThatAreMissing_are87)
{
    EXPECT_EQ(ask(pipe, u16(1)), reply(87));
    EXPECT_EQ(ask(pipe, u16(1) + null()), reply(87));
    EXPECT_EQ(ask(pipe, u16(1) + str(norix) + null()), reply(87));
    EXPECT_EQ(ask(pipe, u16(1) + str(norix) + str(u"a") + str(u"b")), reply(87));
    EXPECT_EQ(ask(pipe, u16(2) + str(u"")), reply(87));
    EXPECT_EQ(ask(pipe, u16(3) + str(norix) + str(u"a") + null()), reply(87));
    EXPECT_EQ(ask(u16(22) + str(norix) + str(u"a")), reply(8018));
}

}  // namespace
