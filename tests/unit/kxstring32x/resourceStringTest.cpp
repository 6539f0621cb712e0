// The library's string resources, linked into this program as into the library.
#include <gtest/gtest.h>

#include "kxstring32x.h"
#include "resource.h"

namespace {

constexpr WORD german = MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN);
constexpr WORD english = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);

CString inLanguage(UINT id, WORD language)
{
    CString text;
    text.LoadString(GetModuleHandleA(nullptr), id, language);
    return text;
}

class LibraryString : public testing::TestWithParam<UINT>
{
};

TEST_P(LibraryString, IsThereInBothLanguages)
{
    EXPECT_FALSE(inLanguage(GetParam(), german).IsEmpty());
    EXPECT_FALSE(inLanguage(GetParam(), english).IsEmpty());
    EXPECT_NE(inLanguage(GetParam(), german), inLanguage(GetParam(), english));
}

TEST_P(LibraryString, LoadedById_isOneOfTheLanguages)
{
    const CString text = sLoadResString(GetParam());
    EXPECT_TRUE(text == inLanguage(GetParam(), german) || text == inLanguage(GetParam(), english)) << text;
}

INSTANTIATE_TEST_SUITE_P(Ids, LibraryString,
                         testing::Values(IDS_NO_SERVER, IDS_NOT_FOUND, IDS_DELETE_DISABLED, IDS_VALUE_REFUSED,
                                         IDS_LIBRARY_MISSING));

TEST(sLoadResString, MissingId_isEmpty)
{
    EXPECT_TRUE(sLoadResString(60000).IsEmpty());
    EXPECT_TRUE(sLoadResString(0).IsEmpty());
}

TEST(sLoadResString, Letters_areInTheAnsiCodePage)
{
    EXPECT_STREQ(inLanguage(IDS_DELETE_DISABLED, german), "Der logische Name ist gegen L\xF6schen gesch\xFCtzt.");
}

TEST(sLoadResString, ResourceHandleSetAside_isNotTheOneReadFromBehindTheContext)
{
    AFX_MODULE_STATE foreign{nullptr, nullptr, nullptr};
    auto* const before = AfxSetModuleState(&foreign);
    const CString text = sLoadResString(IDS_NOT_FOUND);
    AfxSetModuleState(before);
    EXPECT_FALSE(text.IsEmpty());
}

}  // namespace
