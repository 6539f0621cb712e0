// Protocols, bus profiles, device definitions and special values: the requests of the family, row by row.

#include "channel/kxOvascp.h"
#include "frame/ApiCall.h"
#include "frame/internal.h"
#include "kxovaapi.h"

long DCFG_ProtocolGetValueRaw(const char* lpszProtocol, const char* path, const char* param, char* value,
                              unsigned long* pLen)
{
    ApiCall call("DCFG_ProtocolGetValueRaw: ");
    KX_ENTRY(call, ">> lpszProtocol %sPath %s Param %s", lpszProtocol, path, param);
    return call.send(opcode::ProtocolGetValueRaw, lpszProtocol, path, param, textCapacity).text(value, pLen).done();
}

long DCFG_DefDeviceGetValueRaw(const char* lpszDefDevice, const char* path, const char* param, char* value,
                               unsigned long* pLen)
{
    ApiCall call("DCFG_DefDeviceGetValueRaw: ");
    KX_ENTRY(call, ">> lpszDefDevice %sPath %s Param %s", lpszDefDevice, path, param);
    return call.send(opcode::DefDeviceGetValueRaw, lpszDefDevice, path, param, textCapacity).text(value, pLen).done();
}

long DCFG_TemplateGetEnumValueRaw(const char* lpszFolder, const char* file, const char* param, unsigned long i,
                                  char* value, unsigned long* pLen)
{
    ApiCall call("DCFG_TemplateGetEnumValueRaw: ");
    KX_ENTRY(call, ">> lpszFolder %s file %s Param %s i %d", lpszFolder, file, param, dec(i));
    return call.send(opcode::TemplateGetEnumValueRaw, lpszFolder, file, param, i, textCapacity)
        .text(value, pLen)
        .done();
}

long DCFG_TemplateKeyExists(const char* lpszFolderName, const char* file, const char* path, const char* param)
{
    ApiCall call("DCFG_TemplateKeyExists: ");
    KX_ENTRY(call, ">> lpszFolderName file %s %sPath %s Param %s", lpszFolderName, file, path, param);
    return call.send(opcode::TemplateKeyExists, lpszFolderName, file, path, param).done();
}

long logDeviceGetValueRaw(const char* lpszLogDevice, const char* secondName, const char* lpszParameter, char* value,
                          unsigned long* pLen)
{
    ApiCall call("DCFG_LogDeviceGetValue: ");
    KX_ENTRY(call, ">> lpszLogDevice=%s lpszParameter=%s", lpszLogDevice, lpszParameter);
    return call.request(opcode::LogDeviceGetValueRaw, lpszLogDevice, secondName, 0UL, lpszParameter, Capacity{pLen})
        .orInvalidResponse()
        .plainText(value, pLen)
        .done();
}

long DCFG_ProtocolGetEnumValue(const char* lpszCP_Type, const char* s2, const char* s3, const char* s4,
                               const char* s5, unsigned long iValue, char* first, unsigned long* pFirstLen,
                               char* second, unsigned long* pSecondLen)
{
    ApiCall call("DCFG_ProtocolGetEnumValue: ");
    KX_ENTRY(call, ">> lpszCP_Type=%s iValue=%d ", lpszCP_Type, dec(iValue));
    if (!lpszCP_Type) return ERROR_INVALID_PARAMETER;
    return call
        .request(opcode::ProtocolGetEnumValue, lpszCP_Type, s2, s3, s4, s5, iValue, Capacity{pFirstLen},
                 Capacity{pSecondLen})
        .orInvalidResponse()
        .plainText(first, pFirstLen)
        .plainText(second, pSecondLen)
        .done();
}

long DCFG_ProtocolGetEnumBaudrate(const char* ProtocolFile, const char* Profile, unsigned long index, char* value,
                                  unsigned long* pLen)
{
    ApiCall call("DCFG_ProtocolGetEnumBaudrate: ");
    KX_ENTRY(call, ">> ProtocolFile %s Profile %s index=%d ", ProtocolFile, Profile, dec(index));
    if (!ProtocolFile || !Profile) return ERROR_INVALID_PARAMETER;
    return call.send(opcode::ProtocolGetEnumBaudrate, ProtocolFile, Profile, index, textCapacity)
        .text(value, pLen)
        .done();
}

