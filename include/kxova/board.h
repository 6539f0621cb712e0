/* Boards, adapters and the hardware scan. Conventions: see kxovaapi.h.
 *
 * Here the capacity behind a length pointer is sent to the server, which decides what fits; a NULL length pointer
 * counts as 0.
 */
#ifndef KXOVA_BOARD_H
#define KXOVA_BOARD_H

#include <windows.h>

#include "kxova/framework_types.h"
#include "kxovaapi_export.h"

#ifndef __cplusplus
#include <stdbool.h>
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* The record of DCFG_EnumInstBoardEx: six texts, each with its length (in: capacity, out: length). */
typedef struct DcfgEnumInstBoardInfo
{
    unsigned long size; /* 72, the record's size in bytes */
    char* BoardName;
    unsigned long BoardNameLength;
    char* BoardMap;
    unsigned long BoardMapLength;
    char* DeviceId;
    unsigned long DeviceIdLength;
    char* NetType;
    unsigned long NetTypeLength;
    char* HardwareId;
    unsigned long HardwareIdLength;
    char* HardwareInstanceId;
    unsigned long HardwareInstanceIdLength;
    unsigned long reserved14; /* neither read nor written */
    unsigned long reserved15;
    unsigned long State;
    unsigned long reserved17; /* handed back unchanged */
    unsigned long reserved18;
} DcfgEnumInstBoardInfo;

/* One attribute of a board description. 87: device id, parameter or buffer is NULL. */
KXOVAAPI long DCFG_GetBoardAttribute(const char* lpszDeviceId, const char* lpszParameter, char* value,
                                     unsigned long* pLen);

/* The same in the language given by its code; NULL leaves the choice to the server. */
KXOVAAPI long DCFG_GetBoardAttributeLang(const char* lpszDeviceId, const char* lpszParameter,
                                         const char* lpszLanguage, char* value, unsigned long* pLen);

/* One value of a board's tree, by path. */
KXOVAAPI long DCFG_BoardGetValueRaw(const char* name, const char* path, const char* param, char* value,
                                    unsigned long* pLen);

/* The iValue-th use of a board: its logical device, protocol, layer-4 protocol and unit. s2 to s4 narrow the list
 * down as the server defines. 87: lpszBoardName is NULL. */
KXOVAAPI long DCFG_EnumConfiguration(unsigned long iValue, const char* lpszBoardName, const char* s2, const char* s3,
                                     const char* s4, char* logdevice, unsigned long* pLen1, char* protocol,
                                     unsigned long* pLen2, char* L4protocol, unsigned long* pLen3, char* unit,
                                     unsigned long* pLen4);

/* A text about a board; the server defines infoType and s1 to s4. 87: s1 is NULL. */
KXOVAAPI long DCFG_GetBoardInfo(unsigned long infoType, const char* s1, const char* s2, const char* s3,
                                const char* s4, char* out, unsigned long* pLen);

/* Raw data about an installed board. *pcbData: in the capacity of data, out the bytes copied. The capacity is kept by
 * the server, not here: pass at least what the infoType can need. 87: a pointer is NULL. */
KXOVAAPI long DCFG_GetBoardInfoEx(unsigned long infoType, const char* lpszBoardName, const char* lpszBoardMap,
                                  const char* lpszHardwareInstanceId, void* data, unsigned long* pcbData);

/* The iIndex-th entry of what a board does not support; cached until 259, and not keyed by the board: run an
 * enumeration to its end. The text is cut to *pLen bytes, *pLen stays as it is. 87: BoardName is NULL. A server that
 * refuses yields 2047 empty entries. */
KXOVAAPI long DCFG_BoardGetNotSupported(unsigned long iIndex, const char* BoardName, char* dst, unsigned long* pLen);

/* The iValue-th installed board. 87: BoardName is NULL. */
KXOVAAPI long DCFG_EnumInstBoard(unsigned long iValue, char* BoardName, unsigned long* pLen1, char* DeviceId,
                                 unsigned long* pLen2, char* NetType, unsigned long* pLen3, char* HardwareId,
                                 unsigned long* pLen4, char* HardwareInstanceId, unsigned long* pLen5, char* BoardMap,
                                 unsigned long* pLen6, unsigned long* State);

/* The same into a record. 87: info is NULL or its size is not 72. */
KXOVAAPI long DCFG_EnumInstBoardEx(unsigned long iValue, DcfgEnumInstBoardInfo* info);

/* The map of a board on an adapter. */
KXOVAAPI long DCFG_BoardGetMapEx(const char* lpszDeviceID, const char* lpszAdapter, const char* s3, char* map,
                                 unsigned long* pLen);

/* The iValue-th network adapter. 87: a pointer is NULL. */
KXOVAAPI long DCFG_EnumAdapters(unsigned long iValue, char* AdapterName, unsigned long* pcbAdapterNameLen,
                                char* AdapterId, unsigned long* pcbAdapterIdLen, unsigned long* pFlag);

/* The iValue-th board that can be installed. pValue may be NULL. 87: first is NULL. */
KXOVAAPI long DCFG_EnumAvailableBoards(unsigned long iValue, char* first, unsigned long* pFirstLen, char* second,
                                       unsigned long* pSecondLen, unsigned long* pValue);

/* The iValue-th board with this device id. 87: lpszDeviceID is NULL. */
KXOVAAPI long DCFG_BoardGetEnum2(const char* lpszDeviceID, unsigned long iValue, char* BoardName,
                                 unsigned long* pLen1, char* s2, unsigned long* pLen2, char* s3, unsigned long* pLen3,
                                 bool bAutoNewMap);

/* Has the server scan for new hardware. A reply of an unexpected kind counts as success. */
KXOVAAPI long DCFG_Scan(void);

/* Has the server make the logical devices of one device instance anew. Unexpected kinds count as success. */
KXOVAAPI long DCFG_UpdateLogdevicesForDevice(const char* DevId, const char* Hwid);

/* Has the server make the logical devices of all instances found. */
KXOVAAPI long DCFG_CreateAllLogdevices(void);

/* The server's answer whether instances without logical devices are left. */
KXOVAAPI long DCFG_HasUninitializedInstances(void);

/* Restarts a device without asking anybody. 87: DevName is NULL. */
KXOVAAPI long DCFG_SilentRestart(const char* DevName);

#ifdef __cplusplus
}
#endif

#endif
