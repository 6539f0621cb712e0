#include "channel/kxOvascp.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "channel/eventWindow.h"
#include "channel/ovaScpLock.h"
#include "channel/scpFrame.h"
#include "channel/traceValues.h"
#include "kxonlinx.h"
#include "Kxotrc.h"

namespace {

constexpr int noChannel = -1;
constexpr char notifyModule[] = "OVAAPI64";

// Guarded by the channel lock.
int s_deviceHandle = noChannel;
kxOvascp* s_client = nullptr;

}  // namespace

kxOvascp* GetChannelClient(bool synchronousInit) noexcept
{
    kxOvascp::Init(synchronousInit);
    if (!s_client) {
        if (const OvaScpLockGuard lock; lock && !s_client) s_client = new (std::nothrow) kxOvascp;
    }
    return s_client;
}

int kxOvascp::Init(bool synchronousInit) noexcept
{
    constexpr char function[] = "kxOvascp::Init()";
    constexpr int result = 1;
    KXTRACE(function, TRC_DETAIL, ">> entered");

    if (synchronousInit && !eventWindow::everStarted()) {
        KXTRACE_MODULE(notifyModule, function, TRC_DETAIL, "Creating eventWindow!");
        if (const OvaScpLockGuard lock; lock) {
            eventWindow::CreateMsgThread();
        } else {
            KXTRACE(function, TRC_DETAIL, "Error getting list mutex!!!");
        }
    }
    if (s_deviceHandle == noChannel) openChannel();

    KXTRACE(function, TRC_DETAIL, "<< return %d", result);
    return result;
}

void kxOvascp::openChannel() noexcept
{
    constexpr char function[] = "kxOvascp::Init()";
    const int handle = SCP_openW(wire::channelName);
    KXTRACE(function, TRC_DETAIL, "SCP_open returned %d", handle);

    if (s_deviceHandle == noChannel && handle != noChannel) {
        if (const OvaScpLockGuard lock; lock) {
            if (s_deviceHandle == noChannel) {
                s_deviceHandle = handle;
                KXTRACE(function, TRC_DETAIL, "Using scp handle %d", handle);
            }
        } else {
            return;  // neither stored nor closed: without the lock nobody may say whose handle this is
        }
    }
    if (s_deviceHandle != noChannel && handle != noChannel && s_deviceHandle != handle) {
        KXTRACE(function, TRC_DETAIL, "Closing unneccesary scp handle %d", handle);
        SCP_close(handle);
    }
}

void kxOvascp::closeChannel() noexcept
{
    if (s_deviceHandle == noChannel) return;
    SCP_close(s_deviceHandle);
    s_deviceHandle = noChannel;
}

void kxOvascp::destroy() noexcept
{
    const OvaScpLockGuard lock;
    if (!lock) return;
    KXTRACE("kxOvascp::destroy()", TRC_DETAIL, "start deleting Ova SCP");
    delete s_client;
    s_client = nullptr;
}

kxOvascp* kxOvascp::current() noexcept
{
    return s_client;
}

kxOvascp::kxOvascp() noexcept : m_sendMtx(CreateMutexA(nullptr, FALSE, nullptr))
{
    constexpr char function[] = "kxOvascp::kxOvascp(void)";
    const DWORD error = GetLastError();
    if (!m_sendMtx) KXTRACE(function, TRC_RESOURCE, "m_sendMtx == 0!! lastErr = 0x%x", hex(error));
    KXTRACE(function, TRC_RESOURCE, "CreateMutex returned 0x%x; Thread 0x%x, Process 0x%x", hex(m_sendMtx),
            hex(GetCurrentThreadId()), hex(GetCurrentProcessId()));
}

kxOvascp::~kxOvascp()
{
    constexpr char function[] = "kxOvascp::~kxOvascp(void)";
    closeChannel();
    eventWindow::releaseBuffer(function);
    if (m_sendMtx) {
        ReleaseMutex(m_sendMtx);
        CloseHandle(m_sendMtx);
        m_sendMtx = nullptr;
    }
    eventWindow::close(function);
    m_windows.clear();
    m_messageTypes.clear();
    eventWindow::closeEvents();
    KXTRACE(function, TRC_RESOURCE, "Destructor end ...");
}

std::int32_t kxOvascp::sendReceive(std::uint16_t frameLength, void* frame, std::uint16_t replyCapacity, void* reply,
                                   std::uint16_t* replyLength) noexcept
{
    constexpr char function[] = "kxOvascp::sendReceive";
    if (s_deviceHandle == noChannel) {
        KXTRACE(function, TRC_DETAIL, "error: SCP_ERR_CHANNELS_NOT_OPEN ...");
        return SCP_ERR_CHANNELS_NOT_OPEN;
    }
    KXTRACE(function, TRC_ENTRY, "Start scp communication");

    const OvaScpLockGuard lock;
    if (lock) {
        std::uint16_t received = *replyLength;
        const int result = SCP_send_receive(s_deviceHandle, frameLength, frame, replyCapacity, reply, &received);
        if (result == 0) {
            *replyLength = received;
            KXTRACE(function, TRC_DETAIL, "SCP_send_receive was successful ...");
            return 0;
        }
        const int error = SCP_get_errno();
        KXTRACE(function, TRC_DETAIL, "SCP_send_receive was not successful! SCP_get_errno: %d ", error);
        return error;
    }
    if (lock.result() == WAIT_TIMEOUT) {
        KXTRACE(function, TRC_DETAIL, "error: OvaScpLock timed out!");
        return SCP_ERR_LOCK_TIMEOUT;
    }
    KXTRACE(function, TRC_DETAIL, "error: OvaScpLock failed!");
    return -1;
}

