/* Logical names: aliases under which programs address logical devices. A name's value "LogDevice" is the device it
 * stands for, "CP_TYPE" that device's type, "enable_delete" guards its deletion. Conventions: see kxovaapi.h.
 */
#ifndef KXOVA_LOGNAME_H
#define KXOVA_LOGNAME_H

#include "kxovaapi_export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Makes a logical name that may be deleted again (its "enable_delete" is "true"). 87: the name is NULL. */
KXOVAAPI long LogNameCreate(const char* lpszLogName);

/* Deletes a logical name. 87: the name is NULL or empty. 8022: its "enable_delete" is not "true", or it has none. */
KXOVAAPI long LogNameDel(const char* lpszLogName);

/* 0 when the logical name exists. */
KXOVAAPI long LogNameExists(const char* lpszLogName);

/* One value of a logical name. */
KXOVAAPI long LogNameGetValue(const char* lpszLogName, const char* lpszParameter, char* buffer,
                              unsigned long* length);
KXOVAAPI long LogNameSetValue(const char* lpszLogName, const char* lpszParameter, const char* lpszValue);

/* 87: a name is NULL or empty. */
KXOVAAPI long LogNameDelValue(const char* lpszLogName, const char* lpszParameter);

/* The iValue-th logical name. */
KXOVAAPI long LogNameGetEnum(unsigned long iValue, char* buffer, unsigned long* length);

/* The same from one list that is fetched at the start of an enumeration and cached until 259. 87: buffer or length is
 * NULL. Threads may enumerate at the same time, but share the list. C++: throws std::system_error when its mutex
 * cannot be locked. */
KXOVAAPI long DCFG_LogNameGetEnum(unsigned long iValue, char* buffer, unsigned long* length);

/* Name and text of the iValue-th value. */
KXOVAAPI long LogNameGetEnumValue(const char* lpszLogName, unsigned long iValue, char* name,
                                  unsigned long* nameLength, char* value, unsigned long* valueLength);

/* The same from one list that is fetched at the start of an enumeration and cached until 259. 87: an output pointer
 * is NULL. */
KXOVAAPI long DCFG_LogNameGetEnumValue(const char* lpszLogName, const char* lpszSubKey, unsigned long iValue,
                                       char* name, unsigned long* nameLength, char* value,
                                       unsigned long* valueLength);

/* The logical device that the name stands for. 87: the name is NULL or empty. */
KXOVAAPI long LogNameGetLogDevice(const char* lpszLogName, char* buffer, unsigned long* length);

/* Lets the name stand for an existing logical device, or with "" for none, and copies the device's "CP_TYPE".
 * 87: lpszLogDevice is NULL. 8012: there is no such device. */
KXOVAAPI long LogNameSetLogDevice(const char* lpszLogName, const char* lpszLogDevice);

/* Always 120. */
KXOVAAPI long LogNameLock(const char* lpszLogName);
KXOVAAPI long LogNameUnlock(const char* lpszLogName, unsigned long nIgnore);

#ifdef __cplusplus
}
#endif

#endif
