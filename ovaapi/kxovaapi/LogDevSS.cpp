// Logical devices: the requests of the family, row by row.

#include <cstring>

#include "channel/kxOvascp.h"
#include "frame/ApiCall.h"
#include "kxovaapi.h"
#include "valueTranslation.h"

namespace {

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

long LogDeviceDel(const char* lpszLogDevice)
{
    ApiCall call("LogDeviceDel: ");
    KX_ENTRY(call, "lpszLogDevice=%s ", lpszLogDevice);
    if (!lpszLogDevice) return ERROR_INVALID_PARAMETER;
    return call.request(opcode::LogDeviceDel, lpszLogDevice, 0UL).orReadFault().done();
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
