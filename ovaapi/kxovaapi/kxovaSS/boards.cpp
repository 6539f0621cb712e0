// Boards and adapters: the requests of the family, row by row.

#include "channel/kxOvascp.h"
#include "frame/ApiCall.h"
#include "frame/internal.h"
#include "kxovaapi.h"

namespace {

constexpr std::uint32_t attributeMarker = 1;  // a constant that ends the requests for one attribute

// The three functions that trace each step of their reply also have their own words for another kind of reply.
Reply& orInvalidResponseTraced(const ApiCall& call, Reply& reply)
{
    if (!reply.kindIsResult()) {
        if (!reply.ended()) {
            KX_RESULT(call, "<< return ERROR DCFG_INVALID_RESPONSE (0x%x)", reply.kind());
            reply.end(DCFG_INVALID_RESPONSE);
        }
        return reply;
    }
    reply.result();
    KX_RESULT(call, "result= 0x%x rr=%d", hex(reply.status()), reply.ended() ? static_cast<int>(reply.status()) : 0);
    return reply;
}

// Reads a text and traces it under its name.
void tracedText(const ApiCall& call, Reply& reply, const char* format, char* buffer, unsigned long* length)
{
    if (!reply.ok()) return;
    reply.plainText(buffer, length);
    if (TrcEnabled(TRC_RESULT)) {
        call.site().trace(TRC_RESULT, format, hex(reply.status()), reply.ok() ? readText(buffer, length) : "");
    }
}

}  // namespace

long DCFG_GetBoardAttribute(const char* lpszDeviceId, const char* lpszParameter, char* value, unsigned long* pLen)
{
    ApiCall call("DCFG_GetBoardAttribute: ");
    KX_ENTRY(call, ">> lpszDeviceId=%s lpszParameter=%s", lpszDeviceId, lpszParameter);
    if (!lpszDeviceId || !lpszParameter || !value) return ERROR_INVALID_PARAMETER;
    return call.request(opcode::BoardGetAttribute, lpszDeviceId, lpszParameter, Capacity{pLen}, attributeMarker)
        .orInvalidResponse()
        .plainText(value, pLen)
        .done();
}

long DCFG_BoardGetValueRaw(const char* name, const char* path, const char* param, char* value, unsigned long* pLen)
{
    ApiCall call("DCFG_BoardGetValueRaw: ");
    KX_ENTRY(call, ">> lpszProtocol %s Path %s Param %s", name, path, param);
    return call.send(opcode::BoardGetValueRaw, name, path, param, Capacity{pLen}).text(value, pLen).done();
}

long DCFG_BoardGetResourceString(const char* folder, const char* subfolder, const char* stringId,
                                 const char* language, char* value, unsigned long* pLen)
{
    ApiCall call("DCFG_BoardGetResourceString: ");
    KX_ENTRY(call, ">>Folder %s Subfolder %s StringID %s Language %s", folder, subfolder, stringId, language);
    Reply reply =
        call.request(opcode::BoardGetResourceString, folder, subfolder, stringId, language, *pLen, attributeMarker);
    if (reply.orReadFault().plainText(value, pLen).ok()) {
        KX_DETAIL(call, "value %s ", readText(value, pLen));
        KX_DETAIL(call, "lResult %d ValueLen %d ", static_cast<int>(reply.status()), dec(*pLen));
    }
    return reply.done();
}

long DCFG_BoardGetEnumValue(const char* name, unsigned long iValue, char* first, unsigned long* pFirstLen,
                            char* second, unsigned long* pSecondLen)
{
    ApiCall call("DCFG_BoardGetEnumValue: ");
    KX_ENTRY(call, ">> iValue=%d ", dec(iValue));
    if (!name) return ERROR_INVALID_PARAMETER;
    return call.request(opcode::BoardGetEnumValue, name, iValue, Capacity{pFirstLen}, Capacity{pSecondLen})
        .orInvalidResponse()
        .plainText(first, pFirstLen)
        .plainText(second, pSecondLen)
        .done();
}

