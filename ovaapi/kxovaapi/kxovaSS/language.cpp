// The language that this process runs in.

#include <windows.h>

#include "frame/LocalCall.h"
#include "kxova/language.h"
#include "kxova/results.h"
#include "kxovaSS/languageOverride.h"

std::string languageExtOverride;

namespace {

constexpr char settingsKey[] = R"(SOFTWARE\TAVRONE\NORIX\DCFG)";
constexpr char english[] = "ENGLISH";

// An application that may call this process, and where it keeps its language.
struct CallingApp
{
    const char* name;
    const char* traceName;
    const char* languages;
    const char* extensions;

    bool is(const CString& wanted) const noexcept { return wanted.CompareNoCase(name) == 0; }
};

constexpr CallingApp talun = {"Talun", "Talun", R"(SOFTWARE\TAVRONE\TALUN\2.0\General\Languages)",
                              R"(SOFTWARE\TAVRONE\TALUN\2.0\General\LangExtensions)"};
constexpr CallingApp talunLite = {"Talun_Lite", "Talun_Lite", R"(SOFTWARE\TAVRONE\TALUN_LITE\General\Languages)",
                                  R"(SOFTWARE\TAVRONE\TALUN_LITE\General\LangExtensions)"};
constexpr CallingApp vantiko = {"Vantiko", "Vantiko_Net", R"(SOFTWARE\TAVRONE\VANTIKO_NET\General\Languages)",
                                R"(SOFTWARE\TAVRONE\VANTIKO_NET\General\LangExtensions)"};

const CallingApp* callingApp(const CString& name)
{
    for (const CallingApp* const app : {&talun, &talunLite, &vantiko}) {
        if (app->is(name)) return app;
    }
    return nullptr;
}

// Both halves of an application's language, or nothing.
bool readPair(const CallingApp& app, CString& language, CString& extension)
{
    CString current;
    CString letter;
    if (RegReadString(app.languages, "Current", current) != ERROR_SUCCESS) return false;
    if (RegReadString(app.extensions, current, letter) != ERROR_SUCCESS) return false;
    language = current;
    extension = letter;
    return true;
}

// The language of the user interface. What the locales of user and system say is traced for comparison.
bool windowsLanguage(const LocalCall& call, CString& language, CString& extension)
{
    for (const LCID locale : {LOCALE_USER_DEFAULT, LOCALE_SYSTEM_DEFAULT}) {
        char name[6] = {};
        const int length = GetLocaleInfoA(locale, LOCALE_SABBREVLANGNAME, name, sizeof name);
        language = name;
        KX_DETAIL(call, "GetLocaleInfo - sAppLaguage=%s iRet=%d", name, length);
    }
    const LANGID id = GetUserDefaultUILanguage();
    const LCID locale = MAKELCID(id, SORT_DEFAULT);
    char name[32] = {};
    const int length = GetLocaleInfoA(locale, LOCALE_SABBREVLANGNAME | LOCALE_USE_CP_ACP, name, sizeof name);
    language = name;
    KX_DETAIL(call, "lang=%x lcid=%x szLang=%s", hex(id), hex(locale), name);
    return length > 0 && ConvertOsToTALUNLanguage(language, &extension) == ERROR_SUCCESS;
}

void traceCallingApp(const LocalCall& call, const CallingApp& app, const CString& language, const CString& extension)
{
    if (&app == &talun) {
        KX_RESULT(call, "<< Benutze Lang aus Übergabeparameter: %s", extension.GetString());
    } else {
        KX_RESULT(call, "<< Benutze Lang von %s: %s %s", app.traceName, language.GetString(), extension.GetString());
    }
}

long fromCommandLine(const LocalCall& call, const CString& commandLine, CString& language, CString& extension)
{
    KX_ENTRY(call, ">>sAppLaguage=%s sAppLaguageExt=%s", language.GetString(), extension.GetString());
    KX_DETAIL(call, "parse CommandLine %s", commandLine.GetString());

    CString sCallingApp;
    const bool bCallingApp = DCFG_GetCmdLineParameter(commandLine, "App=", sCallingApp, 0) == ERROR_SUCCESS;
    KX_DETAIL(call, "bCallingApp %d - sCallingApp=%s", bCallingApp ? 1 : 0, sCallingApp.GetString());
    const bool bLangExt = DCFG_GetCmdLineParameter(commandLine, "LangExt=", extension, 0) == ERROR_SUCCESS;
    KX_DETAIL(call, "bLangExt %d - sAppLaguageExt=%s", bLangExt ? 1 : 0, extension.GetString());

    // For the first application the letter on the command line spares the registry; for the others the registry wins.
    const CallingApp* const app = bCallingApp ? callingApp(sCallingApp) : nullptr;
    if (app && !(app == &talun && bLangExt) && readPair(*app, language, extension)) {
        traceCallingApp(call, *app, language, extension);
        return ERROR_SUCCESS;
    }

    language.Empty();
    if (bLangExt) {
        KX_RESULT(call, "<< Benutze Lang aus CmdLine: %s", extension.GetString());
        return ERROR_SUCCESS;
    }
    if (!languageExtOverride.empty()) {
        extension = languageExtOverride.c_str();
        KX_RESULT(call, "<< Benutze LangExt von globaler Variable: %s", extension.GetString());
        return ERROR_SUCCESS;
    }

    KX_DETAIL(call, "no LanguageExt...using WinLang");
    if (DCFG_GetCmdLineParameter(commandLine, "WinLang", language, 0) == ERROR_SUCCESS) {
        KX_DETAIL(call, "WinLang= sAppLaguageExt=%s", language.GetString());
        if (ConvertOsToTALUNLanguage(language, &extension) == ERROR_SUCCESS) {
            KX_RESULT(call, "<< return  - sAppLaguage=%s sAppLaguageExt %s", language.GetString(),
                      extension.GetString());
            return ERROR_SUCCESS;
        }
    }

    KX_DETAIL(call, "no WinLang...using WindowsLocale");
    if (windowsLanguage(call, language, extension)) {
        KX_RESULT(call, "<< return  - sAppLaguage=%s sAppLaguageExt %s", language.GetString(), extension.GetString());
        return ERROR_SUCCESS;
    }

    KX_DETAIL(call, "Defaultsprache setzen");
    language = english;
    extension = "B";
    KX_RESULT(call, "<< return sAppLaguage=%s sAppLaguageExt=%s", language.GetString(), extension.GetString());
    return 1;
}

bool fromSettings(const LocalCall& call, CString& language, CString& extension)
{
    CString sApp;
    const long lRet = RegReadString(settingsKey, "CallingApp", sApp);
    if (lRet == ERROR_SUCCESS) {
        KX_DETAIL(call, "sApp=%s", sApp.GetString());
        const CallingApp* const app = callingApp(sApp);
        if (app && readPair(*app, language, extension)) return true;
    }
    KX_DETAIL(call, "keine Calling-App lRet=0x%x", hex(lRet));
    language.Empty();
    if (RegReadString(settingsKey, "LangExt", extension) != ERROR_SUCCESS) return false;
    KX_DETAIL(call, "LangExt= sAppLaguageExt=%s", extension.GetString());
    return true;
}

}  // namespace

