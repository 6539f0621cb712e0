// Hardware changes, and notifications about changed logical devices and logical names.

#include <cstdio>

#include "channel/eventWindow.h"
#include "channel/kxOvascp.h"
#include "frame/ApiCall.h"
#include "kxovaapi.h"
#include "platform/support/win_handle.h"

namespace {

constexpr char notifyModule[] = "OVAAPI64";

constexpr std::uint32_t anotherWindow = 8560;
constexpr std::uint32_t notRegistered = 8561;
constexpr std::uint32_t lowestMessageType = 0x0400;
constexpr std::uint32_t highestMessageType = 0x7FFF;

constexpr char logDevices[] = "LogDevices";
constexpr char logNames[] = "LogNames";

Bytes bytesOf(const GUID& guid) noexcept
{
    return {&guid, sizeof guid};
}

unsigned long result(const ApiCall& call, std::uint32_t code) noexcept
{
    return static_cast<unsigned long>(call.done(static_cast<long>(code)));
}

unsigned long failed(const ApiCall& call, std::uint32_t code, const char* format) noexcept
{
    return static_cast<unsigned long>(call.done(static_cast<long>(code), format));
}

// The event's name as the server opens it: unique per process and session.
class ServerEventName
{
 public:
    ServerEventName(const ApiCall& call, const char* format, const char* eventName) noexcept
    {
        const DWORD process = GetCurrentProcessId();
        DWORD session = 0;
        if (!ProcessIdToSessionId(process, &session)) KX_DETAIL(call, "Can't read session id");
        std::snprintf(text_, sizeof text_, format, eventName, dec(process), dec(session));
    }
    operator const char*() const noexcept { return text_; }

 private:
    char text_[512];
};

constexpr char globalName[] = "Global\\%s%d%d";
constexpr char localName[] = "%s%d%d";

// The caller's own event, which the event window sets when the server notifies.
long createEvent(const ApiCall& call, const char* eventName, HANDLE* event) noexcept
{
    *event = CreateEventA(nullptr, FALSE, FALSE, eventName);
    if (*event) return ERROR_SUCCESS;
    const DWORD error = GetLastError();
    return call.done(static_cast<long>(error), "<< return ERROR: canot open event 0x%x");
}

unsigned long handleValue(const HANDLE* event) noexcept
{
    return event ? static_cast<unsigned long>(reinterpret_cast<ULONG_PTR>(*event)) : 0;
}

// A registration: arguments, event, channel and window, and then the request.
template <typename Exchange>
unsigned long registerEvent(const ApiCall& call, const char* nameFormat, const char* eventName, HANDLE* event,
                            const void* reserved, Exchange exchange)
{
    KX_ENTRY(call, ">> eventName=%s", eventName);
    if (!eventName || !event || !reserved) {
        return static_cast<unsigned long>(call.fail(ERROR_INVALID_PARAMETER, "<< return ERROR: eventName=NULL"));
    }
    if (const long status = createEvent(call, eventName, event); status != ERROR_SUCCESS) {
        return static_cast<unsigned long>(status);
    }
    const ServerEventName serverName(call, nameFormat, eventName);
    GetChannelClient(true);
    if (const std::int32_t status = kxOvascp::RegisterHwndMsg(); status != 0) {
        return static_cast<unsigned long>(call.done(status, "<< result= 0x%x "));
    }
    return static_cast<unsigned long>(exchange(serverName));
}

template <typename Exchange>
unsigned long unregisterEvent(const ApiCall& call, const char* eventName, Exchange exchange)
{
    KX_ENTRY(call, ">> eventName=%s", eventName);
    if (!eventName) {
        return static_cast<unsigned long>(call.fail(ERROR_INVALID_PARAMETER, "<< return ERROR: eventName=NULL"));
    }
    const ServerEventName serverName(call, globalName, eventName);
    GetChannelClient(true);
    return static_cast<unsigned long>(exchange(serverName));
}

}  // namespace