std::uint32_t kxOvascp::ExchangeFrame(const sendData& request, receivedData& reply) noexcept
{
    requestFrame frame(request);
    replyFrame answer;
    std::uint16_t received = answer.capacity();
    const std::int32_t result =
        sendReceive(frame.length(), frame.bytes(), answer.capacity(), answer.bytes(), &received);
    if (result == 0) reply.Fill(answer.payload(), answer.payloadLength(received));
    // An empty reply hides why it is empty; callers know 30 as "no answer from the server".
    return reply.length() == 0 ? std::uint32_t{ERROR_READ_FAULT} : static_cast<std::uint32_t>(result);
}

std::uint32_t kxOvascp::send(const sendData& request, receivedData& reply) noexcept
{
    constexpr char function[] = "send: ";
    KXTRACE(function, TRC_DETAIL, ">> Start SendData- Pid %d Tid %d", currentPid(), currentTid());

    std::uint16_t kind = 0;
    std::uint32_t status = ExchangeFrame(request, reply);
    if (status == ERROR_SUCCESS) status = reply.ReadU16(&kind);
    if (status != ERROR_SUCCESS) {
        KXTRACE(function, TRC_DETAIL, "<< return - Error 0x%x ", status);
        return status;
    }
    if (kind != wire::resultReply) {
        KXTRACE(function, TRC_DETAIL, "<< result ERROR_READ_FAULT (0x%x)", kind);
        return ERROR_READ_FAULT;
    }
    std::uint32_t result = 0;
    status = reply.ReadU32(&result);
    if (status != ERROR_SUCCESS) {
        KXTRACE(function, TRC_DETAIL, "<< return - Error 0x%x ", status);
        return status;
    }
    KXTRACE(function, TRC_DETAIL, "<< return - 0x%x ", result);
    return result;
}

std::int32_t kxOvascp::RegisterHwndMsg() noexcept
{
    constexpr char function[] = "RegisterHwndMsg: ";
    const OvaScpLockGuard lock;
    if (!lock) return -1;
    const HWND window = eventWindow::handle();
    if (s_deviceHandle == noChannel || !window) {
        KXTRACE(function, TRC_DETAIL, "SetNorixHWndMsg failed - s_deviceHandle: 0x%x   eventWindow: 0x%x",
                static_cast<unsigned int>(s_deviceHandle), hex(window));
        return -1;
    }
    const int result = SetNorixHWndMsg(s_deviceHandle, window, eventWindow::notificationMessage);
    KXTRACE(function, TRC_DETAIL, "SetNorixHWndMsg - retVal 0x%x ", static_cast<unsigned int>(result));
    return result;
}

bool kxOvascp::otherWindowRegistered(HWND window) noexcept
{
    const std::lock_guard guard(m_mapMutex);
    return !m_windows.empty() && m_windows.find(window) == m_windows.end();
}

bool kxOvascp::addWindow(HWND window, const GUID& interfaceClass) noexcept
try {
    const std::lock_guard guard(m_mapMutex);
    if (otherWindowRegistered(window)) return false;
    m_windows.emplace(window, std::make_unique<GUID>(interfaceClass));
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

bool kxOvascp::removeWindow(const GUID& interfaceClass) noexcept
{
    const std::lock_guard guard(m_mapMutex);
    const auto entry = std::find_if(m_windows.begin(), m_windows.end(), [&](const auto& candidate) {
        return std::memcmp(candidate.second.get(), &interfaceClass, sizeof interfaceClass) == 0;
    });
    if (entry == m_windows.end()) return false;
    m_windows.erase(entry);
    std::erase_if(m_messageTypes, [&](const auto& type) { return m_windows.find(type.first) == m_windows.end(); });
    return true;
}

HWND kxOvascp::registeredWindow() noexcept
{
    const std::lock_guard guard(m_mapMutex);
    return m_windows.empty() ? nullptr : m_windows.begin()->first;
}

bool kxOvascp::setMessageType(HWND window, std::uint32_t messageType) noexcept
try {
    const std::lock_guard guard(m_mapMutex);
    m_messageTypes[window] = messageType;
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

std::uint32_t kxOvascp::messageType(HWND window) noexcept
{
    const std::lock_guard guard(m_mapMutex);
    const auto entry = m_messageTypes.find(window);
    return entry == m_messageTypes.end() ? std::uint32_t{WM_USER} : entry->second;
}
