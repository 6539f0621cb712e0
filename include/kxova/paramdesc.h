/* Parameter descriptions: what a parameter of a logical device may be set to, and checks against it. Conventions: see
 * kxovaapi.h.
 *
 * A description is a set of named attributes: "type" ("enum", "bool", "string", "int", "long", "word", "dword", …),
 * "min", "max", "step", "base", "default". A parameter of type "enum" has a list of items "value/text".
 */
#ifndef KXOVA_PARAMDESC_H
#define KXOVA_PARAMDESC_H

#include "kxova/framework_types.h"
#include "kxovaapi_export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The iValue-th net type (protocol). 87: buffer or length is NULL. */
KXOVAAPI long NetTypeGetEnum(unsigned long iValue, char* buffer, unsigned long* length);

#ifdef __cplusplus
}

#if KXOVA_FRAMEWORK
/* The same. 87: the string is NULL. */
KXOVAAPI long NetTypeGetEnum(unsigned long iValue, CString* name);

/* One attribute of a parameter's description. For a parameter that is named by a path ("…\baudrate") the attribute is
 * followed by "/" and its display text when it is one of the parameter's choices. The string is assigned on success
 * alone. 87: an argument is NULL. 8621: a reply of an unexpected kind. */
KXOVAAPI long LogDeviceGetParamDesc(const char* lpszLogDevice, const char* lpszParameter, const char* lpszValue,
                                    CString* psParamValue);

/* Whether a parameter may be set to a value; nothing is written. "min", "max" and "default" (in any case) stand for
 * the numbers that the description gives, and are replaced by them in the caller's string.
 *
 *   0      accepted; so is every value of a parameter without a description
 *   87     an argument is NULL, or the value is empty
 *   8050   not one of the choices of an "enum" (the values count, in any case, not the texts)
 *   8052   neither "true" nor "false", in any case, for a "bool"
 *   8054   below "min"
 *   8056   above "max"; noticed only when there is a "min" too
 *   8058   not a whole number of steps above "min"; steps below 2 are not checked
 *
 * Numbers are read in the description's base (10 when it is missing or not between 2 and 35), signed for "int" and
 * "long", unsigned for every other type. */
KXOVAAPI long LogDeviceCheckValue(const char* lpszLogDevice, const char* lpszParameter, CString& sValue);

/* Append the items that a parameter may be set to: those that hold for this logical device, and those of every
 * device of its protocol. Nothing is appended when they cannot be read, or an argument is NULL. */
KXOVAAPI void DCFG_LogDeviceGetMostSpecializedEnumList(const char* lpszLogDevice, const char* lpszParameter,
                                                       CStringList* list);
KXOVAAPI void DCFG_LogDeviceGetAverageEnumList(const char* lpszLogDevice, const char* lpszParameter,
                                               CStringList* list);

/* The display text of one choice of a parameter, in the language of this process. lpszValue NULL: of the value that
 * the device has. 87: another argument is NULL. 259: the value is none of the choices. */
KXOVAAPI long DCFG_LogDeviceGetEnumStringLang(const char* lpszLogDevice, const char* lpszParameter,
                                              const char* lpszValue, CString* text);

/* The value as the buffer form of this name (logdevice.h) yields it, assigned on success alone. 87: a pointer is
 * NULL. */
KXOVAAPI long LogDeviceGetValue(const char* lpszLogDevice, const char* lpszParameter, CString* value);
#endif
#endif

#endif
