/* Entry points that are kept so that old callers still load and link. They do nothing: each returns the constant of
 * its group, ignores its arguments and leaves output arguments untouched. */
#ifndef KXOVA_RETIRED_H
#define KXOVA_RETIRED_H

#include <windows.h>

#include "kxova/framework_types.h"
#include "kxovaapi_export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* 0. DCFG_StopServer is also the hook that every other function calls first. */
KXOVAAPI long DeviceIDGetEnum(const char* lpszLogDevice, unsigned long iValue, char* buffer, unsigned long* length);
KXOVAAPI long LogDeviceCreateTempFromDef(const char* lpszDefDevice, char* buffer, unsigned long* length);
KXOVAAPI long DCFG_ExeStart(const char* lpszExe);
KXOVAAPI long DCFG_StartServer(void);
KXOVAAPI long DCFG_StopServer(void);
KXOVAAPI int DCFG_IsServer2008(void);
KXOVAAPI int DCFG_IsW2K(void);
KXOVAAPI int DCFG_IsWNT4(void);
KXOVAAPI int DCFG_LogDeviceLink_bAnyLocks(void);
KXOVAAPI int DCFG_LogDevice_bAnyLocks(void);
KXOVAAPI int DCFG_RegHasChanged(void);

/* 1: the system is one with plug and play. */
KXOVAAPI int DCFG_IsPnPOs(void);
KXOVAAPI int DCFG_IsVista(void);
KXOVAAPI int DCFG_IsW2KPOrGreater(void);

/* 8018, DCFG_ERR_NOT_SUPPORTED. */
KXOVAAPI long DCFG_GetProtocolAttribute(const char* lpszProtocol, const char* lpszParameter, char* buffer,
                                        unsigned long* length);
KXOVAAPI long DCFG_LogDeviceCreateFromDef(const char* lpszLogDevice, const char* lpszDefDevice);
KXOVAAPI long DCFG_LogDeviceSetLinkedValue(const char* lpszLogDevice, const char* lpszParameter,
                                           const char* lpszValue);
KXOVAAPI long DCFG_LogDeviceSetParamDesc(const char* lpszLogDevice, const char* lpszParameter,
                                         const char* lpszAttribute, const char* lpszValue);
KXOVAAPI long DCFG_RegCopyKey(const char* lpszFrom, const char* lpszTo);
KXOVAAPI long DCFG_RegCopyKeyEx(const char* lpszFrom, const char* lpszTo);
KXOVAAPI long DCFG_RegCopyKeyTyped(const char* lpszFrom, const char* lpszTo);
KXOVAAPI long DCFG_RegCreateKey(const char* lpszKey);
KXOVAAPI long DCFG_RegDelKey(const char* lpszKey);
KXOVAAPI long DCFG_RegDelValue(const char* lpszKey, const char* lpszParameter);
KXOVAAPI long DCFG_RegGetEnumValueTyped(const char* lpszKey, unsigned long iValue, char* name,
                                        unsigned long* nameLength, unsigned long* type, void* value,
                                        unsigned long* valueLength);
KXOVAAPI long DCFG_RegGetValueTyped(const char* lpszKey, const char* lpszParameter, unsigned long* type, void* value,
                                    unsigned long* valueLength);
KXOVAAPI long DCFG_RegOpen(HKEY parent, const char* lpszKey, HKEY* key, unsigned long access);
KXOVAAPI long DCFG_RegSetValueTyped(const char* lpszKey, const char* lpszParameter, unsigned long type,
                                    const void* value, unsigned long valueLength);
KXOVAAPI long DCFG_RestoreRunOnce(void);
KXOVAAPI long DCFG_SaveRunOnce(void);
KXOVAAPI long KxBRegDelKey(HKEY parent, const char* lpszKey);
KXOVAAPI long KxBRegEnumKey(HKEY parent, const char* lpszKey, unsigned long iValue, char* buffer,
                            unsigned long* length);
KXOVAAPI long KxBRegEnumValue(HKEY parent, const char* lpszKey, unsigned long iValue, char* name,
                              unsigned long* nameLength, char* value, unsigned long* valueLength);
