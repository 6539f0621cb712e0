// Logical devices: the requests of the family, row by row. Functions with a logic of their own are in
// LogDevComposed.cpp.

#include <cstring>

#include "channel/kxOvascp.h"
#include "frame/ApiCall.h"
#include "kxovaapi.h"
#include "LogDevSS/valueTranslation.h"

namespace {

// A constant that ends the requests for Ndi values and for texts in a language.
constexpr std::uint32_t ndiMarker = 1;
constexpr std::uint32_t resourceMarker = 1;

// Replaces the stored text that the reader left in the caller's buffer by the text to show. The reader accepts a
// buffer without room for the terminator, this step does not; a caller's length is then what it was.
long translateInPlace(const char* parameter, char* buffer, unsigned long* length, unsigned long capacity,
                      const ApiCall& call)
{
    if (buffer && length && *length < capacity) {
        const char* const shown = valueTranslation::shown(parameter, buffer);
        const auto shownLength = static_cast<unsigned long>(std::strlen(shown));
        if (shownLength < capacity) {
            if (shown != buffer) std::memcpy(buffer, shown, shownLength + 1);
            *length = shownLength;
            return ERROR_SUCCESS;
        }
    }
    if (length) *length = capacity;
    KX_RESULT(call, "<< return Error=DCFG_ERR_BUFFER_TOO_SHORT");
    return DCFG_ERR_BUFFER_TOO_SHORT;
}

}  // namespace

long LogDeviceExists(const char* lpszLogDevice, unsigned long flags)
{
    ApiCall call("LogDeviceExist: ");
    if (!lpszLogDevice) return ERROR_INVALID_PARAMETER;
    KX_ENTRY(call, ">>lpszLogDevice=%s", lpszLogDevice);
    if (std::strcmp(lpszLogDevice, "Dummy") == 0) {
        KX_ENTRY(call, "dummy call - initializing OvaScp synchronously");
        GetChannelClient(true);
        KX_RESULT(call, "dummy call - return");
        return -1;
    }
    return call.request(opcode::LogDeviceExists, lpszLogDevice, flags).orInvalidResponse().done();
}

long LogDeviceCreateFromDef(const char* lpszLogDevice, const char* lpszDefDevice)
{
    ApiCall call("LogDeviceCreateFromDef: ");
    KX_ENTRY(call, ">> lpszLogDevice=%s", lpszLogDevice);
    if (!lpszLogDevice || !lpszDefDevice) return ERROR_INVALID_PARAMETER;
    return call.request(opcode::LogDeviceCreateFromDef, lpszLogDevice, lpszDefDevice).orReadFault().done();
}

long LogDeviceCreateTemp(const char* lpszLogDevice, char* buffer, unsigned long* length)
{
    ApiCall call("LogDeviceCreateTemp: ");
    KX_ENTRY(call, ">> lpszLogDevice=%s", lpszLogDevice);
    if (!lpszLogDevice || !buffer) return ERROR_INVALID_PARAMETER;
    return call.request(opcode::LogDeviceCreateTemp, lpszLogDevice, Capacity{length})
        .orInvalidResponse()
        .plainText(buffer, length)
        .done();
}

long LogDeviceDelTemp(const char* lpszLogDevice)
{
    ApiCall call("LogDeviceDelTemp: ");
    KX_ENTRY(call, ">> lpszLogDevice=%s", lpszLogDevice);
    if (!lpszLogDevice) return ERROR_INVALID_PARAMETER;
    Reply reply = call.request(opcode::LogDeviceDelTemp, lpszLogDevice);
    // Another kind of reply counts as deleted.
    if (reply.kindIsResult()) reply.result();
    if (reply.ended()) return reply.status();
    KX_DETAIL(call, "LogDeviceDelTemp=ret=%x lpszLogDevice=%s ", hex(reply.status()), lpszLogDevice);
    return call.done(reply.status(), "<< return - Error ret=%x ");
}

