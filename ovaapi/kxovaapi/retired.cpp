// Entry points kept for old callers: one function per constant, exported under all the names of its group.

#include "kxova/retired.h"
#include "kxframework.h"
#include "kxova/results.h"

extern "C" {

long retiredSuccess(void)
{
    return ERROR_SUCCESS;
}

long retiredTrue(void)
{
    return 1;
}

long retiredNotSupported(void)
{
    return DCFG_ERR_NOT_SUPPORTED;
}

long retiredNotImplemented(void)
{
    return ERROR_CALL_NOT_IMPLEMENTED;
}

long retiredCantFindDll(void)
{
    return DCFG_ERR_CANT_FIND_DLL;
}

long retiredCantStartDll(void)
{
    return DCFG_ERR_CANT_START_DLL;
}

}  // extern "C"

CString DCFG_BoardGetMap(const char*, const char*, int)
{
    return CString();
}

// The aliases differ from their targets in arguments alone, which nobody looks at and the caller cleans up.
#pragma GCC diagnostic ignored "-Wattribute-alias"
#pragma GCC diagnostic ignored "-Wmissing-attributes"

#define KX_SUCCESS __attribute__((alias("retiredSuccess")))
#define KX_TRUE __attribute__((alias("retiredTrue")))
#define KX_NOT_SUPPORTED __attribute__((alias("retiredNotSupported")))
#define KX_NOT_IMPLEMENTED __attribute__((alias("retiredNotImplemented")))

