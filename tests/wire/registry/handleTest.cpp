// Handle functions on a key of the test's own.

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "handle_count.h"
#include "kxframework.h"
#include "kxovaapi.h"
#include "refusedKey.h"

namespace {

class HandleFunctions : public testing::Test
{
 protected:
    HandleFunctions()
    {
        RegDeleteTreeA(HKEY_CURRENT_USER, root);
        EXPECT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, root, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr), 0);
    }
    ~HandleFunctions() override
    {
        RegCloseKey(key);
        RegDeleteTreeA(HKEY_CURRENT_USER, root);
    }

    void store(const char* name, DWORD type, const std::string& bytes)
    {
        RegSetValueExA(key, name, 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                       static_cast<DWORD>(bytes.size()));
    }

    static constexpr char root[] = "Software\\kxova-test-handles";
    HKEY key = nullptr;
    CString text = "before";
    char buffer[16] = "UUUUUUUUUUUUUUU";
    unsigned long length = sizeof buffer;
};

TEST_F(HandleFunctions, CreateKey_makesTheKeysAboveToo)
{
    EXPECT_EQ(KxBRegCreateKey(key, R"(a\b\c)"), 0);
    EXPECT_EQ(KxBRegKeyExists(key, R"(a\b\c)", KEY_READ), 0);
}

TEST_F(HandleFunctions, CreateKey_thatIsThereIsNoError)
{
    EXPECT_EQ(KxBRegCreateKey(key, "a"), 0);
    EXPECT_EQ(KxBRegCreateKey(key, "a"), 0);
}

TEST_F(HandleFunctions, KeyExists_missingIsTheSystemsError)
{
    EXPECT_EQ(KxBRegKeyExists(key, "missing", KEY_READ), ERROR_FILE_NOT_FOUND);
}

TEST_F(HandleFunctions, Open_handsOutAKeyWithTheAccessAskedFor)
{
    KxBRegCreateKey(key, "a");
    HKEY opened = nullptr;
    ASSERT_EQ(KxBRegOpen(key, "a", opened, KEY_SET_VALUE), 0);
    EXPECT_EQ(RegSetValueExA(opened, "v", 0, REG_SZ, reinterpret_cast<const BYTE*>("x"), 2), 0);
    EXPECT_EQ(RegCloseKey(opened), 0);
}

