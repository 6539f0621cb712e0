#include "frame/ApiCall.h"

#include <cstdarg>
#include <cstdio>

#include "channel/kxovacpipe.h"
#include "channel/kxOvascp.h"
#include "kxova/retired.h"

namespace {

// On this platform both are 32 bits wide, but different types to the compiler.
static_assert(sizeof(unsigned long) == sizeof(std::uint32_t));
std::uint32_t* u32(unsigned long* value) noexcept
{
    return reinterpret_cast<std::uint32_t*>(value);
}

}  // namespace

void CallSite::trace(std::uint32_t level, const char* format, ...) const noexcept
{
    if (!TrcEnabled(level)) return;
    char text[1024];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    TrcLine(name, level, TRC_MODULE, where.file_name(), static_cast<int>(where.line()), "%s", text);
}

ApiCall::ApiCall(const char* traceName, std::source_location where) noexcept
    : site_{.name = traceName, .where = where}
{
    DCFG_StopServer();
}

long ApiCall::done(long result, const char* format) const noexcept
{
    site_.trace(TRC_RESULT, format, static_cast<unsigned int>(result));
    return result;
}

long ApiCall::fail(long result, const char* text) const noexcept
{
    site_.trace(TRC_RESULT, "%s", text);
    return result;
}

void Reply::endIfFailed(std::uint32_t status) noexcept
{
    if (status == ERROR_SUCCESS) return;
    end(static_cast<long>(status));
    site_.trace(TRC_RESULT, site_.fieldFailure, status);
}

void Reply::end(long status) noexcept
{
    status_ = status;
    ended_ = true;
}

void Reply::exchange(const sendData& request) noexcept
{
    kxOvascp* const client = GetChannelClient(false);
    // Without a client there is no channel either, and callers know 30 as "no answer from the server".
    const std::uint32_t status = client ? client->ExchangeFrame(request, data_) : std::uint32_t{ERROR_READ_FAULT};
    if (status == ERROR_SUCCESS) return;
    end(static_cast<long>(status));
    site_.trace(TRC_RESULT, site_.exchangeFailure, status);
}

void Reply::exchangeOverPipe(const sendData& request) noexcept
{
    Kxovapipe* const client = GetPipeClient();
    endIfFailed(client ? client->Exchange(request, data_) : std::uint32_t{ERROR_PIPE_NOT_CONNECTED});
}

void Reply::send(const sendData& request) noexcept
{
    kxOvascp* const client = GetChannelClient(false);
    status_ = client ? static_cast<long>(client->send(request, data_)) : long{ERROR_READ_FAULT};
}

bool Reply::kindIsResult() noexcept
{
    if (ended_) return false;
    endIfFailed(data_.ReadU16(&kind_));
    return !ended_ && kind_ == wire::resultReply;
}

Reply& Reply::result() noexcept
{
    if (ended_) return *this;
    std::uint32_t result = 0;
    endIfFailed(data_.ReadU32(&result));
    if (!ended_) status_ = static_cast<long>(result);
    return *this;
}

Reply& Reply::expectResult(long otherKind) noexcept
{
    if (kindIsResult()) return result();
    if (!ended_) {
        end(otherKind);
        site_.trace(TRC_RESULT,
                    otherKind == ERROR_READ_FAULT ? "<< result ERROR_READ_FAULT (0x%x)"
                                                  : "<< return - Error DCFG_INVALID_RESPONSE (0x%x)",
                    kind_);
    }
    return *this;
}

Reply& Reply::text(char* buffer, unsigned long* length) noexcept
{
    if (ok()) endIfFailed(data_.ReadStringAndCopyToUserBuffer(buffer, u32(length)));
    return *this;
}

Reply& Reply::plainText(char* buffer, unsigned long* length) noexcept
{
    if (ok()) endIfFailed(data_.ReadString(buffer, u32(length)));
    return *this;
}

Reply& Reply::list(char* buffer, unsigned long* length) noexcept
{
    if (ok()) endIfFailed(data_.ReadMultiString(buffer, u32(length)));
    return *this;
}

Reply& Reply::number(unsigned long* value) noexcept
{
    if (ok()) endIfFailed(data_.ReadU32(u32(value)));
    return *this;
}

Reply& Reply::byte(unsigned long* value) noexcept
{
    if (!ok()) return *this;
    std::uint8_t byte = 0;
    endIfFailed(data_.ReadU8(&byte));
    if (ok()) *value = byte;
    return *this;
}

Reply& Reply::bytes(void* data, const unsigned long* count) noexcept
{
    if (!ok()) return *this;
    const std::uint32_t size = *count;
    endIfFailed(data_.ReadBytes(data, &size));
    return *this;
}

long Reply::done() const noexcept
{
    return done("<< return 0x%x");
}

long Reply::done(const char* format) const noexcept
{
    if (!ended_) site_.trace(TRC_RESULT, format, static_cast<unsigned int>(status_));
    return status_;
}

long SendAndReceive(const sendData& request) noexcept
{
    constexpr char function[] = "SendAndReceive: ";
    KXTRACE(function, TRC_PE, ">> Start SendData- Pid %d Tid %d", currentPid(), currentTid());

    kxOvascp* const client = GetChannelClient(false);
    receivedData reply;
    std::uint32_t status = client ? client->ExchangeFrame(request, reply) : std::uint32_t{ERROR_READ_FAULT};
    if (status != ERROR_SUCCESS) {
        KXTRACE(function, TRC_PE, "<< return - Error  0x%x ", status);
        return static_cast<long>(status);
    }
    std::uint16_t kind = 0;
    status = reply.ReadU16(&kind);
    if (status == ERROR_SUCCESS && kind != wire::resultReply) {
        KXTRACE(function, TRC_PX, "<< result ERROR_READ_FAULT (0x%x)", kind);
        return ERROR_READ_FAULT;
    }
    std::uint32_t result = 0;
    if (status == ERROR_SUCCESS) status = reply.ReadU32(&result);
    if (status != ERROR_SUCCESS) {
        KXTRACE(function, TRC_PE, "<< return - Error 0x%x ", status);
        return static_cast<long>(status);
    }
    KXTRACE(function, TRC_PE, "<< return - 0x%x ", result);
    return static_cast<long>(result);
}
