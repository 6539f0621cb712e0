// nMessageBox: what the system is asked for, what is traced, and where a request for help goes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <optional>
#include <string>

#include "kxstring32x.h"
#include "messageBox.h"
#include "recordedTrace.h"

namespace {

using testing::ElementsAre;

constexpr std::uint32_t entryLevel = 8;
constexpr std::uint32_t detailLevel = 64;
constexpr std::uint32_t resultLevel = 128;

class HelpApp : public CWinApp
{
 public:
    void WinHelp(DWORD_PTR data, UINT command) override
    {
        askedContext = data;
        askedCommand = command;
        if (failing) throw std::bad_alloc();
    }
    DWORD_PTR askedContext = 0;
    UINT askedCommand = 0;
    bool failing = false;
};
HelpApp app;

// Stands in for the system: keeps what it was asked and answers as told.
struct System
{
    std::optional<MSGBOXPARAMSA> asked;
    std::string text;
    std::string caption;
    std::size_t linesBefore = 0;  // trace lines that were written before the box was shown
    int answer = IDOK;
    LCID locale = 0;
    DWORD localeFlags = 0;
    BOOL localeInstalled = TRUE;
    const RecordedTrace* trace = nullptr;
};
System* current = nullptr;

int WINAPI show(const MSGBOXPARAMSA* box)
{
    current->asked = *box;
    current->text = box->lpszText;
    current->caption = box->lpszCaption;
    if (current->trace) current->linesBefore = current->trace->lines().size();
    return current->answer;
}

BOOL WINAPI isValidLocale(LCID locale, DWORD flags)
{
    current->locale = locale;
    current->localeFlags = flags;
    return current->localeInstalled;
}

class NMessageBox : public testing::Test
{
 protected:
    void SetUp() override
    {
        current = &system;
        before_ = messageBoxSystem();
        messageBoxSystem() = {show, isValidLocale};
    }
    void TearDown() override
    {
        messageBoxSystem() = before_;
        app.failing = false;
    }

    System system;

