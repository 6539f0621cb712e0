/* Registry-style access in three layers, and values with requests of their own. Conventions: see kxovaapi.h.
 *
 *   KxReg…     path functions: a key by its path below HKEY_LOCAL_MACHINE. The server does the work, over a pipe of
 * its own, and decides what may be read and written; nothing happens in the calling process. A path below "software\"
 * is mapped into the 32-bit view first, unless it names that view itself. DCFG_Reg…  dispatching functions: a path
 * below one of the three keys of the configuration is answered by the functions of logical devices, logical names and
 * definitions, every other by the path functions: SOFTWARE\TAVRONE\NORIX\LogDevices SOFTWARE\TAVRONE\NORIX\LogNames
 *                  SOFTWARE\TAVRONE\NORIX\DefDevices
 *              in any case. The object's name is the text behind the path's last backslash.
 *   KxBReg…    handle functions: the registry itself, below an open key, in the calling process and without mapping.
 *
 * Results of the path functions: 87 for a NULL argument; 6 without a server; 233 when a server is starting and cannot
 * be reached in time; another Windows error when the transfer fails; 111 for a request beyond 8192 bytes or a reply
 * that ends too soon; 8621 for a reply of an unexpected kind; else the server's result. A text that does not fit the
 * buffer with its terminator gives 234 and stores the room it needs. A call waits at most 20 s for a server that is
 * starting, and at most 20 s for the calls of other processes.
 */
#ifndef KXOVA_REGISTRY_H
#define KXOVA_REGISTRY_H

#include <windows.h>

#include "kxova/framework_types.h"
#include "kxovaapi_export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Path functions ---- */

/* Deletes a key with everything below it; deletes one value. */
KXOVAAPI long KxRegDelKey(const char* lpszKey);
KXOVAAPI long KxRegDelValue(const char* lpszKey, const char* lpszParameter);

/* Creates a key, with the keys above it. */
KXOVAAPI long KxRegCreateKey(const char* lpszKey);

/* Stores a text. */
KXOVAAPI long KxRegSetValue(const char* lpszKey, const char* lpszParameter, const char* lpszValue);

/* One value, as text whatever its type. */
KXOVAAPI long KxRegGetValue(const char* lpszKey, const char* lpszParameter, char* buffer, unsigned long* length);

/* The name of the iValue-th subkey; name and text of the iValue-th value. */
KXOVAAPI long KxRegEnumKey(const char* lpszKey, unsigned long iValue, char* buffer, unsigned long* length);
KXOVAAPI long KxRegEnumValue(const char* lpszKey, unsigned long iValue, char* name, unsigned long* nameLength,
                             char* value, unsigned long* valueLength);

/* ---- Dispatching functions; 87: lpszKey is NULL ---- */

/* The iValue-th logical device or logical name, whatever follows in the path; below DefDevices\DeviceID, \CP_TYPE and
 * \DefaultLogDevices the iValue-th template of that type. */
KXOVAAPI long DCFG_RegGetEnumKey(const char* lpszKey, unsigned long iValue, char* buffer, unsigned long* length);

/* Name and text of the iValue-th value of the object that the path names. A path below DefDevices\CP_TYPE has up to
 * five parts, further ones are ignored. 87: a path in DefDevices, but below none of its three keys. */
KXOVAAPI long DCFG_RegGetEnumValue(const char* lpszKey, unsigned long iValue, char* name, unsigned long* nameLength,
                                   char* value, unsigned long* valueLength);

/* 0 when the object exists. access is ignored. 8018: a path below none of the three keys, the server is not asked. */
KXOVAAPI long DCFG_RegKeyExists(const char* lpszKey, unsigned long access);

/* Stores one value. Always 0 for a path below the three keys, whatever the server answers; below DefDevices nothing
 * is written. */
KXOVAAPI long DCFG_RegSetValue(const char* lpszKey, const char* lpszParameter, const char* lpszValue);

/* One value: below LogDevices the attribute of the board description that has the device's name, below LogNames the
 * name's value, else (below DefDevices too) the registry's. 87: an argument is NULL. */
KXOVAAPI long DCFG_RegGetValue(const char* lpszKey, const char* lpszParameter, char* value, unsigned long* pLen);

/* ---- Handle functions; they return the registry's results ---- */

/* Opens a key; the caller closes it with RegCloseKey. On failure key is NULL or what it was. */
#ifdef __cplusplus
KXOVAAPI long KxBRegOpen(HKEY parent, const char* lpszKey, HKEY& key, unsigned long access);
#else
KXOVAAPI long KxBRegOpen(HKEY parent, const char* lpszKey, HKEY* key, unsigned long access);
#endif

/* 0 when the key can be opened with this access. */
KXOVAAPI long KxBRegKeyExists(HKEY parent, const char* lpszKey, unsigned long access);

/* Creates a key, with the keys above it, or finds it there. */
KXOVAAPI long KxBRegCreateKey(HKEY parent, const char* lpszKey);

/* One value: a text as stored, a REG_DWORD in decimal. 1630: another type. 87: buffer or length is NULL. 234: it does
 * not fit, *length is as it was. lpszParameter NULL or "": the key's default value. */
KXOVAAPI long KxBRegGetValue(HKEY parent, const char* lpszKey, const char* lpszParameter, char* buffer,
                             unsigned long* length);

/* Stores a text (REG_SZ) in a key that exists. 87: lpszValue is NULL. */
KXOVAAPI long KxBRegSetValue(HKEY parent, const char* lpszKey, const char* lpszParameter, const char* lpszValue);

/* ---- Values with requests of their own ---- */

/* Sets a value of the server's own, see DCFG_SpecialGetValue. 87: an argument is NULL. */
KXOVAAPI long DCFG_SpecialSetValue(const char* lpszParameter, const char* lpszValue);

/* One value of a default logical device. 87: a text or the buffer is NULL. pLen NULL ends with 234. */
KXOVAAPI long DCFG_GetDefaultLogDeviceValue(const char* lpszDefaultLogdevice, const char* lpszParameter, char* value,
                                            unsigned long* pLen);

/* Stores a value in the logical device that collects what is to be replicated. Always 0; NULL texts are sent as such.
 */
KXOVAAPI long DCFG_ReplicateEntry(const char* lpszEntryName, const char* lpszEntryValue);

#ifdef __cplusplus
}

#if KXOVA_FRAMEWORK
/* The string forms assign on success alone. 87: a pointer is NULL. The path functions read at most 259 characters,
 * the enumeration of keys by DCFG_RegGetEnumKey 8159. */
KXOVAAPI long KxRegGetValue(const char* lpszKey, const char* lpszParameter, CString& value);
KXOVAAPI long KxRegEnumKey(const char* lpszKey, unsigned long iValue, CString& name);
KXOVAAPI long KxRegEnumValue(const char* lpszKey, unsigned long iValue, CString& name, CString& value);
KXOVAAPI long DCFG_RegGetEnumKey(const char* lpszKey, unsigned long iValue, CString* name);
KXOVAAPI long DCFG_RegGetValue(const char* lpszKey, const char* lpszParameter, CString* value);
KXOVAAPI long DCFG_RegGetValueLang(const char* lpszKey, const char* lpszParameter, CString& value);
KXOVAAPI long KxBRegGetValue(HKEY parent, const char* lpszKey, const char* lpszParameter, CString& value);
#endif
#endif

#endif
