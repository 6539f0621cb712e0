// The names that the library exports are its contract: none too few, none too many.

#include <gmock/gmock.h>
#include <windows.h>

#include <set>
#include <string>

namespace {

using Names = std::set<std::string>;

const Names expected = {
#include "exports.inc"
};

// The names in the export table of a loaded module.
Names exportedBy(const char* moduleName)
{
    const auto* image = reinterpret_cast<const std::uint8_t*>(LoadLibraryA(moduleName));
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(image);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS32*>(image + dos->e_lfanew);
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
    const auto* exports = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(image + directory.VirtualAddress);
    const auto* names = reinterpret_cast<const DWORD*>(image + exports->AddressOfNames);
    Names all;
    for (DWORD i = 0; i < exports->NumberOfNames; ++i)
        all.emplace(reinterpret_cast<const char*>(image + names[i]));
    return all;
}

TEST(ExportTable, HoldsExactlyTheDeclaredFunctions)
{
    EXPECT_THAT(exportedBy("kxovaapi.dll"), testing::ContainerEq(expected));
}

}  // namespace