 private:
    MessageBoxSystem before_{};
};

std::vector<std::string> textsOf(const RecordedTrace& trace)
{
    std::vector<std::string> texts;
    for (const auto& line : trace.lines())
        texts.push_back(line.text);
    return texts;
}

TEST_F(NMessageBox, Record_isFilled)
{
    CWnd parent;
    parent.Attach(reinterpret_cast<HWND>(0x1234));
    EXPECT_EQ(nMessageBox(&parent, "text", "title", MB_YESNO | MB_ICONQUESTION, 0), IDOK);
    ASSERT_TRUE(system.asked);
    EXPECT_EQ(system.asked->cbSize, 40u);
    EXPECT_EQ(system.asked->hwndOwner, reinterpret_cast<HWND>(0x1234));
    EXPECT_EQ(system.asked->hInstance, GetModuleHandleA(nullptr));
    EXPECT_EQ(system.text, "text");
    EXPECT_EQ(system.caption, "title");
    EXPECT_EQ(system.asked->dwStyle, static_cast<DWORD>(MB_YESNO | MB_ICONQUESTION));
    EXPECT_EQ(system.asked->lpszIcon, nullptr);
    EXPECT_EQ(system.asked->dwContextHelpId, 0u);
    EXPECT_NE(system.asked->lpfnMsgBoxCallback, nullptr);
    EXPECT_EQ(system.asked->dwLanguageId, 0u);
}

TEST_F(NMessageBox, NoParent_hasNoOwner)
{
    nMessageBox(nullptr, "text", "title", MB_OK, 0);
    ASSERT_TRUE(system.asked);
    EXPECT_EQ(system.asked->hwndOwner, nullptr);
}

TEST_F(NMessageBox, Answer_isPassedOn)
{
    system.answer = IDRETRY;
    EXPECT_EQ(nMessageBox(nullptr, "text", "title", MB_RETRYCANCEL, 0, 'B'), IDRETRY);
}

TEST_F(NMessageBox, HelpId_addsTheHelpButton)
{
    nMessageBox(nullptr, "text", "title", MB_OKCANCEL, 4711);
    ASSERT_TRUE(system.asked);
    EXPECT_EQ(system.asked->dwStyle, MB_OKCANCEL | 0x4000u);
    EXPECT_EQ(system.asked->dwContextHelpId, 4711u);
}

TEST_F(NMessageBox, HelpRequest_goesToTheApplicationsContextHelp)
{
    nMessageBox(nullptr, "text", "title", MB_OK, 4711);
    ASSERT_TRUE(system.asked);
    HELPINFO help{};
    help.cbSize = sizeof help;
    help.dwContextId = 4711;
    AFX_MODULE_STATE foreign{nullptr, nullptr, nullptr};
    auto* const before = AfxSetModuleState(&foreign);  // the system calls whenever it likes
    system.asked->lpfnMsgBoxCallback(&help);
    AfxSetModuleState(before);
    EXPECT_EQ(app.askedContext, 4711u);
    EXPECT_EQ(app.askedCommand, static_cast<UINT>(HELP_CONTEXT));
}

TEST_F(NMessageBox, HelpThatThrows_doesNotReachTheSystem)
{
    app.failing = true;
    nMessageBox(nullptr, "text", "title", MB_OK, 1);
    ASSERT_TRUE(system.asked);
    HELPINFO help{};
    EXPECT_NO_THROW(system.asked->lpfnMsgBoxCallback(&help));
}

struct LetterCase
{
    const char* letters;
    DWORD language;
};

class NMessageBoxLetter : public NMessageBox, public testing::WithParamInterface<LetterCase>
{
};

TEST_P(NMessageBoxLetter, ChoosesTheLanguage)
{
    for (const char* letter = GetParam().letters; *letter; ++letter) {
        nMessageBox(nullptr, "text", "title", MB_OK, 0, *letter);
        ASSERT_TRUE(system.asked);
        EXPECT_EQ(system.asked->dwLanguageId, GetParam().language) << *letter;
        EXPECT_EQ(system.locale, GetParam().language) << *letter;
    }
}

TEST_P(NMessageBoxLetter, LanguageNotInstalled_becomesTheSystems)
{
    system.localeInstalled = FALSE;
    for (const char* letter = GetParam().letters; *letter; ++letter) {
        nMessageBox(nullptr, "text", "title", MB_OK, 0, *letter);
        ASSERT_TRUE(system.asked);
        EXPECT_EQ(system.asked->dwLanguageId, 0u) << *letter;
        EXPECT_EQ(system.localeFlags, GetParam().language == 0 ? 0u : static_cast<DWORD>(LCID_INSTALLED)) << *letter;
    }
}

INSTANTIATE_TEST_SUITE_P(Letters, NMessageBoxLetter,
                         testing::Values(LetterCase{"Aa", 7}, LetterCase{"Bb", 1033}, LetterCase{"Cc", 1036},
                                         LetterCase{"Dd", 1034}, LetterCase{"Ee", 1040}, LetterCase{"zZxFf 1", 0}));

TEST_F(NMessageBox, WithoutLanguage_tracesFourLinesBeforeTheBox)
{
    const RecordedTrace trace;
    system.trace = &trace;
    nMessageBox(nullptr, "text", "title", MB_YESNO, 0x12);
    EXPECT_THAT(textsOf(trace), ElementsAre(">> sText=text sTitle=title dwStyle=4 dwHelpID=12",
                                            "dwLanguageId=0x0 cLangExt=x", "dwLanguageId=0 ", "<<return"));
    EXPECT_EQ(system.linesBefore, 4u);
}

TEST_F(NMessageBox, WithLanguage_tracesTheLocaleToo)
{
    char name[6];
    char id[64];
    const int length = GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SABBREVLANGNAME, name, sizeof name);
    GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_ILANGUAGE, id, sizeof id);
    const RecordedTrace trace;
    nMessageBox(nullptr, "text", "title", MB_OK, 0, 'c');
    EXPECT_THAT(textsOf(trace),
                ElementsAre(">> sText=text sTitle=title dwStyle=0 dwHelpID=0", "dwLanguageId=0x40c cLangExt=c",
                            "bRet=0x1 lcid=0x40c dwLangID=0x40c",
                            "GetLocaleInfo=" + std::to_string(length) + " - sAppLaguage=" + name + " LangId=" + id,
                            "dwLanguageId=40c ", "<<return"));
}

TEST_F(NMessageBox, LanguageNotInstalled_isTraced)
{
    system.localeInstalled = FALSE;
    const RecordedTrace trace;
    nMessageBox(nullptr, "text", "title", MB_OK, 0, 'A');
    ASSERT_EQ(trace.lines().size(), 6u);
    EXPECT_EQ(trace.lines()[2].text, "bRet=0x0 lcid=0x7 dwLangID=0x7");
    EXPECT_EQ(trace.lines()[4].text, "dwLanguageId=0 ");
}

TEST_F(NMessageBox, Lines_haveTheirLevelsAndNames)
{
    const RecordedTrace trace;
    nMessageBox(nullptr, "text", "title", MB_OK, 0, 'B');
    std::vector<std::uint32_t> levels;
    for (const auto& line : trace.lines()) {
        levels.push_back(line.level);
        EXPECT_EQ(line.function, "nMessageBox: ");
        EXPECT_EQ(line.module, "CFP");
        EXPECT_EQ(line.sourceFile, "kxstring32x.cpp");
    }
    EXPECT_THAT(levels, ElementsAre(entryLevel, detailLevel, detailLevel, detailLevel, detailLevel, resultLevel));
}

TEST_F(NMessageBox, LongText_isTracedUpToAHundredCharactersAndShownWhole)
{
    const RecordedTrace trace;
    nMessageBox(nullptr, CString('x', 101), "title", MB_OK, 0);
    ASSERT_FALSE(trace.lines().empty());
    EXPECT_EQ(trace.lines()[0].text, ">> sText=" + std::string(100, 'x') + " sTitle=title dwStyle=0 dwHelpID=0");
    EXPECT_EQ(system.text.size(), 101u);
}

}  // namespace
