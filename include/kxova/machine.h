/* This machine and what runs on it: installed devices, versions, settings, aliases, calculations, the time.
 * Conventions: see kxovaapi.h. */
#ifndef KXOVA_MACHINE_H
#define KXOVA_MACHINE_H

#include "kxova/framework_types.h"
#include "kxovaapi_export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The iValue-th installed device: the alias of each board template whose DeviceID is installed, its "DescText" where
 * it has no alias, else the DeviceID. Cached. 87: buffer or length is NULL. */
KXOVAAPI long InstDeviceGetEnum(unsigned long iValue, char* buffer, unsigned long* length);

/* The versions of the communication runtime: five texts of at most 259 characters, in five consecutive slots of 260
 * bytes. 87: versions is NULL. 30: a reply of an unexpected kind. */
KXOVAAPI long GetKXRTSVersion(char* versions);

/* Lets the server check its configuration; its result. 30: a reply of an unexpected kind. */
KXOVAAPI long Ova_Plausibilitaet(void);

/* The default layer-7 time-out of this machine; *pcbValue is the buffer's size in bytes, on success the text's with
 * its terminator. 87: an argument is NULL. Else the registry's result, 2 where nothing is configured. */
KXOVAAPI long GetDefaultL7Timeout(char* value, long* pcbValue);

/* The device instance that the USB adapter's driver serves first. */
KXOVAAPI long GetKxOpusbxVid(char* value, unsigned long* pLen);

/* The logical name that is in use. 87: value is NULL. */
KXOVAAPI long GetCurrentLogName(char* value, unsigned long* pLen);

/* After a device was edited: for the CP_TYPE "MPI", "ttr" becomes "highest_adr" + 8. Failures are not reported. */
KXOVAAPI void DCFG_SpezielleBerechnungen(const char* LogDev);
KXOVAAPI void DCFG_SpezielleBerechnungenEx(const char* LogDev);

#ifdef __cplusplus
}

#if KXOVA_FRAMEWORK
/* The DeviceID of the board, or the net type, that has this alias (in any case); the name itself when none has. */
KXOVAAPI CString DCFG_AliasRecalcDeviceID(CString sName);
KXOVAAPI CString DCFG_AliasRecalcNetType(CString sName);

/* The local time: "2026/11/21 15:04:05:042_", the milliseconds last. */
KXOVAAPI CString DCFG_CurrentDateTimeCreate();
#endif
#endif

#endif
