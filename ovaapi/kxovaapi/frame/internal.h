// Functions that the families share and that are not exported.
#pragma once

// Requests of the boards and protocols.
long DCFG_BoardGetResourceString(const char* folder, const char* subfolder, const char* stringId,
                                 const char* language, char* value, unsigned long* pLen);
long DCFG_BoardGetEnumValue(const char* name, unsigned long iValue, char* first, unsigned long* pFirstLen,
                            char* second, unsigned long* pSecondLen);
long DCFG_BoardScan();
long DCFG_ProtocolGetEnumValue(const char* lpszCP_Type, const char* s2, const char* s3, const char* s4,
                               const char* s5, unsigned long iValue, char* first, unsigned long* pFirstLen,
                               char* second, unsigned long* pSecondLen);
long DCFG_DefaultLogDeviceGetEnumValue(const char* name, unsigned long iValue, char* first, unsigned long* pFirstLen,
                                       char* second, unsigned long* pSecondLen);
long DCFG_LogDeviceSetProfileR(const char* lpszLogDevice, const char* lpszProfilePath, const char* lpszParameter);

// One value of a logical device as it is stored. secondName may be NULL.
long logDeviceGetValueRaw(const char* lpszLogDevice, const char* secondName, const char* lpszParameter, char* value,
                          unsigned long* pLen);
