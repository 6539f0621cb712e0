// Parameters of the process's command line.

#include <windows.h>

#include <cstdlib>

#include "frame/LocalCall.h"
#include "kxova/language.h"
#include "kxova/results.h"
#include "kxstring32x.h"

namespace {

CString modulePath()
{
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, sizeof path);
    path[sizeof path - 1] = 0;
    return path;
}

// What stands behind the program's own path in its command line, without the blanks and quotes that lead to it.
CString withoutModule(const LocalCall& call, const CString& commandLine, const CString& module)
{
    CString rest = commandLine;
    KX_DETAIL(call, "strCmdLine=%s komplett", rest.GetString());
    if (const int at = module.IsEmpty() ? -1 : rest.Find(module); at >= 0) {
        rest = rest.Mid(at + module.GetLength() + 1);  // and the quote or blank behind it
    }
    KX_DETAIL(call, "strCmdLine=%s ohne Modulename len=%d", rest.GetString(), rest.GetLength());
    rest.TrimLeft('"');
    KX_DETAIL(call, "strCmdLine=%s vor TrimLeft", rest.GetString());
    rest.TrimLeft();
    KX_DETAIL(call, "strCmdLine=%s nach TrimLeft", rest.GetString());
    return rest;
}

// The next word and, where several blanks lead to it, not the empty ones between them.
CString nextWord(CString& rest)
{
    CString word;
    while (word.IsEmpty() && !rest.IsEmpty())
        word = sFirstFromSeperatedListOneOf(&rest, " ");
    return word;
}

// A value that begins with a quote goes on to the closing one, or to the end of the line where that is missing.
CString unquoted(CString value, CString& rest)
{
    if (value.IsEmpty() || value[0] != '"') return value;
    while (value.Find('"', 1) < 0 && !rest.IsEmpty())
        value += " " + sFirstFromSeperatedListOneOf(&rest, " ");
    const int end = value.Find('"', 1);
    return end < 0 ? value.Mid(1) : value.Mid(1, end - 1);
}

CString followingValue(CString& rest)
{
    const CString word = nextWord(rest);
    return word.Left(1) == "-" ? CString() : unquoted(word, rest);
}

// Finds the iIndex-th word that begins with the name, and its value.
bool findValue(const LocalCall& call, CString rest, const CString& name, int iIndex, CString& value)
{
    const int length = name.GetLength();
    const bool inTheSameWord = length > 1 && name.Right(1) == "=";
    KX_DETAIL(call, "vor while-Schleife 1 strCmdLine=%s", rest.GetString());
    while (!rest.IsEmpty()) {
        const CString word = sFirstFromSeperatedListOneOf(&rest, " ");
        const CString start = word.Left(length);
        KX_DETAIL(call, "strCmdLine=%s strCmd=%s strHlp=%s", rest.GetString(), word.GetString(), start.GetString());
        if (start.CompareNoCase(name) != 0 || iIndex-- > 0) continue;
        KX_DETAIL(call, "found bMoreFollws=%d", inTheSameWord ? 0 : 1);
        value = inTheSameWord ? unquoted(word.Mid(length), rest) : followingValue(rest);
        return true;
    }
    return false;
}

}  // namespace

long DCFG_GetCmdLineParameter(CString strCommandLine, CString strParameter, CString& strValue, int iIndex)
{
    constexpr char noMoreItems[] = "<< return DCFG_ERR_NO_MORE_ITEMS";
    const LocalCall call("DCFG_GetCmdLineParameter: ");
    return guarded([&]() -> long {
        KX_ENTRY(call, ">> strParameter=%s iIndex=%d", strParameter.GetString(), iIndex);
        KX_DETAIL(call, "lpszCommandLine=%s", strCommandLine.GetString());
        if (strCommandLine.IsEmpty()) {
            KX_RESULT(call, "%s", noMoreItems);
            return DCFG_ERR_NO_MORE_ITEMS;
        }

        CString module = modulePath();
        // The server may be started under another spelling of its path; it then has no parameters.
        if (strCommandLine.Find(module) < 0 && module.Find("kxovasrvx") >= 0) module = strCommandLine;

        char drive[32];
        char directory[260];
        char file[260];
        char extension[64];
        if (const int error = _splitpath_s(module, drive, sizeof drive, directory, sizeof directory, file,
                                           sizeof file, extension, sizeof extension);
            error != 0) {
            KX_RESULT(call, "<< return ERROR %d", error);
            return error;
        }

        const CString arguments = withoutModule(call, strCommandLine, module);
        if (_stricmp(file, "kxovatsx") != 0) KX_DETAIL(call, "Achtung: Aufruf nicht von kxovatsx!!");
        if (strParameter.IsEmpty() || !findValue(call, arguments, strParameter, iIndex, strValue)) {
            KX_RESULT(call, "%s", noMoreItems);
            return DCFG_ERR_NO_MORE_ITEMS;
        }
        KX_RESULT(call, "<< return ok strValue = %s", strValue.GetString());
        return ERROR_SUCCESS;
    });
}
