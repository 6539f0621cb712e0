// What the two DLLs export and import, read from their images.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "support/win_handle.h"

namespace {

using Names = std::vector<std::string>;

class Image
{
 public:
    explicit Image(const char* name) : library_(LoadLibraryA(name)) {}

    HMODULE module() const { return library_.get(); }

    Names exports() const
    {
        const auto* table = directory<IMAGE_EXPORT_DIRECTORY>(IMAGE_DIRECTORY_ENTRY_EXPORT);
        EXPECT_EQ(table->NumberOfFunctions, table->NumberOfNames);  // nothing is exported without a name
        const auto* names = at<DWORD>(table->AddressOfNames);
        Names result;
        for (DWORD i = 0; i < table->NumberOfNames; ++i)
            result.emplace_back(at<char>(names[i]));
        std::sort(result.begin(), result.end());
        return result;
    }

    Names importedLibraries() const
    {
        Names result;
        for (const auto* entry = directory<IMAGE_IMPORT_DESCRIPTOR>(IMAGE_DIRECTORY_ENTRY_IMPORT); entry->Name;
             ++entry) {
            std::string name = at<char>(entry->Name);
            for (char& letter : name)
                letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
            result.push_back(name);
        }
        std::sort(result.begin(), result.end());
        return result;
    }

 private:
    template <typename T>
    const T* at(DWORD offset) const
    {
        return reinterpret_cast<const T*>(reinterpret_cast<const std::uint8_t*>(library_.get()) + offset);
    }

    template <typename T>
    const T* directory(int index) const
    {
        const auto* dos = at<IMAGE_DOS_HEADER>(0);
        const auto* headers = at<IMAGE_NT_HEADERS>(static_cast<DWORD>(dos->e_lfanew));
        return at<T>(headers->OptionalHeader.DataDirectory[index].VirtualAddress);
    }

    platform::Library library_;
};

void expectFound(const Image& image, const Names& names)
{
    for (const std::string& name : names) {
        EXPECT_NE(reinterpret_cast<void*>(GetProcAddress(image.module(), name.c_str())), nullptr) << name;
    }
}

const Names channelFunctions{"OnlDll_CheckDevOpen", "SCP_close",        "SCP_get_errno",
                             "SCP_openW",           "SCP_send_receive", "SetNorixHWndMsg"};
const Names programmerFunctions{"IsInternalPrommerActive", "IsPgWithInternalPrommer"};

TEST(ChannelLibrary, Exports_areExactlyThePlainNames)
{
    const Image image("KXONLINX.dll");
    EXPECT_EQ(image.exports(), channelFunctions);
    expectFound(image, channelFunctions);
}

TEST(ChannelLibrary, Imports_areTheSystemsLibrariesOnly)
{
    EXPECT_EQ(Image("KXONLINX.dll").importedLibraries(),
              (Names{"kernel32.dll", "msvcrt.dll", "ntdll.dll", "user32.dll"}));
}

TEST(ProgrammerLibrary, Exports_areExactlyThePlainNames)
{
    const Image image("kxepromapi.dll");
    EXPECT_EQ(image.exports(), programmerFunctions);
    expectFound(image, programmerFunctions);
}

TEST(ProgrammerLibrary, Imports_areTheSystemsLibrariesOnly)
{
    EXPECT_EQ(Image("kxepromapi.dll").importedLibraries(), (Names{"advapi32.dll", "kernel32.dll", "msvcrt.dll"}));
}

}  // namespace