long DCFG_EnumConfiguration(unsigned long iValue, const char* lpszBoardName, const char* s2, const char* s3,
                            const char* s4, char* logdevice, unsigned long* pLen1, char* protocol,
                            unsigned long* pLen2, char* L4protocol, unsigned long* pLen3, char* unit,
                            unsigned long* pLen4)
{
    ApiCall call("DCFG_EnumConfiguration: ");
    KX_ENTRY(call, ">> iValue=%d lpszBoardName=%s", dec(iValue), lpszBoardName);
    if (!lpszBoardName) return ERROR_INVALID_PARAMETER;
    call.exchangeFailure("<< Receive= 0x%x ");
    Reply reply = call.request(opcode::EnumConfiguration, iValue, lpszBoardName, s2, s3, s4, Capacity{pLen1},
                               Capacity{pLen2}, Capacity{pLen3}, Capacity{pLen4});
    orInvalidResponseTraced(call, reply);
    tracedText(call, reply, "logdevice=0x%x %s", logdevice, pLen1);
    tracedText(call, reply, "protocol=0x%x %s", protocol, pLen2);
    tracedText(call, reply, "L4protocol=0x%x %s", L4protocol, pLen3);
    tracedText(call, reply, "unit =0x%x %s", unit, pLen4);
    return reply.done();
}

long DCFG_GetBoardInfo(unsigned long infoType, const char* s1, const char* s2, const char* s3, const char* s4,
                       char* out, unsigned long* pLen)
{
    ApiCall call("DCFG_GetBoardInfo: ");
    KX_ENTRY(call, ">> infoType=%d ", dec(infoType));
    if (!s1) return ERROR_INVALID_PARAMETER;
    Reply reply = call.request(opcode::GetBoardInfo, infoType, s1, s2, s3, s4, Capacity{pLen});
    orInvalidResponseTraced(call, reply);
    tracedText(call, reply, "BoardName=0x%x %s", out, pLen);
    return reply.done();
}

// The reply's own length bounds what is copied; the server keeps within the capacity it was sent.
long DCFG_GetBoardInfoEx(unsigned long infoType, const char* lpszBoardName, const char* lpszBoardMap,
                         const char* lpszHardwareInstanceId, void* data, unsigned long* pcbData)
{
    ApiCall call("DCFG_GetBoardInfoEx: ");
    KX_ENTRY(call, ">>infoType=%d lpszBoardName=%s lpszBoardMap=%s lpszHardwareInstanceId=%s", dec(infoType),
             lpszBoardName, lpszBoardMap, lpszHardwareInstanceId);
    if (!lpszBoardName || !lpszBoardMap || !lpszHardwareInstanceId || !data || !pcbData) {
        return ERROR_INVALID_PARAMETER;
    }
    return call
        .request(opcode::GetBoardInfoEx, infoType, lpszBoardName, lpszBoardMap, lpszHardwareInstanceId,
                 Capacity{pcbData})
        .orInvalidResponse()
        .number(pcbData)
        .bytes(data, pcbData)
        .done();
}

long DCFG_EnumInstBoard(unsigned long iValue, char* BoardName, unsigned long* pLen1, char* DeviceId,
                        unsigned long* pLen2, char* NetType, unsigned long* pLen3, char* HardwareId,
                        unsigned long* pLen4, char* HardwareInstanceId, unsigned long* pLen5, char* BoardMap,
                        unsigned long* pLen6, unsigned long* State)
{
    ApiCall call("DCFG_EnumInstBoard: ");
    KX_ENTRY(call, ">> iValue=%d ", dec(iValue));
    if (!BoardName) return ERROR_INVALID_PARAMETER;
    Reply reply = call.request(opcode::EnumInstBoard, iValue, Capacity{pLen1}, Capacity{pLen2}, Capacity{pLen3},
                               Capacity{pLen4}, Capacity{pLen5}, Capacity{pLen6});
    orInvalidResponseTraced(call, reply);
    tracedText(call, reply, "BoardName=0x%x %s", BoardName, pLen1);
    tracedText(call, reply, "DeviceId=0x%x %s", DeviceId, pLen2);
    tracedText(call, reply, "NetType=0x%x %s", NetType, pLen3);
    tracedText(call, reply, "HardwareId=0x%x %s", HardwareId, pLen4);
    tracedText(call, reply, "HardwareInstanceId=0x%x %s", HardwareInstanceId, pLen5);
    tracedText(call, reply, "BoardMap=0x%x %s", BoardMap, pLen6);
    if (reply.ok()) {
        reply.number(State);
        KX_RESULT(call, "State=0x%x 0x%x", hex(reply.status()), reply.ok() ? hex(*State) : 0);
    }
    return reply.done();
}