KXOVAAPI long KxBRegGetValueTyped(HKEY parent, const char* lpszKey, const char* lpszParameter, unsigned long* type,
                                  void* value, unsigned long* valueLength);
KXOVAAPI long KxRegCopyKey(const char* lpszFrom, const char* lpszTo);
KXOVAAPI long KxRegCopyKeyTyped(const char* lpszFrom, const char* lpszTo);
KXOVAAPI long KxRegEnumValueTyped(const char* lpszKey, unsigned long iValue, char* name, unsigned long* nameLength,
                                  unsigned long* type, void* value, unsigned long* valueLength);
KXOVAAPI long KxRegGetValueTyped(const char* lpszKey, const char* lpszParameter, unsigned long* type, void* value,
                                 unsigned long* valueLength);
KXOVAAPI long KxRegGetValueWord(const char* lpszKey, const char* lpszParameter, unsigned long* value);
KXOVAAPI long KxRegKeyExists(const char* lpszKey);
KXOVAAPI long KxRegOpen(HKEY parent, const char* lpszKey, HKEY* key, unsigned long access);
KXOVAAPI long KxRegSetValueTyped(const char* lpszKey, const char* lpszParameter, unsigned long type,
                                 const void* value, unsigned long valueLength);

/* 120, ERROR_CALL_NOT_IMPLEMENTED. */
KXOVAAPI long DCFG_ProtocolGetEnum(const char* lpszDeviceID, unsigned long iValue, char* buffer,
                                   unsigned long* length);

/* 8102, DCFG_ERR_CANT_FIND_DLL. */
KXOVAAPI long DCFG_DllLoad(const char* lpszDLL, HINSTANCE* library, unsigned int flags);

/* 8104, DCFG_ERR_CANT_START_DLL. */
KXOVAAPI long DCFG_LogDeviceCallDLL(HWND hWnd, const char* lpszDLL, const char* lpszFunction,
                                    const char* lpszLogDevice, const char* lpszLogDeviceAgain);

#ifdef __cplusplus
}

/* 8018, DCFG_ERR_NOT_SUPPORTED: older forms of functions that work. */
KXOVAAPI long DCFG_RegGetValue(const char* lpszKey, const char* lpszParameter, unsigned long* type, void* value,
                               unsigned long* valueLength);
KXOVAAPI long DCFG_RegSetValue(const char* lpszKey, const char* lpszParameter, const void* value,
                               unsigned long valueLength);
KXOVAAPI long KxRegCreateKey(HKEY parent, const char* lpszKey);

#if KXOVA_FRAMEWORK

/* 8018, DCFG_ERR_NOT_SUPPORTED. */
KXOVAAPI long KxBRegEnumKey(HKEY parent, const char* lpszKey, unsigned long iValue, CString& name);
KXOVAAPI long KxBRegEnumValue(HKEY parent, const char* lpszKey, unsigned long iValue, CString& name, CString& value);

/* 120, ERROR_CALL_NOT_IMPLEMENTED. */
KXOVAAPI long DCFG_BoardFindNew(const char* lpszDeviceID, CString* boardName, CString* boardMap);
KXOVAAPI long DCFG_BoardGetEnum(const char* lpszDeviceID, unsigned long iValue, CString* boardName, CString* boardMap,
                                int autoNewMap, CString* adapter);
KXOVAAPI long DCFG_BoardGetDriverMap(CString board, CString& driver, CString& map);
KXOVAAPI long DCFG_BoardGetNetcardWithBinding(CString board, const char* lpszProtocol, const char* lpszService,
                                              CString& name, CString& id, CString& binding, CString& map);

/* The empty string. */
KXOVAAPI CString DCFG_BoardGetMap(const char* lpszDeviceID, const char* lpszBoard, int map);
KXOVAAPI CString DCFG_BoardGetBoard(const char* lpszDeviceID, const char* lpszMap);
KXOVAAPI CString DCFG_BoardSetNewMap(const char* lpszDeviceID, const char* lpszBoard, int map);

#endif
#endif

#endif