unsigned long OvaRegisterHardwareChanges(HWND hWnd, const GUID* pGUID)
{
    ApiCall call("OvaRegisterHardwareChanges: ");
    KX_ENTRY(call, ">> hWnd=%d pGUID=0x%x", dec(hWnd), hex(pGUID));
    if (!pGUID) {
        return static_cast<unsigned long>(call.fail(ERROR_INVALID_PARAMETER, "<< return ERROR: pGUID=NULL"));
    }
    kxOvascp* const client = GetChannelClient(true);
    if (!client) return ERROR_READ_FAULT;
    if (client->otherWindowRegistered(hWnd)) {
        return failed(call, anotherWindow, "<< a second window is tried to register result = 0x%x");
    }
    if (const std::int32_t status = kxOvascp::RegisterHwndMsg(); status != 0) {
        KXTRACE_MODULE(notifyModule, call.name(), TRC_RESULT, "<< result= 0x%x ", hex(status));
        return static_cast<unsigned long>(status);
    }
    if (const Reply reply = call.send(opcode::HardwareChangeRegister, bytesOf(*pGUID)); !reply.ok()) {
        return static_cast<unsigned long>(reply.done("<< result= 0x%x "));
    }
    if (!client->addWindow(hWnd, *pGUID)) {
        return failed(call, anotherWindow, "<< a second window is tried to register result = 0x%x");
    }
    return result(call, ERROR_SUCCESS);
}

unsigned long OvaSetMessageTypeForHardwareChanges(HWND hWnd, unsigned long messageType)
{
    ApiCall call("OvaSetMessageTypeForHardwareChanges: ");
    KXTRACE_MODULE(notifyModule, call.name(), TRC_ENTRY, ">> hWnd=%d pGUID=0x%x", dec(hWnd), hex(messageType));
    if (!hWnd) {
        KXTRACE_MODULE(notifyModule, call.name(), TRC_RESULT, "<< return ERROR: hWnd=NULL");
        return ERROR_INVALID_PARAMETER;
    }
    if (messageType < lowestMessageType || messageType > highestMessageType) {
        KXTRACE_MODULE(notifyModule, call.name(), TRC_RESULT,
                       "<< return ERROR: messageType < 0x0400 or messageType > 0x7FFF");
        return ERROR_INVALID_PARAMETER;
    }
    kxOvascp* const client = GetChannelClient(false);
    if (client && !client->setMessageType(hWnd, messageType)) return ERROR_NOT_ENOUGH_MEMORY;
    return ERROR_SUCCESS;
}

unsigned long OvaUnregisterHardwareChanges(const GUID* pGuid)
{
    ApiCall call("OvaUnregisterHardwareChanges: ");
    if (!pGuid) {
        return static_cast<unsigned long>(call.fail(ERROR_INVALID_PARAMETER, "<< return ERROR: pGuid=NULL"));
    }
    kxOvascp* const client = GetChannelClient(true);
    if (!client) return ERROR_READ_FAULT;
    auto status = static_cast<std::uint32_t>(call.send(opcode::HardwareChangeUnregister, bytesOf(*pGuid)).status());
    if (status == ERROR_SUCCESS && !client->removeWindow(*pGuid)) status = notRegistered;
    KX_ENTRY(call, "<< return 0x%x", status);
    return status;
}

unsigned long OvaGetHardwareChanges(unsigned long handle, OvaHardwareChange* pChanges)
{
    ApiCall call("OvaGetHardwareChanges: ");
    KX_ENTRY(call, ">> handle=%d ", dec(handle));
    if (!pChanges) {
        return static_cast<unsigned long>(call.fail(ERROR_INVALID_PARAMETER, "<< return ERROR: pChanges=NULL"));
    }
    GetChannelClient(true);
    Reply reply = call.request(opcode::HardwareChangeGet, handle);
    if (reply.ended()) return static_cast<unsigned long>(reply.status());

    // This reply alone has a number in front of its kind, and fields whatever its result.
    receivedData& data = reply.data();
    std::uint32_t ignored = 0;
    std::uint16_t kind = 0;
    std::uint32_t code = 0;
    std::uint8_t change = 0;
    std::uint32_t nameSize = sizeof pChanges->name;
    const std::uint32_t guidSize = sizeof pChanges->interfaceClass;

    std::uint32_t status = data.ReadU32(&ignored);
    if (status == ERROR_SUCCESS) status = data.ReadU16(&kind);
    if (status == ERROR_SUCCESS && kind != wire::resultReply) {
        KX_RESULT(call, "<< result ERROR_READ_FAULT (0x%x)", kind);
        return ERROR_READ_FAULT;
    }
    if (status == ERROR_SUCCESS) status = data.ReadU32(&code);
    if (status == ERROR_SUCCESS) status = data.ReadU8(&change);
    if (status == ERROR_SUCCESS) {
        pChanges->change = change;
        status = data.ReadString(pChanges->name, &nameSize);
    }
    if (status == ERROR_SUCCESS) status = data.ReadBytes(&pChanges->interfaceClass, &guidSize);
    if (status != ERROR_SUCCESS) return failed(call, status, "<< return - Error 0x%x");
    return result(call, code);
}