long DCFG_EnumInstBoardEx(unsigned long iValue, DcfgEnumInstBoardInfo* info)
{
    const ModuleContext context;
    if (!info || info->size != sizeof *info) return ERROR_INVALID_PARAMETER;
    const unsigned long reserved[2] = {info->reserved17, info->reserved18};
    const long result = DCFG_EnumInstBoard(
        iValue, info->BoardName, &info->BoardNameLength, info->DeviceId, &info->DeviceIdLength, info->NetType,
        &info->NetTypeLength, info->HardwareId, &info->HardwareIdLength, info->HardwareInstanceId,
        &info->HardwareInstanceIdLength, info->BoardMap, &info->BoardMapLength, &info->State);
    info->reserved17 = reserved[0];
    info->reserved18 = reserved[1];
    return result;
}

long DCFG_BoardGetMapEx(const char* lpszDeviceID, const char* lpszAdapter, const char* s3, char* map,
                        unsigned long* pLen)
{
    ApiCall call("DCFG_BoardGetMapEx: ");
    KX_ENTRY(call, ">>lpszDeviceID=%s lpszAdapter=%s", lpszDeviceID, lpszAdapter);
    return call.request(opcode::BoardGetMapEx, lpszDeviceID, lpszAdapter, s3, Capacity{pLen})
        .orInvalidResponse()
        .plainText(map, pLen)
        .done();
}

long DCFG_EnumAdapters(unsigned long iValue, char* AdapterName, unsigned long* pcbAdapterNameLen, char* AdapterId,
                       unsigned long* pcbAdapterIdLen, unsigned long* pFlag)
{
    ApiCall call("DCFG_EnumAdapters: ");
    KX_ENTRY(call, ">>iValue=%d pcbAdapterNameLen=%d pcbAdapterIdLen=%d", dec(iValue),
             pcbAdapterNameLen ? dec(*pcbAdapterNameLen) : 0, pcbAdapterIdLen ? dec(*pcbAdapterIdLen) : 0);
    if (!AdapterName || !pcbAdapterNameLen || !AdapterId || !pcbAdapterIdLen || !pFlag) {
        return ERROR_INVALID_PARAMETER;
    }
    return call.request(opcode::EnumAdapters, iValue, Capacity{pcbAdapterNameLen}, Capacity{pcbAdapterIdLen})
        .orInvalidResponse()
        .plainText(AdapterName, pcbAdapterNameLen)
        .plainText(AdapterId, pcbAdapterIdLen)
        .byte(pFlag)
        .done();
}

long DCFG_EnumAvailableBoards(unsigned long iValue, char* first, unsigned long* pFirstLen, char* second,
                              unsigned long* pSecondLen, unsigned long* pValue)
{
    ApiCall call("DCFG_EnumAvailableBoards: ");
    KX_ENTRY(call, ">> iValue=%d ", dec(iValue));
    if (!first) return ERROR_INVALID_PARAMETER;
    unsigned long value = 0;
    Reply reply = call.request(opcode::EnumAvailableBoards, iValue, Capacity{pFirstLen}, Capacity{pSecondLen});
    reply.orInvalidResponse().plainText(first, pFirstLen).plainText(second, pSecondLen).number(&value);
    if (reply.ok() && pValue) *pValue = value;
    return reply.done();
}

long DCFG_BoardGetEnum2(const char* lpszDeviceID, unsigned long iValue, char* BoardName, unsigned long* pLen1,
                        char* s2, unsigned long* pLen2, char* s3, unsigned long* pLen3, bool bAutoNewMap)
{
    ApiCall call("DCFG_BoardGetEnum2: ");
    KX_ENTRY(call, ">>lpszDeviceID=%s iValue=%d lpszBoardName=%x bAutoNewMap %x ", lpszDeviceID, dec(iValue),
             hex(BoardName), bAutoNewMap ? 1u : 0u);
    if (!lpszDeviceID) return call.fail(ERROR_INVALID_PARAMETER, "ERROR -> invalid Parameter");
    return call
        .request(opcode::BoardGetEnum2, lpszDeviceID, iValue, Capacity{pLen1}, Capacity{pLen2}, Capacity{pLen3},
                 bAutoNewMap ? 1UL : 0UL)
        .orInvalidResponse()
        .plainText(BoardName, pLen1)
        .plainText(s2, pLen2)
        .plainText(s3, pLen3)
        .done();
}

long DCFG_SilentRestart(const char* DevName)
{
    ApiCall call("DCFG_SilentRestart: ");
    KX_ENTRY(call, ">>DevName = %s", DevName);
    if (!DevName) return ERROR_INVALID_PARAMETER;
    return call.request(opcode::SilentRestart, DevName).orInvalidResponse().done();
}
