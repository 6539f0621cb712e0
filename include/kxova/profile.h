/* Bus profiles: named sets of bus parameters that the definition of a protocol describes; and the values that a
 * logical device takes from the definition of its protocol ("linked" values). Conventions: see kxovaapi.h.
 */
#ifndef KXOVA_PROFILE_H
#define KXOVA_PROFILE_H

#include "kxova/framework_types.h"
#include "kxovaapi_export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* 0 when the profile has a value for the parameter. In the parameter's path the collections "busparam\dp", "\std",
 * "\uni" and "\user" are sent under their numbers 0, 1, 2 and 3, provided that something follows them. */
KXOVAAPI long DCFG_ProfileCollectionExists(const char* lpszProfile, const char* lpszParameter, const char* lpszValue);

/* The text of a protocol's index-th bus profile in the language given by its code ("DE", "EN", …; NULL leaves the
 * choice to the server); the profile as DCFG_ProtocolGetEnumBusprofiles names it when it has no text.
 * 87: ProtocolFile, value or pLen is NULL. */
KXOVAAPI long DCFG_ProtocolGetEnumBusprofilesLang(const char* ProtocolFile, unsigned long index,
                                                  const char* lpszLanguage, char* value, unsigned long* pLen);

/* Stores a value in a logical device and then sets the parameters that its protocol's profile ties to that value.
 * 8062: the value could not be stored, or the device has no "CP_TYPE". NULL texts are sent as such. */
KXOVAAPI long DCFG_LogDeviceEnumSetProfile(const char* lpszLogDevice, const char* lpszParameter,
                                           const char* lpszValue);
KXOVAAPI long DCFG_LogDeviceEnumSetProfileEx(const char* lpszLogDevice, const char* lpszParameter,
                                             const char* lpszValue);

#ifdef __cplusplus
}

#if KXOVA_FRAMEWORK
/* The value that the definition of the logical device's protocol ("CP_TYPE") holds for a parameter, below its
 * "Params". The string is assigned on success alone. 87: an argument is NULL. */
KXOVAAPI long DCFG_LogDeviceGetLinkedValue(const char* lpszLogDevice, const char* lpszParameter, CString* value);

/* Appends the values that a parameter of this logical device may have: for "busparam" the protocol's bus profiles,
 * for "baudrate" the rates of the device's bus profile, for any other the items, separated by "," or ";", of its
 * linked value. On failure the list is as it was. 87: an argument is NULL. */
KXOVAAPI long DCFG_LogDeviceGetValidEnumList(const char* lpszLogDevice, const char* lpszParameter, CStringList* list);
#endif
#endif

#endif
