// Requests of the control panel and of the LLDP settings page.

#include "channel/kxOvascp.h"
#include "frame/ApiCall.h"
#include "kxovaapi.h"

namespace {

constexpr char lldpFolder[] = "LLDP";
constexpr char lldpSubfolder[] = "data";
constexpr std::uint32_t resourceMarker = 1;  // a constant that ends the requests for texts in a language

}  // namespace

long Panel_SendInstall(const char* lpszDeviceID, const char* s2)
{
    ApiCall call("SendInstall: ");
    KX_ENTRY(call, ">> lpszDeviceID=%s ", lpszDeviceID);
    return call.send(opcode::PanelInstall, lpszDeviceID, s2).done();
}

long Panel_SendDeinstall(const char* lpszDeviceID, const char* s2, const char* s3)
{
    ApiCall call("SendDeinstall: ");
    KX_ENTRY(call, ">> lpszDeviceID=%s ", lpszDeviceID);
    return call.send(opcode::PanelDeinstall, lpszDeviceID, s2, s3).done();
}

long Panel_SendGetList(char op, const char* s, char* buffer, unsigned long* pLen)
{
    ApiCall call("SendLogDeviceGetList: ");
    KX_ENTRY(call, ">> start ");
    unsigned long length = pLen ? *pLen : 0;
    Reply reply = call.request(static_cast<unsigned char>(op), s, Capacity{pLen});
    reply.orInvalidResponse().list(buffer, &length);
    if (reply.ended()) return reply.status();
    if (pLen) *pLen = length;
    KX_RESULT(call, "<< return 0x%x neededBufLen=%ul", hex(reply.status()), static_cast<unsigned int>(length));
    return reply.status();
}

long Panel_LldpDelValue(const char* parameter)
{
    ApiCall call("DCFG_LldpDelValue: ");
    KX_ENTRY(call, ">> parameter %s", parameter);
    if (!parameter || !*parameter) return ERROR_INVALID_PARAMETER;
    return call.request(opcode::LldpDelValue, nullptr, lldpFolder, parameter).orReadFault().done("<< result= 0x%x ");
}

long Panel_LldpGetEnumValue(unsigned long index, char* name, unsigned long* pNameLen, char* value,
                            unsigned long* pValueLen)
{
    ApiCall call("DCFG_LldpGetValue: ");
    KX_ENTRY(call, ">> folder %s index %d parameter %.*s", lldpSubfolder, dec(index), textLength(name, pNameLen),
             name);
    if (!pNameLen || !pValueLen) return ERROR_INVALID_PARAMETER;
    return call
        .request(opcode::LldpGetEnumValue, lldpSubfolder, nullptr, lldpFolder, index, textCapacity, textCapacity)
        .orReadFault()
        .text(name, pNameLen)
        .text(value, pValueLen)
        .done();
}

long LogNameGetValueLang(const char* lpszLogName, const char* lpszParameter, const char* lpszLanguage, char* value,
                         unsigned long* pLen)
{
    ApiCall call("LogNameGetValueLang: ");
    KX_ENTRY(call, "lpszLogName=%s lpszParameter=%s ", lpszLogName, lpszParameter);
    Reply reply = call.request(opcode::LogNameGetValueLang, lpszLogName, lpszParameter, lpszLanguage, Capacity{pLen},
                               resourceMarker);
    reply.orInvalidResponse().plainText(value, pLen);
    if (reply.ended()) return reply.status();
    KX_RESULT(call, "<< return ret=%x lpszLogName=%s lpszParameter=%s lpszValue=%s", hex(reply.status()), lpszLogName,
              lpszParameter, reply.ok() ? readText(value, pLen) : "");
    return reply.status();
}
