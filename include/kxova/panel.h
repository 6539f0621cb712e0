/* Requests of the control panel and of the LLDP settings page. Conventions: see kxovaapi.h. */
#ifndef KXOVA_PANEL_H
#define KXOVA_PANEL_H

#include "kxovaapi_export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Installs or removes a device instance; the server defines s2 and s3. */
KXOVAAPI long Panel_SendInstall(const char* lpszDeviceID, const char* s2);
KXOVAAPI long Panel_SendDeinstall(const char* lpszDeviceID, const char* s2, const char* s3);

/* Any list operation of the server that takes one text and a capacity: op is its operation code, unchecked. The
 * buffer receives the texts one after another, each with its terminating zero; *pLen is then the bytes written. */
KXOVAAPI long Panel_SendGetList(char op, const char* s, char* buffer, unsigned long* pLen);

/* Deletes a value of the LLDP settings. 87: parameter is NULL or empty. */
KXOVAAPI long Panel_LldpDelValue(const char* parameter);

/* Name and text of the index-th value of the LLDP settings. 87: a length is NULL. */
KXOVAAPI long Panel_LldpGetEnumValue(unsigned long index, char* name, unsigned long* pNameLen, char* value,
                                     unsigned long* pValueLen);

/* One value of a logical name in the language given by its code ("DE", "EN", …). */
KXOVAAPI long LogNameGetValueLang(const char* lpszLogName, const char* lpszParameter, const char* lpszLanguage,
                                  char* value, unsigned long* pLen);

#ifdef __cplusplus
}
#endif

#endif
