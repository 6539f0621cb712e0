/* String and message helpers on the framework's string type; C++ only, shared by the libraries of the family. */
#ifndef KXOVA_HELPERS_H
#define KXOVA_HELPERS_H

#include "kxova/framework_types.h"
#include "kxovaapi_export.h"

#if KXOVA_FRAMEWORK

/* Joins parts of a registry key path with "\". An empty part adds nothing, no separator either; a part that ends in
 * "\" still gets one. */
KXOVAAPI CString sKeyConcat(CString a, CString b);
KXOVAAPI CString sKeyConcat(CString a, CString b, CString c);
KXOVAAPI CString sKeyConcat(CString a, CString b, CString c, CString d);
KXOVAAPI CString sKeyConcat(CString a, CString b, CString c, CString d, CString e);

/* The first item of a list whose items any of the separator characters ends. The first form takes the item and its
 * separator off the list; a list without separator is one item and becomes empty. A NULL list has no items. */
KXOVAAPI CString sFirstFromSeperatedListOneOf(CString* list, CString separators);
KXOVAAPI CString sFirstFromSeperatedListOneOf(CString list, CString separators);

/* A string resource of this library, in the ANSI code page; empty when there is none of that id. */
KXOVAAPI CString sLoadResString(unsigned int id);

/* A message box; yields the button chosen (the result of MessageBoxIndirectA; 0: there was no box). parent may be
 * NULL. A help id other than 0 adds a help button, which opens the application object's help for that id. cLangExt
 * chooses the language of the buttons: A German, B English, C French, D Spanish, E Italian, any other the system's.
 */
KXOVAAPI int nMessageBox(CWnd* parent, CString text, CString title, unsigned long style, unsigned long helpId);
KXOVAAPI int nMessageBox(CWnd* parent, CString text, CString title, unsigned long style, unsigned long helpId,
                         char cLangExt);

/* Do nothing; kept for callers of an older interface. */
KXOVAAPI void KxRegGetBuffer(CString& text, char*& buffer, unsigned long& length);
KXOVAAPI void KxRegReleaseBuffer(CString& text, char*& buffer, unsigned long length);

#endif

#endif
