// The language of the process: every source, in its order, with every line that is traced on the way.

#include <gmock/gmock.h>

#include "handle_count.h"
#include "kxframework.h"
#include "kxovaapi.h"
#include "program.h"
#include "refusedKey.h"
#include "registryText.h"
#include "traceCapture.h"

namespace {

constexpr char tool[] = R"(C:\Kx\tool.exe)";
constexpr char settings[] = R"(SOFTWARE\TAVRONE\NORIX\DCFG)";
constexpr char talunLanguages[] = R"(SOFTWARE\TAVRONE\TALUN\2.0\General\Languages)";
constexpr char talunExtensions[] = R"(SOFTWARE\TAVRONE\TALUN\2.0\General\LangExtensions)";
constexpr char liteLanguages[] = R"(SOFTWARE\TAVRONE\TALUN_LITE\General\Languages)";
constexpr char liteExtensions[] = R"(SOFTWARE\TAVRONE\TALUN_LITE\General\LangExtensions)";
constexpr char vantikoLanguages[] = R"(SOFTWARE\TAVRONE\VANTIKO_NET\General\Languages)";
constexpr char vantikoExtensions[] = R"(SOFTWARE\TAVRONE\VANTIKO_NET\General\LangExtensions)";

// What Windows answers about its languages.
class Windows
{
 public:
    // uiName empty: the system does not know the language of its user interface.
    explicit Windows(const char* uiName) { uiName_ = uiName; }

 private:
    static int WINAPI localeInfo(LCID locale, LCTYPE type, char* buffer, int size)
    {
        if (type == LOCALE_SABBREVLANGNAME && size == 6 && locale == 1024) return text("USR", buffer);
        if (type == LOCALE_SABBREVLANGNAME && size == 6 && locale == 2048) return text("SYS", buffer);
        if (type == 0x40000003 && size == 32 && locale == 0x415) return text(uiName_.c_str(), buffer);
        ADD_FAILURE() << "GetLocaleInfoA(" << locale << ", " << type << ", " << size << ")";
        return 0;
    }
    static LANGID WINAPI uiLanguage() { return 0x415; }
    static int text(const char* text, char* buffer)
    {
        if (!*text) return 0;
        std::strcpy(buffer, text);
        return static_cast<int>(std::strlen(text) + 1);
    }

    static inline std::string uiName_;
    ImportHook localeHook_{"GetLocaleInfoA", localeInfo};
    ImportHook uiHook_{"GetUserDefaultUILanguage", uiLanguage};
};

class LanguageTest : public testing::Test
{
 protected:
    void set(const char* key, const char* name, const char* text) { registry_.emplace_back(key, name, text); }

    long fromCommandLine(const std::string& arguments)
    {
        const std::string line = std::string(tool) + " " + arguments;
        const Program program(tool, line.c_str());
        capture.clear();
        const long result = DCFG_GetLanguageFromCommandline(line.c_str(), &language, &extension);
        lines = capture.of("DCFG_GetLanguageFromCommandline:");
        return result;
    }

    void fromAll(const std::string& arguments)
    {
        const std::string line = std::string(tool) + " " + arguments;
        const Program program(tool, line.c_str());
        capture.clear();
        DCFG_GetLanguage(language, extension);
        lines = capture.of("DCFG_GetLanguage:");
    }

    void expectPair(const char* expectedLanguage, const char* expectedExtension) const
    {
        EXPECT_STREQ(language, expectedLanguage);
        EXPECT_STREQ(extension, expectedExtension);
    }

    // Texts with their levels: ">" entry, "-" detail, "<" result.
    void expectLines(const std::vector<std::string>& expected) const
    {
        std::vector<std::string> got;
        for (const TraceLine& line : lines)
            got.push_back((line.level == "FA"   ? "> "
                           : line.level == "FM" ? "- "
                           : line.level == "FE" ? "< "
                                                : "? ") +
                          line.text);
        EXPECT_EQ(got, expected);
    }

    const TraceCapture capture;
    CString language;
    CString extension;
    std::vector<TraceLine> lines;