unsigned long LogDeviceNotifyChange(const char* subject, unsigned long, unsigned long, const char* eventName,
                                    HANDLE* event, void* reserved)
{
    ApiCall call("LogDeviceNotifyChange: ");
    return registerEvent(call, globalName, eventName, event, reserved, [&](const char* serverName) {
        return call.request(opcode::NotifyRegister, logDevices, subject, serverName, handleValue(event))
            .orReadFault()
            .done();
    });
}

unsigned long LogDeviceUnregisterNotifyChange(const char* subject, const char* eventName, const HANDLE* event)
{
    ApiCall call("LogDeviceUnregisterNotifyChange: ");
    return unregisterEvent(call, eventName, [&](const char* serverName) {
        return call.request(opcode::NotifyUnregister, logDevices, subject, serverName, handleValue(event))
            .orReadFault()
            .done();
    });
}

unsigned long LogNameNotifyChange(const char* subject, unsigned long, unsigned long, const char* eventName,
                                  HANDLE* event, void* reserved)
{
    ApiCall call("LogNameNotifyChange: ");
    // Alone of the four, this event's name has no prefix.
    return registerEvent(call, localName, eventName, event, reserved, [&](const char* serverName) {
        return call.send(opcode::NotifyRegister, logNames, subject, serverName, handleValue(event)).done();
    });
}

unsigned long LogNameUnregisterNotifyChange(const char* subject, const char* eventName, const HANDLE* event)
{
    ApiCall call("LogDeviceUnregisterNotifyChange: ");  // traced under the other function's name
    return unregisterEvent(call, eventName, [&](const char* serverName) {
        return call.send(opcode::NotifyUnregister, logNames, subject, serverName, handleValue(event)).done();
    });
}

unsigned long LogDeviceFlush(void)
{
    ApiCall call("LogDeviceFlush: ");
    KX_ENTRY(call, ">> start");
    platform::KernelObject flush(OpenEventA(EVENT_MODIFY_STATE, TRUE, "Global\\DCFG_FLUSH_LOGDEV"));
    platform::KernelObject ok(OpenEventA(EVENT_ALL_ACCESS, TRUE, "Global\\DCFG_FLUSH_RESP_OK"));
    platform::KernelObject error(OpenEventA(EVENT_ALL_ACCESS, TRUE, "Global\\DCFG_FLUSH_RESP_ERR"));
    if (!flush || !ok || !error) {
        KX_RESULT(call, "<< return ERROR: hFlushEvent=0x%x hEvent[x]=0x%x - 0x%x", hex(flush.get()), hex(ok.get()),
                  hex(error.get()));
        // Those that were opened stay open.
        flush.release();
        ok.release();
        error.release();
        return DCFG_ERR_NOT_FOUND;
    }
    SetEvent(flush.get());
    const HANDLE answers[] = {ok.get(), error.get()};
    if (WaitForMultipleObjects(2, answers, FALSE, INFINITE) == WAIT_OBJECT_0) {
        KX_RESULT(call, "<<return ok");
        return ERROR_SUCCESS;
    }
    const DWORD reason = GetLastError();
    flush.release();
    ok.release();
    error.release();
    KX_RESULT(call, "<<return Fehler bei WaitForSingleObject %d", dec(reason));
    return reason;
}
