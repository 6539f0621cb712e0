#include <cstring>

#include "buffers/receivedData.h"
#include "buffers/sendData.h"
#include "texts.h"
#include "wire/opcodes.h"

namespace {

std::uint8_t reply[wire::maxPayload];
std::uint32_t replyLength = 0;

void put(const void* bytes, std::size_t count)
{
    std::memcpy(reply + replyLength, bytes, count);
    replyLength += static_cast<std::uint32_t>(count);
}

void put32(std::uint32_t number)
{
    put(&number, sizeof number);
}

void putText(const std::string& text)
{
    put32(static_cast<std::uint32_t>(2 * text.size()));
    for (const char character : text)
        put(std::string{character, 0}.data(), 2);
    put32(0);
}

std::size_t encodeRequest()
{
    static volatile std::uint8_t seen;
    sendData request;
    request.PutU16(wire::opcode::LogDeviceGetValueLang);
    request.PutString(texts::device);
    request.PutString(texts::parameter);
    request.PutString(texts::language);
    request.PutU32(texts::capacity);
    seen = request.data()[request.cursor() - 1];
    return request.cursor();
}

std::size_t decodeReply()
{
    receivedData data;
    data.Fill(reply, replyLength);
    std::uint16_t kind = 0;
    std::uint32_t result = 0;
    char value[260];
    char unit[260];
    std::uint32_t valueLength = sizeof value;
    std::uint32_t unitLength = sizeof unit;
    if (data.ReadU16(&kind) || data.ReadU32(&result) || data.ReadStringAndCopyToUserBuffer(value, &valueLength) ||
        data.ReadStringAndCopyToUserBuffer(unit, &unitLength))
        return 0;
    return valueLength + unitLength;
}

}  // namespace

Encoding buffersEncoding()
{
    replyLength = 0;
    put(&wire::resultReply, sizeof wire::resultReply);
    put32(0);
    putText(texts::value);
    putText(texts::unit);
    return {"this library's buffers", encodeRequest, decodeReply};
}