long RegReadString(const char* key, const char* value, CString& text)
{
    const ModuleContext context;
    return guarded([&]() -> long {
        if (!key || !value) return ERROR_INVALID_PARAMETER;
        text.Empty();
        HKEY opened = nullptr;
        if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, key, 0, KEY_READ, &opened) != ERROR_SUCCESS) return DCFG_ERR_NOT_FOUND;
        char buffer[260] = {};
        DWORD size = sizeof buffer;
        DWORD type = REG_NONE;
        const LSTATUS result =
            RegQueryValueExA(opened, value, nullptr, &type, reinterpret_cast<BYTE*>(buffer), &size);
        RegCloseKey(opened);
        if (result != ERROR_SUCCESS || (type != REG_SZ && type != REG_EXPAND_SZ)) return DCFG_ERR_NOT_FOUND;
        text = CString(buffer, static_cast<int>(strnlen(buffer, sizeof buffer)));
        return ERROR_SUCCESS;
    });
}

long DCFG_GetLanguageFromCommandline(CString strCommandLine, CString* sAppLanguage, CString* sAppLanguageExt)
{
    const LocalCall call("DCFG_GetLanguageFromCommandline: ");
    return guarded([&]() -> long {
        if (!sAppLanguage || !sAppLanguageExt) return ERROR_INVALID_PARAMETER;
        return fromCommandLine(call, strCommandLine, *sAppLanguage, *sAppLanguageExt);
    });
}

// The registry is asked only when the command line and Windows yield no language, and again before the default.
void DCFG_GetLanguage(CString& sAppLanguage, CString& sAppLanguageExt)
{
    const LocalCall call("DCFG_GetLanguage: ");
    guarded([&]() -> long {
        KX_ENTRY(call, ">> sAppLaguage=%s", sAppLanguage.GetString());
        if (DCFG_GetLanguageFromCommandline(GetCommandLineA(), &sAppLanguage, &sAppLanguageExt) == ERROR_SUCCESS) {
            return ERROR_SUCCESS;
        }
        if (fromSettings(call, sAppLanguage, sAppLanguageExt)) return ERROR_SUCCESS;

        KX_DETAIL(call, "no LanguageExt");
        if (windowsLanguage(call, sAppLanguage, sAppLanguageExt)) {
            KX_RESULT(call, "<< return strHlp=%s sAppLaguageExt=%s", sAppLanguage.GetString(),
                      sAppLanguageExt.GetString());
            return ERROR_SUCCESS;
        }

        KX_DETAIL(call, "Defaultsprache setzen");
        sAppLanguage = english;
        if (RegReadString(talun.extensions, english, sAppLanguageExt) != ERROR_SUCCESS &&
            RegReadString(vantiko.extensions, english, sAppLanguageExt) != ERROR_SUCCESS) {
            sAppLanguageExt = "B";
        }
        KX_RESULT(call, "<< return sAppLaguage=%s sAppLaguageExt=%s", sAppLanguage.GetString(),
                  sAppLanguageExt.GetString());
        return ERROR_SUCCESS;
    });
}

void GetLanguage(char* pLangExt)
{
    const ModuleContext context;
    guarded([&]() -> long {
        if (!pLangExt) return ERROR_INVALID_PARAMETER;
        CString language;
        CString extension;
        DCFG_GetLanguage(language, extension);
        *pLangExt = extension.GetAt(0);
        return ERROR_SUCCESS;
    });
}