long LogDeviceUpdateWithTemp(const char* lpszTempLogDevice, const char* lpszLogDevice)
{
    constexpr long notAnswered = 1000;
    ApiCall call("LogDeviceUpdateWithTemp: ");
    KX_ENTRY(call, "lpszTempLogDevice=%s lpszLogDevice %s ", lpszTempLogDevice, lpszLogDevice);
    if (!lpszTempLogDevice || !lpszLogDevice) return ERROR_INVALID_PARAMETER;
    Reply reply = call.request(opcode::LogDeviceUpdateWithTemp, lpszTempLogDevice, lpszLogDevice);
    // Only the result reply says how the update went.
    const long result = reply.kindIsResult() ? reply.result().status() : notAnswered;
    if (reply.ended()) return reply.status();
    KX_DETAIL(call, "LogDeviceUpdateWithTemp=ret=%x lpszLogDevice=%s ", hex(result), lpszLogDevice);
    return call.done(result, "<< return - Error ret=%x ");
}

long LogDeviceDel(const char* lpszLogDevice)
{
    ApiCall call("LogDeviceDel: ");
    KX_ENTRY(call, "lpszLogDevice=%s ", lpszLogDevice);
    if (!lpszLogDevice) return ERROR_INVALID_PARAMETER;
    return call.request(opcode::LogDeviceDel, lpszLogDevice, 0UL).orReadFault().done();
}

long LogDeviceDelValue(const char* lpszLogDevice, const char* lpszParameter)
{
    ApiCall call("LogDeviceDelValue: ");
    KX_ENTRY(call, "lpszLogDevice=%s lpszParameter %s ", lpszLogDevice, lpszParameter);
    if (!lpszLogDevice) return ERROR_INVALID_PARAMETER;
    return call.request(opcode::LogDeviceDelValue, lpszLogDevice, lpszParameter).orReadFault().done();
}

long LogDeviceSetBusparams(const char* lpszLogDevice, const char* value)
{
    ApiCall call("LogDeviceSetBusparams: ");
    KX_ENTRY(call, ">> LogDev=%s val=%s", lpszLogDevice, value);
    return call.request(opcode::LogDeviceSetBusparams, lpszLogDevice, value).orReadFault().done();
}

long LogDeviceGetEnum(const char* lpszNetTypeName, unsigned long iValue, char* buffer, unsigned long* length)
{
    ApiCall call("LogDeviceGetEnum: ");
    if (lpszNetTypeName) {
        KX_ENTRY(call, ">>lpszNetTypeName=%s iValue=%d - Pid %d Tid %d", lpszNetTypeName, dec(iValue), currentPid(),
                 currentTid());
    } else {
        KX_ENTRY(call, ">>lpszNetTypeName=NULL iValue=%d - Pid %d Tid %d", dec(iValue), currentPid(), currentTid());
    }
    Reply reply = call.request(opcode::LogDeviceGetEnum, lpszNetTypeName, iValue, textCapacity);
    reply.orReadFault().text(buffer, length);
    if (reply.status() == DCFG_ERR_NO_MORE_ITEMS && !reply.ended() && length) *length = 0;
    return reply.done();
}

long LogDeviceGetEnumValue(const char* lpszLogDevice, unsigned long iValue, char* name, unsigned long* nameLength,
                           char* value, unsigned long* valueLength)
{
    ApiCall call("LogDeviceGetEnumValue: ");
    KX_ENTRY(call, ">>lpszLogDevice=%s iValue=%d - Pid %d Tid %d", lpszLogDevice, dec(iValue), currentPid(),
             currentTid());
    return call.request(opcode::LogDeviceGetEnumValue, lpszLogDevice, iValue, textCapacity, textCapacity)
        .orInvalidResponse()
        .text(name, nameLength)
        .text(value, valueLength)
        .done();
}

long LogDeviceGetValue(const char* lpszLogDevice, const char* lpszParameter, char* buffer, unsigned long* length)
{
    ApiCall call("LogDeviceGetValue: ");
    KX_ENTRY(call, "lpszLogDevice=%s lpszParameter=%s - Pid %d Tid %d", lpszLogDevice, lpszParameter, currentPid(),
             currentTid());
    if (!lpszLogDevice || !*lpszLogDevice || !lpszParameter || !*lpszParameter) return ERROR_INVALID_PARAMETER;

    const unsigned long capacity = length ? *length : 0;
    Reply reply = call.request(opcode::LogDeviceGetValue, lpszLogDevice, lpszParameter, textCapacity);
    reply.orInvalidResponse().text(buffer, length);
    if (!reply.ok()) return reply.done();
    return call.done(translateInPlace(lpszParameter, buffer, length, capacity, call));
}

