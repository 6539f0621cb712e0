// Property pages from an extension library.

#include <gmock/gmock.h>

#include "kxframework.h"
#include "kxovaapi.h"
#include "traceCapture.h"

using testing::ElementsAre;

namespace {

constexpr char function[] = "DCFG_DLL_AddPage:";

std::string hexText(const void* pointer)
{
    char text[16];
    std::snprintf(text, sizeof text, "%x", static_cast<unsigned int>(reinterpret_cast<std::uintptr_t>(pointer)));
    return text;
}

bool loaded(const char* library)
{
    return GetModuleHandleA(library) != nullptr;
}

class AddPage : public testing::Test
{
 protected:
    ~AddPage() override
    {
        while (const HMODULE pages = GetModuleHandleA("wire_pages.dll"))
            FreeLibrary(pages);
    }
};

TEST_F(AddPage, Function_addsItsPageAndItsResultIsReturned)
{
    CPropertySheet sheet;
    EXPECT_EQ(DCFG_DLL_AddPage("wire_pages.dll", "AddPages", &sheet), 0x1234);
    EXPECT_EQ(sheet.GetPageCount(), 1);
}

TEST_F(AddPage, Library_staysLoadedForItsPages)
{
    DCFG_DLL_AddPage("wire_pages.dll", "AddPages", nullptr);
    EXPECT_TRUE(loaded("wire_pages.dll"));
}

TEST_F(AddPage, NameWithoutExtension_isFoundByTheSystem)
{
    EXPECT_EQ(DCFG_DLL_AddPage("wire_pages", "AddPages", nullptr), 0x1234);
}

TEST_F(AddPage, NameWithAPath_is8102AndLoadsNothing)
{
    char path[MAX_PATH];
    GetModuleFileNameA(nullptr, path, sizeof path);
    const std::string folder = std::string(path).substr(0, std::string(path).rfind('\\'));
    for (const std::string& name : {folder + R"(\wire_pages.dll)", std::string(R"(.\wire_pages.dll)"),
                                    std::string(R"(\wire_pages.dll)"), std::string(R"(C:\x\pages.dll)")}) {
        EXPECT_EQ(DCFG_DLL_AddPage(name.c_str(), "AddPages", nullptr), 8102) << name;
        EXPECT_FALSE(loaded("wire_pages.dll")) << name;
    }
}

TEST_F(AddPage, ForwardSlash_isNotLookedAt)
{
    EXPECT_EQ(DCFG_DLL_AddPage("./wire_pages.dll", "AddPages", nullptr), 0x1234);
}

TEST_F(AddPage, MissingLibrary_is8102)
{
    EXPECT_EQ(DCFG_DLL_AddPage("wire_no_such_library.dll", "AddPages", nullptr), 8102);
}

TEST_F(AddPage, MissingFunction_is8104AndUnloadsTheLibrary)
{
    EXPECT_EQ(DCFG_DLL_AddPage("wire_pages.dll", "NoSuchFunction", nullptr), 8104);
    EXPECT_FALSE(loaded("wire_pages.dll"));
}

TEST_F(AddPage, NullNames_are87)
{
    EXPECT_EQ(DCFG_DLL_AddPage(nullptr, "AddPages", nullptr), 87);
    EXPECT_EQ(DCFG_DLL_AddPage("wire_pages.dll", nullptr, nullptr), 87);
}

TEST_F(AddPage, Trace_success)
{
    const TraceCapture capture;
    CPropertySheet sheet;
    DCFG_DLL_AddPage("wire_pages.dll", "AddPages", &sheet);
    EXPECT_THAT(capture.of(function),
                ElementsAre(TraceLine{"FA", function,
                                      ">> lpszDLL=wire_pages.dll lpszFkt=AddPages pPropSheet=" + hexText(&sheet)},
                            TraceLine{"FE", function, "<< return=1234 "}));
}

TEST_F(AddPage, Trace_failures)
{
    const TraceCapture capture("0x90");
    DCFG_DLL_AddPage(R"(C:\x\pages.dll)", "AddPages", nullptr);
    DCFG_DLL_AddPage("wire_no_such_library.dll", "AddPages", nullptr);
    DCFG_DLL_AddPage("wire_pages.dll", "NoSuchFunction", nullptr);
    EXPECT_THAT(capture.of(function),
                ElementsAre(TraceLine{"FR", function, "<< return DCFG_ERR_CANT_FIND_DLL (DLL name suspicious"},
                            TraceLine{"FE", function, "<< return DCFG_ERR_CANT_FIND_DLL"},
                            TraceLine{"FE", function, "<< return DCFG_ERR_CANT_START_DLL"}));
}

}  // namespace
