#include "kxstring32x.h"

#include <exception>

#include "exported.h"
#include "Kxotrc.h"
#include "messageBox.h"

namespace {

constexpr char boxName[] = "nMessageBox: ";
constexpr int tracedTextLength = 100;

DWORD languageOf(char cLangExt) noexcept
{
    switch (cLangExt) {
        case 'A':
        case 'a':
            return 7;  // the bare primary language; most systems have no such locale and fall back to their own
        case 'B':
        case 'b':
            return 1033;
        case 'C':
        case 'c':
            return 1036;
        case 'D':
        case 'd':
            return 1034;
        case 'E':
        case 'e':
            return 1040;
        default:
            return 0;
    }
}

// Only a language whose locale is installed can be asked for; 0 leaves the choice to the system.
DWORD installedLanguage(DWORD language) noexcept
{
    const LCID lcid = language & 0xFFFF;
    const BOOL installed = messageBoxSystem().isValidLocale(lcid, LCID_INSTALLED);
    KXTRACE(boxName, TRC_DETAIL, "bRet=0x%x lcid=0x%x dwLangID=0x%x", static_cast<unsigned int>(installed),
            static_cast<unsigned int>(lcid), static_cast<unsigned int>(language));

    char name[6] = {};
    char id[64] = {};
    const int length = GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SABBREVLANGNAME, name, sizeof name);
    GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_ILANGUAGE, id, sizeof id);
    KXTRACE(boxName, TRC_DETAIL, "GetLocaleInfo=%d - sAppLaguage=%s LangId=%s", length, name, id);
    return installed ? language : 0;
}

// Called by the system while the box is shown; an exception would run through the system's own code.
void CALLBACK showHelp(HELPINFO* help) noexcept
{
    const ModuleContext context;
    try {
        if (CWinApp* const app = AfxGetApp()) app->WinHelp(help->dwContextId, HELP_CONTEXT);
    } catch (const std::exception&) {
        // No help is shown; the box stays.
    }
}

int showBox(CWnd* parent, const CString& text, const CString& title, unsigned long style, unsigned long helpId,
            char cLangExt)
{
    KXTRACE(boxName, TRC_ENTRY, ">> sText=%s sTitle=%s dwStyle=%x dwHelpID=%x",
            text.Left(tracedTextLength).GetString(), title.GetString(), static_cast<unsigned int>(style),
            static_cast<unsigned int>(helpId));

    MSGBOXPARAMSA box = {};
    box.cbSize = sizeof box;
    box.hwndOwner = parent ? parent->GetSafeHwnd() : nullptr;
    box.hInstance = AfxGetInstanceHandle();
    box.lpszText = text;
    box.lpszCaption = title;
    box.dwStyle = helpId != 0 ? style | MB_HELP : style;
    box.dwContextHelpId = helpId;
    box.lpfnMsgBoxCallback = showHelp;

    DWORD language = languageOf(cLangExt);
    KXTRACE(boxName, TRC_DETAIL, "dwLanguageId=0x%x cLangExt=%c", static_cast<unsigned int>(language), cLangExt);
    if (language != 0) language = installedLanguage(language);
    box.dwLanguageId = language;
    KXTRACE(boxName, TRC_DETAIL, "dwLanguageId=%x ", static_cast<unsigned int>(language));
    KXTRACE(boxName, TRC_RESULT, "<<return");
    return messageBoxSystem().show(&box);
}

CString resourceText(unsigned int id)
{
    CString text;
    // A length of 0 asks for the resource itself, which has no terminator.
    const wchar_t* resource = nullptr;
    const int units = LoadStringW(AfxGetResourceHandle(), id, reinterpret_cast<wchar_t*>(&resource), 0);
    if (units <= 0) return text;
    const int length = WideCharToMultiByte(CP_ACP, 0, resource, units, nullptr, 0, nullptr, nullptr);
    if (length <= 0) return text;
    WideCharToMultiByte(CP_ACP, 0, resource, units, text.GetBufferSetLength(length), length, nullptr, nullptr);
    return text;
}

}  // namespace

MessageBoxSystem& messageBoxSystem() noexcept
{
    static MessageBoxSystem system = {MessageBoxIndirectA, IsValidLocale};
    return system;
}

CString sLoadResString(unsigned int id)
{
    return exported([&] { return resourceText(id); });
}

int nMessageBox(CWnd* parent, CString text, CString title, unsigned long style, unsigned long helpId)
{
    return exported([&] { return showBox(parent, text, title, style, helpId, 'x'); });
}

int nMessageBox(CWnd* parent, CString text, CString title, unsigned long style, unsigned long helpId, char cLangExt)
{
    return exported([&] { return showBox(parent, text, title, style, helpId, cLangExt); });
}

void KxRegGetBuffer(CString&, char*&, unsigned long&) {}

// The same body under the second name.
#pragma GCC diagnostic ignored "-Wattribute-alias"
#pragma GCC diagnostic ignored "-Wmissing-attributes"
void KxRegReleaseBuffer(CString&, char*&, unsigned long) __attribute__((alias("_Z14KxRegGetBufferR7CStringRPcRm")));
