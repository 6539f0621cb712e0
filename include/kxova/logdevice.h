/* Logical devices: named access points with their values (bus parameters, the board they use, …), a second set of
 * driver-level values ("Ndi" values), and temporary copies for editors. Conventions: see kxovaapi.h.
 *
 * Where a function does not check an argument for NULL, a NULL text is sent to the server as such, and the server's
 * result is returned.
 */
#ifndef KXOVA_LOGDEVICE_H
#define KXOVA_LOGDEVICE_H

#include <windows.h>

#include "kxova/framework_types.h"
#include "kxovaapi_export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* 0 when the logical device exists, DCFG_ERR_NOT_FOUND when not. flags is passed on to the server; use 0.
 * The name "Dummy" is no device: the call brings the channel and the notification window up and returns -1.
 * 87: lpszLogDevice is NULL. 8621: a reply of an unexpected kind. */
KXOVAAPI long LogDeviceExists(const char* lpszLogDevice, unsigned long flags);

/* Creates a logical device with the values of a default logical device. 87: an argument is NULL. */
KXOVAAPI long LogDeviceCreateFromDef(const char* lpszLogDevice, const char* lpszDefDevice);

/* Makes a temporary copy of a logical device for an editor and returns the copy's name. The copy belongs to this
 * process and vanishes with it. 87: lpszLogDevice or buffer is NULL. length may be NULL only in the sense that the
 * call then ends with 234. */
KXOVAAPI long LogDeviceCreateTemp(const char* lpszLogDevice, char* buffer, unsigned long* length);

/* Deletes a temporary copy. A reply of an unexpected kind counts as success. 87: the name is NULL. */
KXOVAAPI long LogDeviceDelTemp(const char* lpszLogDevice);

/* Replaces a logical device by a temporary copy. 87: a name is NULL. 1000: a reply of an unexpected kind. */
KXOVAAPI long LogDeviceUpdateWithTemp(const char* lpszTempLogDevice, const char* lpszLogDevice);

/* Copies a logical device. 87: copyFrom is NULL. A server that answers with another kind of reply has made the copy;
 * the target is then marked with the Ndi values enable_delete "true" and hidden "false". */
KXOVAAPI long LogDeviceCopy(const char* copyFrom, const char* copyTo);

/* Deletes a logical device. 87: the name is NULL. */
KXOVAAPI long LogDeviceDel(const char* lpszLogDevice);

/* Deletes one value. 87: lpszLogDevice is NULL. */
KXOVAAPI long LogDeviceDelValue(const char* lpszLogDevice, const char* lpszParameter);

/* The iValue-th logical device, of one net type or (NULL) of all. At the end of the list (259) *length is 0. */
KXOVAAPI long LogDeviceGetEnum(const char* lpszNetTypeName, unsigned long iValue, char* buffer,
                               unsigned long* length);

/* All logical devices, from one list that is fetched at the start of an enumeration and cached until 259.
 * 87: buffer or length is NULL. */
KXOVAAPI long DCFG_LogDeviceGetEnum(unsigned long iValue, char* buffer, unsigned long* length);

/* Name and text of the iValue-th value, as stored (no translation). */
KXOVAAPI long LogDeviceGetEnumValue(const char* lpszLogDevice, unsigned long iValue, char* name,
                                    unsigned long* nameLength, char* value, unsigned long* valueLength);

/* The same from one list that is fetched at the start of an enumeration and cached until 259: the arguments
 * lpszLogDevice and lpszSubKey count only in the call that fetches. */
KXOVAAPI long DCFG_LogDeviceGetEnumValue(const char* lpszLogDevice, const char* lpszSubKey, unsigned long iValue,
                                         char* name, unsigned long* nameLength, char* value,
                                         unsigned long* valueLength);

/* Name and text of the iValue-th Ndi value. 87: lpszLogDevice, a buffer or valueLength is NULL. */
KXOVAAPI long LogDeviceGetEnumNdiValue(const char* lpszLogDevice, unsigned long iValue, char* name,
                                       unsigned long* nameLength, char* value, unsigned long* valueLength);

KXOVAAPI long LogDeviceGetNdiValue(const char* lpszLogDevice, const char* lpszParameter, char* buffer,
                                   unsigned long* length);
KXOVAAPI long LogDeviceSetNdiValue(const char* lpszLogDevice, const char* lpszParameter, const char* lpszValue);
KXOVAAPI long LogDeviceDelNdiValue(const char* lpszLogDevice, const char* lpszParameter);

/* One value. Four parameters (in any case) are shown in words, whatever their stored text:
 *   soft_entry  0 no, 1 yes, 2 get_config, 3 get_config_go, 4 search_baud
 *   DP_MODE     false NO, true YES
 *   busparam    0 DP, 1 STD, 2 UNI, 3 USER
 *   subnet_typ  0 MPI, 1 DP
 * 87: a name is NULL or empty. 234: *length is not larger than the text, its terminator must fit. */
KXOVAAPI long LogDeviceGetValue(const char* lpszLogDevice, const char* lpszParameter, char* buffer,
                                unsigned long* length);

/* Stores one value. The words of LogDeviceGetValue are translated back; soft_entry also takes true and false. */
KXOVAAPI long LogDeviceSetValue(const char* lpszLogDevice, const char* lpszParameter, const char* lpszValue);

/* Selects the bus parameter set of a logical device. */
KXOVAAPI long LogDeviceSetBusparams(const char* lpszLogDevice, const char* value);

/* The type of the board's bus controller, from the board description. For the board *TVRA010 it is "IBC_16_B" when
 * the device's value "Device" is "255". 87: length is NULL. */
KXOVAAPI long LogDeviceGetAsicType(const char* lpszLogDevice, char* buffer, unsigned long* length);

/* The iValue-th logical device on the board with this device id (in any case), and its "Unit" (empty when it has
 * none). One request per logical device. */
KXOVAAPI long LogDeviceFromDeviceIDEnum(const char* lpszDeviceID, unsigned long iValue, char* logDevice,
                                        unsigned long* logDeviceLength, char* unit, unsigned long* unitLength);

/* Opens the device's own property sheet: its Ndi value "PropSheet" names library and function. 8100: the value
 * names no function. 8102: the library's name holds a backslash. This build ends with 8104 where the library would be
 * called. */
KXOVAAPI long LogDeviceCallDLL(HWND hWnd, const char* lpszLogDevice);

/* Always 120. */
KXOVAAPI long LogDeviceLock(const char* lpszLogDevice);
KXOVAAPI long LogDeviceUnlock(const char* lpszLogDevice, unsigned long nIgnore);

#ifdef __cplusplus
}

/* One value in the language given by its code ("DE", "EN", …). */
KXOVAAPI long LogDeviceGetValueLang(const char* lpszLogDevice, const char* lpszParameter, const char* lpszLanguage,
                                    char* buffer, unsigned long* length);
#endif

#endif