 private:
    std::vector<RegistryText> registry_;
};

class FromCommandLine : public LanguageTest
{
 protected:
    static std::vector<std::string> start(const std::string& arguments, const char* app, const char* letter)
    {
        return {"> >>sAppLaguage= sAppLaguageExt=", "- parse CommandLine " + std::string(tool) + " " + arguments,
                std::string("- bCallingApp ") + (*app ? "1" : "0") + " - sCallingApp=" + app,
                std::string("- bLangExt ") + (*letter ? "1" : "0") + " - sAppLaguageExt=" + letter};
    }
    static std::vector<std::string> plus(std::vector<std::string> lines, const std::vector<std::string>& more)
    {
        lines.insert(lines.end(), more.begin(), more.end());
        return lines;
    }
};

TEST_F(FromCommandLine, TalunWithALetter_theLetterAloneCounts)
{
    set(talunLanguages, "Current", "FRENCH");
    set(talunExtensions, "FRENCH", "X");
    language = "before";
    EXPECT_EQ(fromCommandLine("App=Talun LangExt=C"), 0);
    expectPair("", "C");
}

TEST_F(FromCommandLine, TalunWithALetter_isTraced)
{
    EXPECT_EQ(fromCommandLine("App=Talun LangExt=C"), 0);
    expectLines(plus(start("App=Talun LangExt=C", "Talun", "C"), {"< << Benutze Lang aus CmdLine: C"}));
}

TEST_F(FromCommandLine, Talun_isReadFromItsSettings)
{
    set(talunLanguages, "Current", "ITALIAN");
    set(talunExtensions, "ITALIAN", "E");
    EXPECT_EQ(fromCommandLine("App=Talun"), 0);
    expectPair("ITALIAN", "E");
    expectLines(plus(start("App=Talun", "Talun", ""), {"< << Benutze Lang aus Übergabeparameter: E"}));
}

TEST_F(FromCommandLine, ApplicationsName_inAnyCase)
{
    set(talunLanguages, "Current", "ITALIAN");
    set(talunExtensions, "ITALIAN", "E");
    EXPECT_EQ(fromCommandLine("app=TALUN"), 0);
    expectPair("ITALIAN", "E");
}

TEST_F(FromCommandLine, TalunLite_settingsWinOverTheLetter)
{
    set(liteLanguages, "Current", "GERMAN");
    set(liteExtensions, "GERMAN", "A");
    EXPECT_EQ(fromCommandLine("App=Talun_Lite LangExt=C"), 0);
    expectPair("GERMAN", "A");
    expectLines(
        plus(start("App=Talun_Lite LangExt=C", "Talun_Lite", "C"), {"< << Benutze Lang von Talun_Lite: GERMAN A"}));
}

TEST_F(FromCommandLine, Vantiko_settingsWinOverTheLetter)
{
    set(vantikoLanguages, "Current", "SPANISH");
    set(vantikoExtensions, "SPANISH", "D");
    EXPECT_EQ(fromCommandLine("App=Vantiko LangExt=C"), 0);
    expectPair("SPANISH", "D");
    expectLines(
        plus(start("App=Vantiko LangExt=C", "Vantiko", "C"), {"< << Benutze Lang von Vantiko_Net: SPANISH D"}));
}

TEST_F(FromCommandLine, VantikoWithoutSettings_takesTheLetter)
{
    EXPECT_EQ(fromCommandLine("App=Vantiko LangExt=C"), 0);
    expectPair("", "C");
}

TEST_F(FromCommandLine, VantikoWithHalfItsSettings_takesTheLetterWhole)
{
    set(vantikoLanguages, "Current", "SPANISH");
    EXPECT_EQ(fromCommandLine("App=Vantiko LangExt=C"), 0);
    expectPair("", "C");
}

TEST_F(FromCommandLine, UnknownApplication_takesTheLetter)
{
    EXPECT_EQ(fromCommandLine("App=Other LangExt=D"), 0);
    expectPair("", "D");
}

TEST_F(FromCommandLine, LetterAlone_counts)
{
    EXPECT_EQ(fromCommandLine("LangExt=D"), 0);
    expectPair("", "D");
    expectLines(plus(start("LangExt=D", "", "D"), {"< << Benutze Lang aus CmdLine: D"}));
}

TEST_F(FromCommandLine, WinLang_isConverted)
{
    EXPECT_EQ(fromCommandLine("WinLang FRA"), 0);
    expectPair("FRA", "C");
    expectLines(
        plus(start("WinLang FRA", "", ""), {"- no LanguageExt...using WinLang", "- WinLang= sAppLaguageExt=FRA",
                                            "< << return  - sAppLaguage=FRA sAppLaguageExt C"}));
}

TEST_F(FromCommandLine, UnknownWinLang_givesWayToWindows)
{
    const Windows windows("DEU");
    EXPECT_EQ(fromCommandLine("WinLang PLK"), 0);
    expectPair("DEU", "A");
    expectLines(plus(
        start("WinLang PLK", "", ""),
        {"- no LanguageExt...using WinLang", "- WinLang= sAppLaguageExt=PLK", "- no WinLang...using WindowsLocale",
         "- GetLocaleInfo - sAppLaguage=USR iRet=4", "- GetLocaleInfo - sAppLaguage=SYS iRet=4",
         "- lang=415 lcid=415 szLang=DEU", "< << return  - sAppLaguage=DEU sAppLaguageExt A"}));
}

TEST_F(FromCommandLine, WindowsWithoutAnAnswer_isEnglish)
{
    const Windows windows("");
    EXPECT_EQ(fromCommandLine("-q"), 1);
    expectPair("ENGLISH", "B");
    expectLines(plus(start("-q", "", ""),
                     {"- no LanguageExt...using WinLang", "- no WinLang...using WindowsLocale",
                      "- GetLocaleInfo - sAppLaguage=USR iRet=4", "- GetLocaleInfo - sAppLaguage=SYS iRet=4",
                      "- lang=415 lcid=415 szLang=", "- Defaultsprache setzen",
                      "< << return sAppLaguage=ENGLISH sAppLaguageExt=B"}));
}

TEST_F(FromCommandLine, WindowsInAnUnknownLanguage_isEnglishWhateverTheSettingsSay)
{
    const Windows windows("PLK");
    set(talunExtensions, "ENGLISH", "Q");
    EXPECT_EQ(fromCommandLine(""), 1);
    expectPair("ENGLISH", "B");
}

TEST_F(FromCommandLine, NullOutputs_are87)
{
    EXPECT_EQ(DCFG_GetLanguageFromCommandline("x", nullptr, &extension), 87);
    EXPECT_EQ(DCFG_GetLanguageFromCommandline("x", &language, nullptr), 87);
}

class FromAll : public LanguageTest
{
};

TEST_F(FromAll, CommandLine_comesFirst)
{
    set(settings, "LangExt", "Q");
    fromAll("LangExt=C");
    expectPair("", "C");
    expectLines({"> >> sAppLaguage="});
}

TEST_F(FromAll, Windows_comesBeforeTheSettings)
{
    const Windows windows("ITA");
    set(settings, "LangExt", "Q");
    fromAll("");
    expectPair("ITA", "E");
}

TEST_F(FromAll, CallingApplication_isReadFromItsSettings)
{
    const Windows windows("PLK");
    set(settings, "CallingApp", "vantiko");
    set(vantikoLanguages, "Current", "SPANISH");
    set(vantikoExtensions, "SPANISH", "D");
    fromAll("");
    expectPair("SPANISH", "D");
    expectLines({"> >> sAppLaguage=", "- sApp=vantiko"});
}

TEST_F(FromAll, UnknownCallingApplication_givesWayToTheLetterOfTheSettings)
{
    const Windows windows("PLK");
    set(settings, "CallingApp", "Other");
    set(settings, "LangExt", "Q");
    fromAll("");
    expectPair("", "Q");
    expectLines({"> >> sAppLaguage=", "- sApp=Other", "- keine Calling-App lRet=0x0", "- LangExt= sAppLaguageExt=Q"});
}

TEST_F(FromAll, CallingApplicationWithHalfItsSettings_givesWayToTheLetterOfTheSettings)
{
    const Windows windows("PLK");
    set(settings, "CallingApp", "Talun");
    set(settings, "LangExt", "Q");
    set(talunLanguages, "Current", "FRENCH");
    fromAll("");
    expectPair("", "Q");
}

TEST_F(FromAll, NoCallingApplication_isTracedWithTheReadersResult)
{
    const Windows windows("PLK");
    set(settings, "LangExt", "Q");
    fromAll("");
    expectLines({"> >> sAppLaguage=", "- keine Calling-App lRet=0x1f4c", "- LangExt= sAppLaguageExt=Q"});
}

TEST_F(FromAll, NothingAnywhere_isEnglishB)
{
    const Windows windows("PLK");
    fromAll("");
    expectPair("ENGLISH", "B");
    expectLines({"> >> sAppLaguage=", "- keine Calling-App lRet=0x1f4c", "- no LanguageExt",
                 "- GetLocaleInfo - sAppLaguage=USR iRet=4", "- GetLocaleInfo - sAppLaguage=SYS iRet=4",
                 "- lang=415 lcid=415 szLang=PLK", "- Defaultsprache setzen",
                 "< << return sAppLaguage=ENGLISH sAppLaguageExt=B"});
}

TEST_F(FromAll, NothingAnywhere_talunKnowsTheLetterOfEnglish)
{
    const Windows windows("PLK");
    set(talunExtensions, "ENGLISH", "T");
    set(vantikoExtensions, "ENGLISH", "V");
    fromAll("");
    expectPair("ENGLISH", "T");
}

TEST_F(FromAll, NothingAnywhere_vantikoKnowsTheLetterOfEnglish)
{
    const Windows windows("PLK");
    set(vantikoExtensions, "ENGLISH", "V");
    fromAll("");
    expectPair("ENGLISH", "V");
}

// Windows may have learnt its language between the two times that it is asked.
int localesAsked;

int WINAPI polishThenJapanese(LCID, LCTYPE, char* buffer, int)
{
    std::strcpy(buffer, ++localesAsked <= 3 ? "PLK" : "JPN");
    return 4;
}

TEST_F(FromAll, WindowsAnswersTheSecondTime_isTaken)
{
    localesAsked = 0;
    const ImportHook hook("GetLocaleInfoA", polishThenJapanese);
    fromAll("");
    expectPair("JPN", "J");
    EXPECT_EQ(lines.back(), (TraceLine{"FE", "DCFG_GetLanguage:", "<< return strHlp=JPN sAppLaguageExt=J"}));
}

TEST_F(FromAll, GetLanguage_isTheLetterAlone)
{
    const Program program(tool, "C:\\Kx\\tool.exe LangExt=CX");
    char letters[2] = {'?', '#'};
    GetLanguage(letters);
    EXPECT_EQ(letters[0], 'C');
    EXPECT_EQ(letters[1], '#');
}

TEST_F(FromAll, GetLanguage_emptyLetterIsZero)
{
    const Program program(tool, "C:\\Kx\\tool.exe LangExt=");
    char letter = '?';
    GetLanguage(&letter);
    EXPECT_EQ(letter, 0);
}

TEST_F(FromAll, GetLanguage_everySourceFailsIsB)
{
    const Windows windows("");
    const Program program(tool, tool);
    char letter = '?';
    GetLanguage(&letter);
    EXPECT_EQ(letter, 'B');
}

TEST_F(FromAll, GetLanguage_takesNull)
{
    GetLanguage(nullptr);
}

// The registry reader

class RegistryReader : public testing::Test
{
 protected:
    long read() { return RegReadString(key, "v", text); }

