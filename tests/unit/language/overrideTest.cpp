// The language extension that a host may set for the whole process: its place among the sources.

#include <gmock/gmock.h>

#include "kxframework.h"
#include "kxova/language.h"
#include "kxovaSS/languageOverride.h"
#include "recordedTrace.h"

namespace {

class LanguageOverride : public testing::Test
{
 protected:
    LanguageOverride() { languageExtOverride = "J"; }
    ~LanguageOverride() override { languageExtOverride.clear(); }

    CString language = "before";
    CString extension = "before";
};

TEST_F(LanguageOverride, IsEmptyAtFirst)
{
    languageExtOverride.clear();
    EXPECT_EQ(DCFG_GetLanguageFromCommandline("x WinLang FRA", &language, &extension), 0);
    EXPECT_STREQ(extension, "C");
}

TEST_F(LanguageOverride, ComesBeforeWinLang)
{
    EXPECT_EQ(DCFG_GetLanguageFromCommandline("x WinLang FRA", &language, &extension), 0);
    EXPECT_STREQ(language, "");
    EXPECT_STREQ(extension, "J");
}

TEST_F(LanguageOverride, ComesBehindTheLetterOfTheCommandLine)
{
    EXPECT_EQ(DCFG_GetLanguageFromCommandline("x LangExt=D", &language, &extension), 0);
    EXPECT_STREQ(extension, "D");
}

TEST_F(LanguageOverride, IsTraced)
{
    const RecordedTrace trace;
    DCFG_GetLanguageFromCommandline("x", &language, &extension);
    const RecordedLine& last = trace.lines().back();
    EXPECT_EQ(last.function, "DCFG_GetLanguageFromCommandline: ");
    EXPECT_EQ(last.level, 128u);
    EXPECT_EQ(last.text, "<< Benutze LangExt von globaler Variable: J");
}

}  // namespace