long LogDeviceSetValue(const char* lpszLogDevice, const char* lpszParameter, const char* lpszValue)
{
    ApiCall call("LogDeviceSetValue: ");
    KX_ENTRY(call, "lpszLogDevice=%s lpszParameter=%s lpszValue=%s", lpszLogDevice, lpszParameter, lpszValue);
    return call
        .request(opcode::LogDeviceSetValue, lpszLogDevice, lpszParameter,
                 valueTranslation::stored(lpszParameter, lpszValue))
        .orReadFault()
        .done();
}

long LogDeviceGetValueLang(const char* lpszLogDevice, const char* lpszParameter, const char* lpszLanguage,
                           char* buffer, unsigned long* length)
{
    ApiCall call("LogDeviceGetValueLang: ");
    KX_ENTRY(call, "lpszLogDevice=%s lpszParameter=%s ", lpszLogDevice, lpszParameter);
    Reply reply =
        call.request(opcode::LogDeviceGetValueLang, lpszLogDevice, lpszParameter, lpszLanguage, resourceMarker);
    reply.orInvalidResponse().plainText(buffer, length);
    if (reply.ok()) {
        KX_RESULT(call, "<< return lpszLogDevice=%s lpszParameter=%s lpszValue=%s", lpszLogDevice, lpszParameter,
                  readText(buffer, length));
    }
    return reply.done();
}

long LogDeviceGetNdiValue(const char* lpszLogDevice, const char* lpszParameter, char* buffer, unsigned long* length)
{
    ApiCall call("LogDeviceGetNdiValue: ");
    KX_ENTRY(call, "lpszLogDevice=%s lpszParameter=%s ", lpszLogDevice, lpszParameter);
    return call.request(opcode::LogDeviceGetNdiValue, lpszLogDevice, lpszParameter, textCapacity, ndiMarker)
        .orInvalidResponse()
        .text(buffer, length)
        .done();
}

long LogDeviceSetNdiValue(const char* lpszLogDevice, const char* lpszParameter, const char* lpszValue)
{
    ApiCall call("LogDeviceSetNdiValue: ");
    KX_ENTRY(call, "lpszLogDevice=%s lpszParameter=%s value %s", lpszLogDevice, lpszParameter, lpszValue);
    KX_ENTRY(call, "ProcId=0x%x ThreadId=0x%x", hex(GetCurrentProcessId()), hex(GetCurrentThreadId()));
    return call.request(opcode::LogDeviceSetNdiValue, lpszLogDevice, lpszParameter, lpszValue, ndiMarker)
        .orInvalidResponse()
        .done();
}

long LogDeviceDelNdiValue(const char* lpszLogDevice, const char* lpszParameter)
{
    ApiCall call("LogDeviceDelNdiValue: ");
    KX_ENTRY(call, "lpszLogDevice=%s lpszParameter=%s ", lpszLogDevice, lpszParameter);
    return call.request(opcode::LogDeviceDelNdiValue, lpszLogDevice, lpszParameter, ndiMarker)
        .orInvalidResponse()
        .done();
}

long LogDeviceGetEnumNdiValue(const char* lpszLogDevice, unsigned long iValue, char* name, unsigned long* nameLength,
                              char* value, unsigned long* valueLength)
{
    ApiCall call("LogDeviceGetEnumNdiValue64x: ");
    KX_ENTRY(call, ">>lpszLogDevice=%s iValue=%d ", lpszLogDevice, dec(iValue));
    if (!lpszLogDevice || !name || !value || !valueLength) return ERROR_INVALID_PARAMETER;
    return call
        .request(opcode::LogDeviceGetEnumNdiValue, lpszLogDevice, iValue, textCapacity, textCapacity, ndiMarker)
        .orInvalidResponse()
        .text(name, nameLength)
        .text(value, valueLength)
        .done();
}

long LogDeviceLock(const char* lpszLogDevice)
{
    ApiCall call("LogDeviceLock: ");
    KX_ENTRY(call, ">>lpszLogDevice=%s", lpszLogDevice);
    return call.fail(ERROR_CALL_NOT_IMPLEMENTED, "<< ERROR_CALL_NOT_IMPLEMENTED");
}

long LogDeviceUnlock(const char* lpszLogDevice, unsigned long nIgnore)
{
    ApiCall call("LogDeviceUnlock: ");
    KX_ENTRY(call, ">>lpszLogDevice=%s nIgnore=0x%x", lpszLogDevice, hex(nIgnore));
    return call.fail(ERROR_CALL_NOT_IMPLEMENTED, "<< ERROR_CALL_NOT_IMPLEMENTED");
}