extern "C" {

extern decltype(DeviceIDGetEnum) DeviceIDGetEnum KX_SUCCESS;
extern decltype(LogDeviceCreateTempFromDef) LogDeviceCreateTempFromDef KX_SUCCESS;
extern decltype(DCFG_ExeStart) DCFG_ExeStart KX_SUCCESS;
extern decltype(DCFG_StartServer) DCFG_StartServer KX_SUCCESS;
extern decltype(DCFG_StopServer) DCFG_StopServer KX_SUCCESS;
extern decltype(DCFG_IsServer2008) DCFG_IsServer2008 KX_SUCCESS;
extern decltype(DCFG_IsW2K) DCFG_IsW2K KX_SUCCESS;
extern decltype(DCFG_IsWNT4) DCFG_IsWNT4 KX_SUCCESS;
extern decltype(DCFG_LogDeviceLink_bAnyLocks) DCFG_LogDeviceLink_bAnyLocks KX_SUCCESS;
extern decltype(DCFG_LogDevice_bAnyLocks) DCFG_LogDevice_bAnyLocks KX_SUCCESS;
extern decltype(DCFG_RegHasChanged) DCFG_RegHasChanged KX_SUCCESS;

extern decltype(DCFG_IsPnPOs) DCFG_IsPnPOs KX_TRUE;
extern decltype(DCFG_IsVista) DCFG_IsVista KX_TRUE;
extern decltype(DCFG_IsW2KPOrGreater) DCFG_IsW2KPOrGreater KX_TRUE;

extern decltype(DCFG_GetProtocolAttribute) DCFG_GetProtocolAttribute KX_NOT_SUPPORTED;
extern decltype(DCFG_LogDeviceCreateFromDef) DCFG_LogDeviceCreateFromDef KX_NOT_SUPPORTED;
extern decltype(DCFG_LogDeviceSetLinkedValue) DCFG_LogDeviceSetLinkedValue KX_NOT_SUPPORTED;
extern decltype(DCFG_LogDeviceSetParamDesc) DCFG_LogDeviceSetParamDesc KX_NOT_SUPPORTED;
extern decltype(DCFG_RegCopyKey) DCFG_RegCopyKey KX_NOT_SUPPORTED;
extern decltype(DCFG_RegCopyKeyEx) DCFG_RegCopyKeyEx KX_NOT_SUPPORTED;
extern decltype(DCFG_RegCopyKeyTyped) DCFG_RegCopyKeyTyped KX_NOT_SUPPORTED;
extern decltype(DCFG_RegCreateKey) DCFG_RegCreateKey KX_NOT_SUPPORTED;
extern decltype(DCFG_RegDelKey) DCFG_RegDelKey KX_NOT_SUPPORTED;
extern decltype(DCFG_RegDelValue) DCFG_RegDelValue KX_NOT_SUPPORTED;
extern decltype(DCFG_RegGetEnumValueTyped) DCFG_RegGetEnumValueTyped KX_NOT_SUPPORTED;
extern decltype(DCFG_RegGetValueTyped) DCFG_RegGetValueTyped KX_NOT_SUPPORTED;
extern decltype(DCFG_RegOpen) DCFG_RegOpen KX_NOT_SUPPORTED;
extern decltype(DCFG_RegSetValueTyped) DCFG_RegSetValueTyped KX_NOT_SUPPORTED;
extern decltype(DCFG_RestoreRunOnce) DCFG_RestoreRunOnce KX_NOT_SUPPORTED;
extern decltype(DCFG_SaveRunOnce) DCFG_SaveRunOnce KX_NOT_SUPPORTED;
extern decltype(KxBRegDelKey) KxBRegDelKey KX_NOT_SUPPORTED;
extern decltype(KxBRegGetValueTyped) KxBRegGetValueTyped KX_NOT_SUPPORTED;
extern decltype(KxRegCopyKey) KxRegCopyKey KX_NOT_SUPPORTED;
extern decltype(KxRegCopyKeyTyped) KxRegCopyKeyTyped KX_NOT_SUPPORTED;
extern decltype(KxRegEnumValueTyped) KxRegEnumValueTyped KX_NOT_SUPPORTED;
extern decltype(KxRegGetValueTyped) KxRegGetValueTyped KX_NOT_SUPPORTED;
extern decltype(KxRegGetValueWord) KxRegGetValueWord KX_NOT_SUPPORTED;
extern decltype(KxRegKeyExists) KxRegKeyExists KX_NOT_SUPPORTED;
extern decltype(KxRegOpen) KxRegOpen KX_NOT_SUPPORTED;
extern decltype(KxRegSetValueTyped) KxRegSetValueTyped KX_NOT_SUPPORTED;
long KxBRegEnumKey(HKEY, const char*, unsigned long, char*, unsigned long*) KX_NOT_SUPPORTED;
long KxBRegEnumValue(HKEY, const char*, unsigned long, char*, unsigned long*, char*, unsigned long*) KX_NOT_SUPPORTED;

extern decltype(DCFG_ProtocolGetEnum) DCFG_ProtocolGetEnum KX_NOT_IMPLEMENTED;
extern decltype(DCFG_DllLoad) DCFG_DllLoad __attribute__((alias("retiredCantFindDll")));
extern decltype(DCFG_LogDeviceCallDLL) DCFG_LogDeviceCallDLL __attribute__((alias("retiredCantStartDll")));

}  // extern "C"

long DCFG_RegGetValue(const char*, const char*, unsigned long*, void*, unsigned long*) KX_NOT_SUPPORTED;
long DCFG_RegSetValue(const char*, const char*, const void*, unsigned long) KX_NOT_SUPPORTED;
long KxRegCreateKey(HKEY, const char*) KX_NOT_SUPPORTED;
long KxBRegEnumKey(HKEY, const char*, unsigned long, CString&) KX_NOT_SUPPORTED;
long KxBRegEnumValue(HKEY, const char*, unsigned long, CString&, CString&) KX_NOT_SUPPORTED;

long DCFG_BoardFindNew(const char*, CString*, CString*) KX_NOT_IMPLEMENTED;
long DCFG_BoardGetEnum(const char*, unsigned long, CString*, CString*, int, CString*) KX_NOT_IMPLEMENTED;
long DCFG_BoardGetDriverMap(CString, CString&, CString&) KX_NOT_IMPLEMENTED;
long DCFG_BoardGetNetcardWithBinding(CString, const char*, const char*, CString&, CString&, CString&,
                                     CString&) KX_NOT_IMPLEMENTED;

CString DCFG_BoardGetBoard(const char*, const char*) __attribute__((alias("_Z16DCFG_BoardGetMapPKcS0_i")));
CString DCFG_BoardSetNewMap(const char*, const char*, int) __attribute__((alias("_Z16DCFG_BoardGetMapPKcS0_i")));