long DCFG_ProtocolGetEnumBusprofiles(const char* ProtocolFile, unsigned long index, char* value, unsigned long* pLen)
{
    ApiCall call("DCFG_ProtocolGetEnumBusprofiles: ");
    KX_ENTRY(call, ">> ProtocolFile %s index=%d ", ProtocolFile, dec(index));
    if (!ProtocolFile) return ERROR_INVALID_PARAMETER;
    return call.send(opcode::ProtocolGetEnumBusprofiles, ProtocolFile, index, textCapacity).text(value, pLen).done();
}

long DCFG_CanSaveParameters(void)
{
    ApiCall call("DCFG_CanSaveParameters: ");
    KX_ENTRY(call, ">> start");
    sendData request;
    const std::uint32_t status = buildRequest(request, opcode::CanSaveParameters);
    return call.done(status == ERROR_SUCCESS ? SendAndReceive(request) : static_cast<long>(status));
}

long DCFG_DefaultLogDeviceGetEnumValue(const char* name, unsigned long iValue, char* first, unsigned long* pFirstLen,
                                       char* second, unsigned long* pSecondLen)
{
    ApiCall call("DCFG_DefaultLogDeviceGetEnumValue: ");
    KX_ENTRY(call, ">> iValue=%d ", dec(iValue));
    if (!name) return ERROR_INVALID_PARAMETER;
    return call.request(opcode::DefaultLogDeviceGetEnumValue, name, iValue, Capacity{pFirstLen}, Capacity{pSecondLen})
        .orInvalidResponse()
        .plainText(first, pFirstLen)
        .plainText(second, pSecondLen)
        .done();
}

long DCFG_LogDeviceSetProfileR(const char* lpszLogDevice, const char* lpszProfilePath, const char* lpszParameter)
{
    ApiCall call("DCFG_LogDeviceSetProfileR: ");
    KX_ENTRY(call, ">> lpszLogDevice=%s lpszProfilePath=%s lpszParameter=%s ", lpszLogDevice, lpszProfilePath,
             lpszParameter);
    if (!lpszLogDevice || !lpszProfilePath || !lpszParameter) return ERROR_INVALID_PARAMETER;
    return call.request(opcode::LogDeviceSetProfile, lpszLogDevice, lpszProfilePath, lpszParameter)
        .orInvalidResponse()
        .done();
}

long DCFG_SpecialGetValue(const char* lpszParameter, char* value, unsigned long* pLen)
{
    ApiCall call("DCFG_SpecialGetValue: ");
    KX_ENTRY(call, ">> lpszParameter=%s", lpszParameter);
    if (!lpszParameter) return ERROR_INVALID_PARAMETER;
    return call.request(opcode::SpecialGetValue, lpszParameter, Capacity{pLen})
        .orInvalidResponse()
        .plainText(value, pLen)
        .done();
}

long DCFG_TemplateGetEnumNoPrefix(const char* lpszFolder, unsigned long index, char* value, unsigned long* pLen)
{
    ApiCall call("DCFG_TemplateGetEnumNoPrefix: ");
    KX_ENTRY(call, ">> lpszFolder=%s index=%d", lpszFolder, dec(index));
    return call.request(opcode::TemplateGetEnumNoPrefix, lpszFolder, index, Capacity{pLen})
        .orInvalidResponse()
        .plainText(value, pLen)
        .done();
}

long DCFG_TemplateExistsEx(const char* lpszFolder, const char* lpszTemplate, const char* lpszParameterPath,
                           const char* s4)
{
    ApiCall call("DCFG_TemplateExistsEx: ");
    KX_ENTRY(call, ">> lpszFolder=%s lpszTemplate=%s lpszParameterPath %s", lpszFolder, lpszTemplate,
             lpszParameterPath);
    return call.send(opcode::TemplateExistsEx, lpszFolder, lpszTemplate, lpszParameterPath, s4).done();
}

long DCFG_TemplateExists(const char* lpszFolder, const char* lpszTemplate, unsigned long flags)
{
    ApiCall call("DCFG_TemplateExists: ");
    KX_ENTRY(call, ">> lpszFolder=%s lpszTemplate=%s", lpszFolder, lpszTemplate);
    sendData request;
    const std::uint32_t status = buildRequest(request, opcode::TemplateExists, lpszFolder, lpszTemplate, flags);
    return call.done(status == ERROR_SUCCESS ? SendAndReceive(request) : static_cast<long>(status));
}
