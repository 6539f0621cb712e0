/* The language that this process runs in, and the codes of languages. All of it is decided in the process; no server
 * is asked.
 *
 * A language is a pair: a name ("ENGLISH") or system abbreviation ("DEU"), which may be empty, and the extension
 * letter by which texts are chosen: A German, B English, C French, D Spanish, E Italian, J Japanese, K Chinese.
 *
 * The sources, first hit wins:
 *
 *   the command line   App=NAME, with that application's registry settings (Talun, Talun_Lite, Vantiko);
 *                      LangExt=LETTER; WinLang ABBREVIATION (a blank, no "=")
 *   Windows            the language of the user interface
 *   the registry       HKEY_LOCAL_MACHINE\SOFTWARE\TAVRONE\NORIX\DCFG (32-bit view): CallingApp, LangExt
 *   English            "ENGLISH" with "B"
 */
#ifndef KXOVA_LANGUAGE_H
#define KXOVA_LANGUAGE_H

#include "kxova/framework_types.h"
#include "kxovaapi_export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Stores the extension letter of this process's language (0 when it is empty) in the one character at pLangExt. */
KXOVAAPI void GetLanguage(char* pLangExt);

/* Conversions between a system abbreviation or two-letter code and an extension letter; see the string forms below.
 * out receives the letter or code with its terminator, and the empty text when there is none. 260 bytes fit in any
 * case. */
KXOVAAPI long ConvertOsToTALUNLang(const char* in, char* out);
KXOVAAPI long ConvertTALUNToOsLang(const char* in, char* out);

#ifdef __cplusplus
}

#if KXOVA_FRAMEWORK
/* This process's language. Always yields a pair that can be used. */
KXOVAAPI void DCFG_GetLanguage(CString& sAppLanguage, CString& sAppLanguageExt);

/* The same from a command line (and Windows) alone: 0, or 1 when it fell back to "ENGLISH" with "B". 87: a string is
 * NULL. */
KXOVAAPI long DCFG_GetLanguageFromCommandline(CString strCommandLine, CString* sAppLanguage,
                                              CString* sAppLanguageExt);

/* The value of a parameter in a command line of this process, without regard to the name's case. The name "App=" has
 * its value behind it in the same word, the name "WinLang" has it in the next word, unless that begins with "-". A
 * value in double quotes may hold blanks. iIndex chooses among several parameters of the name, 0 is the first.
 * 259: there is no such parameter; the string is then as it was. Other codes: the program's path cannot be split. */
KXOVAAPI long DCFG_GetCmdLineParameter(CString strCommandLine, CString strParameter, CString& strValue, int iIndex);

/* The extension letter of a system abbreviation ("DEU") or code ("de"): its first two letters count, in any case.
 * Chinese is K for "CHS" alone; every other code that begins with ZH or CH is English. 87: empty, 8012: no such
 * language; the output is then as it was. */
KXOVAAPI long ConvertOsToTALUNLanguage(CString sOsLanguage, CString* sAppLanguageExt);

/* The two-letter code of an extension letter, in any case. 87: not exactly one character, 8012: no such letter. */
KXOVAAPI long ConvertTALUNToOsLanguage(CString sAppLanguageExt, CString* sOsLanguage);

/* A text below HKEY_LOCAL_MACHINE, in the 32-bit view, of at most 260 bytes. 87: a name is NULL. 8012: there is no
 * such text; it is then empty. */
KXOVAAPI long RegReadString(const char* key, const char* value, CString& text);
#endif
#endif

#endif
