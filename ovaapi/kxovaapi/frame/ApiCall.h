// The call frame: what every exported function does around the one thing that it is for.
//
//     long LogDeviceDelValue(const char* lpszLogDevice, const char* lpszParameter)
//     {
//         ApiCall call("LogDeviceDelValue: ");
//         KX_ENTRY(call, "lpszLogDevice=%s lpszParameter %s ", lpszLogDevice, lpszParameter);
//         if (!lpszLogDevice) return ERROR_INVALID_PARAMETER;
//         return call.request(opcode::LogDeviceDelValue, lpszLogDevice, lpszParameter).orReadFault().done();
//     }
//
// Constructing an ApiCall enters the library's module context for the call. request() builds the message from its
// fields, carries it over the channel and yields the reply; the steps that follow each do nothing once one has
// failed.
#pragma once

#include <windows.h>

#include <cstdint>
#include <source_location>

#include "buffers/receivedData.h"
#include "buffers/sendData.h"
#include "frame/traceLines.h"
#include "kxframework.h"
#include "kxova/results.h"
#include "wire/opcodes.h"

namespace opcode = wire::opcode;

// Room that requests offer the server for its answer, in bytes, whatever the caller's own buffer holds.
inline constexpr std::uint32_t textCapacity = 260;
inline constexpr std::uint32_t smallListCapacity = 2048;
inline constexpr std::uint32_t listCapacity = 4080;
inline constexpr std::uint32_t largeListCapacity = 8160;

// The arguments that many functions refuse.
inline bool missing(const char* text) noexcept
{
    return !text || !*text;
}

// A request field that carries the capacity behind a caller's length pointer; 0 for a NULL pointer.
struct Capacity
{
    const unsigned long* length;
};

// A request field of raw bytes, without a length of its own.
struct Bytes
{
    const void* data;
    std::uint32_t count;
};

inline std::uint32_t putField(sendData& request, std::uint16_t value) noexcept
{
    return request.PutU16(value);
}
inline std::uint32_t putField(sendData& request, std::uint32_t value) noexcept
{
    return request.PutU32(value);
}
inline std::uint32_t putField(sendData& request, unsigned long value) noexcept
{
    return request.PutU32(value);
}
inline std::uint32_t putField(sendData& request, Capacity capacity) noexcept
{
    return request.PutU32(capacity.length ? *capacity.length : 0);
}
inline std::uint32_t putField(sendData& request, Bytes bytes) noexcept
{
    return request.PutBytes(bytes.data, bytes.count);
}
inline std::uint32_t putField(sendData& request, const char* text) noexcept
{
    return request.PutString(text);
}
inline std::uint32_t putField(sendData& request, std::nullptr_t) noexcept
{
    return request.PutString(nullptr);
}

// Builds a request from its operation code and fields; stops at the first that does not fit and returns its code.
template <typename... Fields>
std::uint32_t buildRequest(sendData& request, opcode::Code code, const Fields&... fields) noexcept
{
    std::uint32_t status = request.PutU16(code);
    static_cast<void>(((status == ERROR_SUCCESS && (status = putField(request, fields)) == ERROR_SUCCESS) && ...));
    return status;
}

// Where a call's lines are traced from: its trace name and the place of the exported function.
struct CallSite
{
    const char* name;
    std::source_location where;
    // How a failed exchange, and a field that cannot be put or read, are traced; formats with one %x.
    const char* exchangeFailure = "<< result= 0x%x ";
    const char* fieldFailure = "<< result= 0x%x ";

    __attribute__((format(printf, 3, 4))) void trace(std::uint32_t level, const char* format, ...) const noexcept;
};

// The reply to one request while it is read.
class Reply
{
 public:
    // Reads kind and result. A kind other than that of the result reply ends the call with 30 or with 8621; a
    // kind or result that is not wholly there ends it with 111.
    Reply& orReadFault() noexcept { return expectResult(ERROR_READ_FAULT); }
    Reply& orInvalidResponse() noexcept { return expectResult(DCFG_INVALID_RESPONSE); }

