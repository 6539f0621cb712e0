/* Values of logical devices and logical names under a second set of names. They forward to the functions of
 * logdevice.h and logname.h; DCFG_LogDeviceGetValue alone reads the value as it is stored, without translation.
 * Conventions: see kxovaapi.h.
 */
#ifndef KXOVA_VALUES_H
#define KXOVA_VALUES_H

#include "kxova/framework_types.h"
#include "kxovaapi_export.h"

#ifdef __cplusplus
extern "C" {
#endif

KXOVAAPI long DCFG_LogDeviceGetValue(const char* lpszLogDevice, const char* lpszParameter, char* buffer,
                                     unsigned long* length);
KXOVAAPI long DCFG_LogDeviceSetValue(const char* lpszLogDevice, const char* lpszParameter, const char* lpszValue);

/* 87: lpszLogDevice is NULL. */
KXOVAAPI long DCFG_LogDeviceGetNdi(const char* lpszLogDevice, const char* lpszParameter, char* buffer,
                                   unsigned long* length);
KXOVAAPI long DCFG_LogDeviceSetNdi(const char* lpszLogDevice, const char* lpszParameter, const char* lpszValue);
KXOVAAPI long DCFG_LogDeviceSetNdiEx(const char* lpszLogDevice, const char* lpszParameter, const char* lpszValue);
KXOVAAPI long DCFG_LogDeviceDelNdi(const char* lpszLogDevice, const char* lpszParameter);
KXOVAAPI long DCFG_LogDeviceDelNdiEx(const char* lpszLogDevice, const char* lpszParameter);

KXOVAAPI long DCFG_LogNameSetValue(const char* lpszLogName, const char* lpszParameter, const char* lpszValue);

#ifdef __cplusplus
}

#if KXOVA_FRAMEWORK
/* The string is assigned on success alone. 87: it is NULL. */
KXOVAAPI long DCFG_LogDeviceGetValue(const char* lpszLogDevice, const char* lpszParameter, CString* value);
KXOVAAPI long DCFG_LogDeviceGetNdi(const char* lpszLogDevice, const char* lpszParameter, CString* value);
KXOVAAPI long DCFG_LogNameGetValue(const char* lpszLogName, const char* lpszParameter, CString& value);
#endif
#endif

#endif
