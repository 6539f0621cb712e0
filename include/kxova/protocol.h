/* Protocols, bus profiles, device definitions and special values. Conventions: see kxovaapi.h. */
#ifndef KXOVA_PROTOCOL_H
#define KXOVA_PROTOCOL_H

#include "kxovaapi_export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* One value of a protocol's or of a device definition's tree, by path. */
KXOVAAPI long DCFG_ProtocolGetValueRaw(const char* lpszProtocol, const char* path, const char* param, char* value,
                                       unsigned long* pLen);
KXOVAAPI long DCFG_DefDeviceGetValueRaw(const char* lpszDefDevice, const char* path, const char* param, char* value,
                                        unsigned long* pLen);

/* The i-th value of a template's parameter. */
KXOVAAPI long DCFG_TemplateGetEnumValueRaw(const char* lpszFolder, const char* file, const char* param,
                                           unsigned long i, char* value, unsigned long* pLen);

/* 0 when the key, template or parameter exists. */
KXOVAAPI long DCFG_TemplateKeyExists(const char* lpszFolderName, const char* file, const char* path,
                                     const char* param);
KXOVAAPI long DCFG_TemplateExists(const char* lpszFolder, const char* lpszTemplate, unsigned long flags);
KXOVAAPI long DCFG_TemplateExistsEx(const char* lpszFolder, const char* lpszTemplate, const char* lpszParameterPath,
                                    const char* s4);

/* The index-th template of a folder, without the folder's prefix. */
KXOVAAPI long DCFG_TemplateGetEnumNoPrefix(const char* lpszFolder, unsigned long index, char* value,
                                           unsigned long* pLen);

/* The index-th bus profile of a protocol, and the index-th baud rate of a profile. 87: a name is NULL. */
KXOVAAPI long DCFG_ProtocolGetEnumBusprofiles(const char* ProtocolFile, unsigned long index, char* value,
                                              unsigned long* pLen);
KXOVAAPI long DCFG_ProtocolGetEnumBaudrate(const char* ProtocolFile, const char* Profile, unsigned long index,
                                           char* value, unsigned long* pLen);

/* The server's answer whether parameters can be saved now. */
KXOVAAPI long DCFG_CanSaveParameters(void);

/* A value of the server's own, such as "DCFG_CurrentLogName". 87: the parameter (or the value to set) is NULL. */
KXOVAAPI long DCFG_SpecialGetValue(const char* lpszParameter, char* value, unsigned long* pLen);

#ifdef __cplusplus
}
#endif

#endif
