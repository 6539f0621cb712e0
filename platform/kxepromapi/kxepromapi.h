/* kxepromapi.dll: whether this machine is a programming device with an EPROM programmer of its own.
 *
 * Both functions use the C calling convention and may be called from any thread. They answer from the registry:
 * HKEY_LOCAL_MACHINE\SOFTWARE\TAVRONE\NORIX\Prommer (32-bit view), REG_DWORD values "InternalPrommer" and
 * "InternalPrommerActive". A machine without these values has no programmer.
 */
#ifndef KXEPROMAPI_H
#define KXEPROMAPI_H

#ifdef __cplusplus
extern "C" {
#endif

/* 1 when the machine has an internal programmer ("InternalPrommer" is not 0), else 0. */
int __cdecl IsPgWithInternalPrommer(void);

/* 1 when the machine has an internal programmer and it is active (both values are not 0), else 0. */
int __cdecl IsInternalPrommerActive(void);

#ifdef __cplusplus
}
#endif

#endif
