// Logical devices, logical names, templates, and the second set of names for their values.
#include "Function.h"

Functions deviceAndNameFunctions()
{
    return {
        function("DCFG_LogDeviceGetEnum", DCFG_LogDeviceGetEnum),
        function("DCFG_LogDeviceGetEnumValue", DCFG_LogDeviceGetEnumValue),
        function("LogDeviceCallDLL", LogDeviceCallDLL),
        function("LogDeviceCopy", LogDeviceCopy),
        function("LogDeviceCreateFromDef", LogDeviceCreateFromDef),
        function("LogDeviceCreateTemp", LogDeviceCreateTemp),
        function("LogDeviceDel", LogDeviceDel),
        function("LogDeviceDelNdiValue", LogDeviceDelNdiValue),
        function("LogDeviceDelTemp", LogDeviceDelTemp),
        function("LogDeviceDelValue", LogDeviceDelValue),
        function("LogDeviceExists", LogDeviceExists),
        function("LogDeviceFromDeviceIDEnum", LogDeviceFromDeviceIDEnum),
        function("LogDeviceGetAsicType", LogDeviceGetAsicType),
        function("LogDeviceGetEnum", LogDeviceGetEnum),
        function("LogDeviceGetEnumNdiValue", LogDeviceGetEnumNdiValue),
        function("LogDeviceGetEnumValue", LogDeviceGetEnumValue),
        function("LogDeviceGetNdiValue", LogDeviceGetNdiValue),
        function("LogDeviceGetValue", form<long(const char*, const char*, char*, unsigned long*)>(LogDeviceGetValue)),
        function("LogDeviceLock", LogDeviceLock),
        function("LogDeviceSetBusparams", LogDeviceSetBusparams),
        function("LogDeviceSetNdiValue", LogDeviceSetNdiValue),
        function("LogDeviceSetValue", LogDeviceSetValue),
        function("LogDeviceUnlock", LogDeviceUnlock),
        function("LogDeviceUpdateWithTemp", LogDeviceUpdateWithTemp),
        function("_Z21LogDeviceGetValueLangPKcS0_S0_PcPm", LogDeviceGetValueLang),

        function("DCFG_LogNameGetEnum", DCFG_LogNameGetEnum),
        function("DCFG_LogNameGetEnumValue", DCFG_LogNameGetEnumValue),
        function("LogNameCreate", LogNameCreate),
        function("LogNameDel", LogNameDel),
        function("LogNameDelValue", LogNameDelValue),
        function("LogNameExists", LogNameExists),
        function("LogNameGetEnum", LogNameGetEnum),
        function("LogNameGetEnumValue", LogNameGetEnumValue),
        function("LogNameGetLogDevice", LogNameGetLogDevice),
        function("LogNameGetValue", LogNameGetValue),
        function("LogNameLock", LogNameLock),
        function("LogNameSetLogDevice", LogNameSetLogDevice),
        function("LogNameSetValue", LogNameSetValue),
        function("LogNameUnlock", LogNameUnlock),

        function("DCFG_GetParameterMetaData", DCFG_GetParameterMetaData),
        function("DCFG_SetParameterMetaData", DCFG_SetParameterMetaData),
        function("TemplateExists", TemplateExists),
        function("TemplateGetEnum", TemplateGetEnum),
        function("TemplateGetEnumValue", TemplateGetEnumValue,
                 [](Arguments& a) {
                     const char* const type = a.text();
                     char* const path = a.changeableText();
                     const unsigned long index = a.number();
                     char* const name = a.buffer();
                     unsigned long* const nameLength = a.length();
                     char* const value = a.buffer();
                     TemplateGetEnumValue(type, path, index, name, nameLength, value, a.length());
                 }),
        function("TemplateGetValue", TemplateGetValue,
                 [](Arguments& a) {
                     const char* const type = a.text();
                     char* const path = a.changeableText();
                     const char* const parameter = a.text();
                     char* const value = a.buffer();
                     TemplateGetValue(type, path, parameter, value, a.length());
                 }),

        function("DCFG_LogDeviceDelNdi", DCFG_LogDeviceDelNdi),
        function("DCFG_LogDeviceDelNdiEx", DCFG_LogDeviceDelNdiEx),
        function("DCFG_LogDeviceGetNdi",
                 form<long(const char*, const char*, char*, unsigned long*)>(DCFG_LogDeviceGetNdi)),
        function("DCFG_LogDeviceGetValue",
                 form<long(const char*, const char*, char*, unsigned long*)>(DCFG_LogDeviceGetValue)),
        function("DCFG_LogDeviceSetNdi", DCFG_LogDeviceSetNdi),
        function("DCFG_LogDeviceSetNdiEx", DCFG_LogDeviceSetNdiEx),
        function("DCFG_LogDeviceSetValue", DCFG_LogDeviceSetValue),
        function("DCFG_LogNameSetValue", DCFG_LogNameSetValue),
        function("_Z20DCFG_LogDeviceGetNdiPKcS0_P7CString",
                 form<long(const char*, const char*, CString*)>(DCFG_LogDeviceGetNdi)),
        function("_Z20DCFG_LogNameGetValuePKcS0_R7CString", DCFG_LogNameGetValue),
        function("_Z22DCFG_LogDeviceGetValuePKcS0_P7CString",
                 form<long(const char*, const char*, CString*)>(DCFG_LogDeviceGetValue)),
    };
}