    // Output fields; read only while the status is 0, a failed read becomes the status and ends the call.
    Reply& text(char* buffer, unsigned long* length) noexcept;       // ReadStringAndCopyToUserBuffer
    Reply& plainText(char* buffer, unsigned long* length) noexcept;  // ReadString
    Reply& list(char* buffer, unsigned long* length) noexcept;       // ReadMultiString
    Reply& number(unsigned long* value) noexcept;                    // u32
    Reply& byte(unsigned long* value) noexcept;                      // u8, stored as 32 bits
    Reply& bytes(void* data, const unsigned long* count) noexcept;   // that many raw bytes

    // The steps of expectResult alone, for functions that treat another kind in a way of their own.
    bool kindIsResult() noexcept;  // false also when there is no kind to read: see ended()
    Reply& result() noexcept;
    void end(long status) noexcept;  // ends the call without a trace of its own

    // Traces the result and returns it; a call that has ended was traced where it ended.
    long done() const noexcept;
    long done(const char* format) const noexcept;  // a format with one %x

    // The status so far: 0, the server's result, or the code that ended the call.
    long status() const noexcept { return status_; }
    bool ended() const noexcept { return ended_; }
    bool ok() const noexcept { return status_ == ERROR_SUCCESS && !ended_; }
    std::uint16_t kind() const noexcept { return kind_; }
    receivedData& data() noexcept { return data_; }

 private:
    friend class ApiCall;
    explicit Reply(const CallSite& site) noexcept : site_(site) {}

    Reply& expectResult(long otherKind) noexcept;
    void endIfFailed(std::uint32_t status) noexcept;
    void exchange(const sendData& request) noexcept;
    void exchangeOverPipe(const sendData& request) noexcept;
    void send(const sendData& request) noexcept;

    const CallSite& site_;
    receivedData data_;
    long status_ = ERROR_SUCCESS;
    std::uint16_t kind_ = 0;
    bool ended_ = false;
};

class ApiCall
{
 public:
    // traceName: the function's name in the trace, with its colon and blank.
    explicit ApiCall(const char* traceName, std::source_location where = std::source_location::current()) noexcept;
    ApiCall(const ApiCall&) = delete;
    ApiCall& operator=(const ApiCall&) = delete;

    const char* name() const noexcept { return site_.name; }

    // How a failed exchange of this call is traced, where that is not the usual text.
    void exchangeFailure(const char* format) noexcept { site_.exchangeFailure = format; }

    // How any failure of this call's request and reply is traced, where that is not the usual text.
    void failure(const char* format) noexcept { site_.exchangeFailure = site_.fieldFailure = format; }

    // One request over the channel, and its reply.
    template <typename... Fields>
    Reply request(opcode::Code code, const Fields&... fields) noexcept
    {
        Reply reply(site_);
        sendData request;
        reply.endIfFailed(buildRequest(request, code, fields...));
        if (!reply.ended()) reply.exchange(request);
        return reply;
    }

    // The same over the server pipe, whose failures are passed on as they are.
    template <typename... Fields>
    Reply requestOverPipe(opcode::Code code, const Fields&... fields) noexcept
    {
        Reply reply(site_);
        sendData request;
        reply.endIfFailed(buildRequest(request, code, fields...));
        if (!reply.ended()) reply.exchangeOverPipe(request);
        return reply;
    }

    // One request through the channel client's own exchange, which reads kind and result: 30 for a reply of another
    // kind, traced there. What it yields is the result; output fields may follow.
    template <typename... Fields>
    Reply send(opcode::Code code, const Fields&... fields) noexcept
    {
        Reply reply(site_);
        sendData request;
        reply.endIfFailed(buildRequest(request, code, fields...));
        if (!reply.ended()) reply.send(request);
        return reply;
    }

    // Traces a result (a format with one %x) and returns it.
    long done(long result, const char* format = "<< return 0x%x") const noexcept;

    // Traces a text at the result level and returns the result.
    long fail(long result, const char* text) const noexcept;

    const CallSite& site() const noexcept { return site_; }

 private:
    CallSite site_;
    ModuleContext context_;
};

// Exchanges a filled request whose answer is a result alone, with traces of its own; used by functions that build
// their requests themselves.
long SendAndReceive(const sendData& request) noexcept;
