/* Names of the application framework's types, as far as declarations need them.
 *
 * KXOVA_FRAMEWORK is 1 where the functions with such types in their signatures are declared: in C++, with Visual C++
 * only after the platform's framework headers. Elsewhere kxframework.h defines the types. */
#ifndef KXOVA_FRAMEWORK_TYPES_H
#define KXOVA_FRAMEWORK_TYPES_H

#if !defined(__cplusplus)
#define KXOVA_FRAMEWORK 0
#elif defined(_MSC_VER)
#if defined(__AFX_H__)
#define KXOVA_FRAMEWORK 1
#else
#define KXOVA_FRAMEWORK 0
#endif
#else
#define KXOVA_FRAMEWORK 1
class CString;
class CStringList;
class CWnd;
class CPropertySheet;
#endif

#endif
