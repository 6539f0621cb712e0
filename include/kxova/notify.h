/* Notifications: hardware that comes and goes, and changed logical devices and logical names. Conventions: see
 * kxovaapi.h; results here are unsigned.
 *
 * The first call of this family starts a hidden window on a thread of its own in the calling process.
 * -1 as a result: there is no channel to the server, or the hidden window could not be made.
 */
#ifndef KXOVA_NOTIFY_H
#define KXOVA_NOTIFY_H

#include <windows.h>

#include "kxovaapi_export.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct OvaHardwareChange
{
    unsigned long change; /* what happened; of this project's server: 1 arrived, 2 removed */
    GUID interfaceClass;
    char name[256];
} OvaHardwareChange;

/* Posts a message to hWnd when hardware of this interface class comes or goes: its number is 1024 (WM_USER) or the
 * one set below, wParam is WM_DEVICECHANGE (0x0219), lParam a handle for OvaGetHardwareChanges. One window per
 * process, any number of classes; a class of zeros stands for every class, communication boards have
 * {C4517B3A-920E-4BD6-A13F-6C5827E904BD}. 87: pGUID is NULL. 8560: another window is registered. */
KXOVAAPI unsigned long OvaRegisterHardwareChanges(HWND hWnd, const GUID* pGUID);

/* Sets the number of the message that is posted to hWnd, 1024 to 32767. 87: hWnd is NULL or the number lies outside.
 */
KXOVAAPI unsigned long OvaSetMessageTypeForHardwareChanges(HWND hWnd, unsigned long messageType);

/* 87: pGuid is NULL. 8561: the class was not registered. */
KXOVAAPI unsigned long OvaUnregisterHardwareChanges(const GUID* pGuid);

/* The change behind a message's lParam. 87: pChanges is NULL. 30: a reply of an unexpected kind. A call that fails
 * in the middle of the reply leaves what it had filled in. */
KXOVAAPI unsigned long OvaGetHardwareChanges(unsigned long handle, OvaHardwareChange* pChanges);

/* Creates an auto-reset event of this name and sets it whenever the logical device (the logical name) `subject`, or any
 * when that is NULL or empty, is made, changed or deleted, by whomever. Changes that come while the event is set, or on
 * its way to be, are one notification with the earlier ones. After a restart of the server it is set once, whether or
 * not anything changed. *event receives its handle, which stays the caller's; `reserved` must not be NULL. The two numbers are not
 * used. 87: eventName, event or reserved is NULL. */
KXOVAAPI unsigned long LogDeviceNotifyChange(const char* subject, unsigned long unused1, unsigned long unused2,
                                             const char* eventName, HANDLE* event, void* reserved);
KXOVAAPI unsigned long LogNameNotifyChange(const char* subject, unsigned long unused1, unsigned long unused2,
                                           const char* eventName, HANDLE* event, void* reserved);

/* Ends a notification; the event stays open. event may be NULL: with all handles. 87: eventName is NULL. 8012: there is
 * no such notification. */
KXOVAAPI unsigned long LogDeviceUnregisterNotifyChange(const char* subject, const char* eventName,
                                                       const HANDLE* event);
KXOVAAPI unsigned long LogNameUnregisterNotifyChange(const char* subject, const char* eventName, const HANDLE* event);

/* Has the server store all logical devices and waits, without bound, until it says so. 8012: there is no server. */
KXOVAAPI unsigned long LogDeviceFlush(void);

#ifdef __cplusplus
}
#endif

#endif