    static constexpr char key[] = R"(SOFTWARE\TAVRONE\NORIX\ReaderTest)";
    const TraceCapture capture;
    CString text = "before";
};

TEST_F(RegistryReader, Text_isRead)
{
    const RegistryText value(key, "v", "GERMAN");
    EXPECT_EQ(read(), 0);
    EXPECT_STREQ(text, "GERMAN");
}

TEST_F(RegistryReader, ValueWithoutLength_isEmpty)
{
    const RegistryText value(key, "v", REG_SZ, "", 0);
    EXPECT_EQ(read(), 0);
    EXPECT_STREQ(text, "");
}

TEST_F(RegistryReader, Text_of259CharactersFitsAnd260DoNot)
{
    {
        const RegistryText value(key, "v", std::string(259, 'x'));
        EXPECT_EQ(read(), 0);
        EXPECT_EQ(text.GetLength(), 259);
    }
    const RegistryText value(key, "v", std::string(260, 'x'));
    EXPECT_EQ(read(), 8012);
    EXPECT_STREQ(text, "");
}

TEST_F(RegistryReader, MissingKeyAndMissingValue_are8012AndEmpty)
{
    EXPECT_EQ(RegReadString(R"(SOFTWARE\TAVRONE\NORIX\None)", "v", text), 8012);
    EXPECT_STREQ(text, "");
    const RegistryText value(key, "other", "x");
    text = "before";
    EXPECT_EQ(read(), 8012);
    EXPECT_STREQ(text, "");
}

TEST_F(RegistryReader, KeyThatRefuses_is8012AndEmptyUntilItRefusesNoMore)
{
    const RegistryText value(key, "v", "GERMAN");
    RefusedKey refused(HKEY_LOCAL_MACHINE, LR"(SOFTWARE\TAVRONE\NORIX\ReaderTest)");
    const std::size_t handles = handleCount();
    EXPECT_EQ(read(), 8012);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(handleCount(), handles);
    refused.giveBack();
    EXPECT_EQ(read(), 0);
    EXPECT_STREQ(text, "GERMAN");
}

TEST_F(RegistryReader, Number_isNoText)
{
    const DWORD number = 0x41424344;
    const RegistryText value(key, "v", REG_DWORD, &number, sizeof number);
    EXPECT_EQ(read(), 8012);
    EXPECT_STREQ(text, "");
}

TEST_F(RegistryReader, NullNames_are87)
{
    EXPECT_EQ(RegReadString(nullptr, "v", text), 87);
    EXPECT_EQ(RegReadString(key, nullptr, text), 87);
}

}  // namespace
