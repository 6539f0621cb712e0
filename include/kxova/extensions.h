/* Libraries that the system loads by name: property pages and parameter writers of logical devices, the device state
 * of the setup interface, the EPROM programmer.
 *
 * Such a library is named by its file name alone, and the system's search order finds it; a name with a backslash is
 * refused. The functions that are called have the C calling convention. A name or pointer that is NULL is passed on
 * as it is where nothing else is said.
 *
 *   8102   DCFG_ERR_CANT_FIND_DLL: the library cannot be loaded, or its name holds a backslash
 *   8104   DCFG_ERR_CANT_START_DLL: it has no such function; it is unloaded again
 */
#ifndef KXOVA_EXTENSIONS_H
#define KXOVA_EXTENSIONS_H

#include "kxova/framework_types.h"
#include "kxovaapi_export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Lets the parameter writers of all logical devices run. First every device with the Ndi value "AUT9_WriteParams"
 * gets it set to "true", or to "false" when its Ndi value "hidden" is "true". Then for every device that has "true"
 * the function that the Ndi value "AUT9_WriteDLL" names ("library,function"; also separated by a blank or ";") is
 * called as long function(const char* logDevice), and its library unloaded. A device that fails does not stop the
 * others. */
KXOVAAPI void DCFG_Aut9_Update(void);

/* The plug-and-play status and problem number of a device, from KXOSOINX.DLL (SoinGetDeviceStateEx2,
 * SoinGetDeviceState), whose result is returned. arg2 is a record of that library. */
KXOVAAPI long DCFG_GetDeviceStateEx(const char* lpszHardwareId, unsigned char* arg2, unsigned long* pdwStatus,
                                    unsigned long* pdwProblem);
KXOVAAPI long DCFG_GetDeviceState(const char* lpszHardwareId, unsigned long* pdwStatus, unsigned long* pdwProblem);

/* DCFG_GetDeviceStateEx with a record for a board. reserved is not used. */
KXOVAAPI long DCFG_GetBoardState(const char* lpszHardwareId, unsigned long reserved, unsigned long* pdwStatus,
                                 unsigned long* pdwProblem);

/* Whether this machine has an EPROM programmer of its own, and whether it is active. */
KXOVAAPI int DCFGM_IsPgWithInternalPrommer(void);
KXOVAAPI int DCFGM_IsInternalPrommerActive(void);

#ifdef __cplusplus
}

#if KXOVA_FRAMEWORK
/* Loads a library and returns what its function long lpszFkt(CPropertySheet*) returns, which adds pages to the sheet.
 * The library stays loaded, because its pages live in the sheet. 87: a name is NULL. */
KXOVAAPI long DCFG_DLL_AddPage(const char* lpszDLL, const char* lpszFkt, CPropertySheet* pPropSheet);
#endif
#endif

#endif