TEST_F(HandleFunctions, Open_pathIsNotMapped)
{
    KxBRegCreateKey(key, R"(software\x)");
    EXPECT_EQ(KxBRegKeyExists(key, R"(software\wow6432node\x)", KEY_READ), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(KxBRegKeyExists(key, R"(software\x)", KEY_READ), 0);
}

TEST_F(HandleFunctions, SetValue_storesAText)
{
    KxBRegCreateKey(key, "a");
    EXPECT_EQ(KxBRegSetValue(key, "a", "v", "Ger\xE4t"), 0);
    char stored[16];
    DWORD size = sizeof stored;
    DWORD type = 0;
    ASSERT_EQ(RegGetValueA(key, "a", "v", RRF_RT_ANY, &type, stored, &size), 0);
    EXPECT_EQ(type, DWORD{REG_SZ});
    EXPECT_EQ(std::string(stored, size), std::string("Ger\xE4t", 6));
}

TEST_F(HandleFunctions, KeyThatRefuses_is5AndUnchangedUntilItRefusesNoMore)
{
    KxBRegCreateKey(key, "a");
    KxBRegSetValue(key, "a", "v", "kept");
    RefusedKey refused(HKEY_CURRENT_USER, LR"(Software\kxova-test-handles\a)");
    HKEY opened = nullptr;
    const std::size_t handles = handleCount();
    EXPECT_EQ(KxBRegOpen(key, "a", opened, KEY_READ), ERROR_ACCESS_DENIED);
    EXPECT_EQ(KxBRegKeyExists(key, "a", KEY_READ), ERROR_ACCESS_DENIED);
    EXPECT_EQ(KxBRegCreateKey(key, "a"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(KxBRegGetValue(key, "a", "v", text), ERROR_ACCESS_DENIED);
    EXPECT_EQ(KxBRegGetValue(key, "a", "v", buffer, &length), ERROR_ACCESS_DENIED);
    EXPECT_EQ(KxBRegSetValue(key, "a", "v", "lost"), ERROR_ACCESS_DENIED);
    EXPECT_STREQ(text, "before");
    EXPECT_EQ(length, sizeof buffer);
    EXPECT_EQ(handleCount(), handles);
    refused.giveBack();
    EXPECT_EQ(KxBRegGetValue(key, "a", "v", text), 0);
    EXPECT_STREQ(text, "kept");
    EXPECT_EQ(KxBRegSetValue(key, "a", "v", "new"), 0);
}

TEST_F(HandleFunctions, SetValue_makesNoKey)
{
    EXPECT_EQ(KxBRegSetValue(key, "missing", "v", "x"), ERROR_FILE_NOT_FOUND);
}

TEST_F(HandleFunctions, SetValue_nullTextIs87)
{
    EXPECT_EQ(KxBRegSetValue(key, "", "v", nullptr), 87);
}

TEST_F(HandleFunctions, GetValue_textIntoAString)
{
    KxBRegSetValue(key, "", "v", "abc");
    EXPECT_EQ(KxBRegGetValue(key, "", "v", text), 0);
    EXPECT_STREQ(text, "abc");
}

TEST_F(HandleFunctions, GetValue_ofAnySize)
{
    const std::string big(100000, 'x');
    KxBRegSetValue(key, "", "v", big.c_str());
    EXPECT_EQ(KxBRegGetValue(key, "", "v", text), 0);
    EXPECT_EQ(text.GetString(), big);
}

TEST_F(HandleFunctions, GetValue_missingLeavesTheString)
{
    EXPECT_EQ(KxBRegGetValue(key, "", "missing", text), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(KxBRegGetValue(key, "missing", "v", text), ERROR_FILE_NOT_FOUND);
    EXPECT_STREQ(text, "before");
}

TEST_F(HandleFunctions, GetValue_withoutANameIsTheDefaultValue)
{
    store(nullptr, REG_SZ, "abc");
    EXPECT_EQ(KxBRegGetValue(key, "", nullptr, text), 0);
    EXPECT_STREQ(text, "abc");
}

TEST_F(HandleFunctions, GetValue_textStoredWithoutATerminator)
{
    store("v", REG_SZ, "abc");
    EXPECT_EQ(KxBRegGetValue(key, "", "v", text), 0);
    EXPECT_STREQ(text, "abc");
}

TEST_F(HandleFunctions, GetValue_textToExpandIsReadAsStored)
{
    store("v", REG_EXPAND_SZ, std::string("%windir%", 9));
    EXPECT_EQ(KxBRegGetValue(key, "", "v", text), 0);
    EXPECT_STREQ(text, "%windir%");
}

TEST_F(HandleFunctions, GetValue_numberInDecimal)
{
    store("v", REG_DWORD, std::string("\xFE\xFF\xFF\xFF", 4));
    EXPECT_EQ(KxBRegGetValue(key, "", "v", text), 0);
    EXPECT_STREQ(text, "4294967294");
}

TEST_F(HandleFunctions, GetValue_bytesAreNoText)
{
    store("v", REG_BINARY, "abc");
    EXPECT_EQ(KxBRegGetValue(key, "", "v", text), ERROR_UNSUPPORTED_TYPE);
    EXPECT_STREQ(text, "before");
}

TEST_F(HandleFunctions, GetValue_textIntoABuffer)
{
    KxBRegSetValue(key, "", "v", "abc");
    EXPECT_EQ(KxBRegGetValue(key, "", "v", buffer, &length), 0);
    EXPECT_STREQ(buffer, "abc");
    EXPECT_EQ(length, 3u);
}

TEST_F(HandleFunctions, GetValue_bufferFitsExactly)
{
    KxBRegSetValue(key, "", "v", "abc");
    length = 4;
    EXPECT_EQ(KxBRegGetValue(key, "", "v", buffer, &length), 0);
    EXPECT_STREQ(buffer, "abc");
    EXPECT_EQ(buffer[4], 'U');
}

TEST_F(HandleFunctions, GetValue_bufferWithoutRoomForTheTerminatorIs234AndUntouched)
{
    KxBRegSetValue(key, "", "v", "abc");
    length = 3;
    EXPECT_EQ(KxBRegGetValue(key, "", "v", buffer, &length), 234);
    EXPECT_EQ(length, 3u);
    EXPECT_EQ(buffer[0], 'U');
}

TEST_F(HandleFunctions, GetValue_nullBufferOrLengthIs87)
{
    EXPECT_EQ(KxBRegGetValue(key, "", "v", nullptr, &length), 87);
    EXPECT_EQ(KxBRegGetValue(key, "", "v", buffer, nullptr), 87);
}

TEST_F(HandleFunctions, ThreadsAtOnce_readWholeTexts)
{
    const std::string texts[] = {std::string(2000, 'a'), std::string(3000, 'b')};
    KxBRegSetValue(key, "", "v", texts[0].c_str());
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (const std::string& mine : texts) {
        threads.emplace_back([&] {
            for (int i = 0; i < 100; ++i) {
                CString read;
                if (KxBRegSetValue(key, "", "v", mine.c_str()) != 0) ++wrong;
                if (KxBRegGetValue(key, "", "v", read) != 0) ++wrong;
                if (texts[0] != read.GetString() && texts[1] != read.GetString()) ++wrong;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}

}  // namespace
