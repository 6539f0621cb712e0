#include "buffers/receivedData.h"
#include "buffers/sendData.h"
#include "Input.h"
#include "targets.h"

namespace {

void build(Input& input)
{
    sendData request;
    for (int fields = input.byte() % 16; fields > 0; --fields) {
        const std::uint32_t before = request.cursor();
        std::uint32_t status = 0;
        switch (input.byte() % 5) {
            case 0:
                status = request.PutU16(input.word());
                break;
            case 1:
                status = request.PutU32(input.word());
                break;
            case 2: {
                const std::uint16_t count = input.word();
                const auto bytes = exactly<std::uint8_t>(count);
                status = request.PutBytes(bytes.get(), count);
                break;
            }
            case 3:
                status = request.PutString(input.line().c_str());
                break;
            default:
                status = request.PutString(nullptr);
        }
        // What was refused is abandoned.
        if (status != 0) return request.Reset();
        require(request.cursor() >= before && request.cursor() <= wire::maxPayload, "a request stays in its buffer");
    }
}

using ReadText = std::uint32_t (receivedData::*)(char*, std::uint32_t*);

void readText(receivedData& reply, ReadText read, std::uint32_t capacity)
{
    // Every caller's buffer has a byte: a text that cannot be read leaves it empty.
    const auto buffer = exactly<char>(std::max<std::uint32_t>(capacity, 1));
    std::uint32_t size = capacity;
    if ((reply.*read)(buffer.get(), &size) == 0) require(size <= capacity, "a text that was read fits its buffer");
}

void read(Input& input, receivedData& reply)
{
    std::uint8_t bytes[16];
    const std::uint32_t count = input.byte() % sizeof bytes;
    std::uint8_t u8 = 0;
    std::uint16_t u16 = 0;
    std::uint32_t u32 = 0;
    switch (input.byte() % 8) {
        case 0:
            reply.ReadU8(&u8);
            break;
        case 1:
            reply.ReadU16(&u16);
            break;
        case 2:
            reply.ReadU32(&u32);
            break;
        case 3:
            reply.ReadBytes(bytes, &count);
            break;
        case 4:
            readText(reply, &receivedData::ReadString, input.word() % 9000);
            break;
        case 5:
            readText(reply, &receivedData::ReadStringAndCopyToUserBuffer, input.word() % 300);
            break;
        case 6:
            readText(reply, &receivedData::ReadMultiString, input.word() % 9000);
            break;
        default:
            reply.ReadString(nullptr, &u32);
    }
}

}  // namespace

void fuzzBuffers(const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    build(input);

    receivedData reply;
    Input fields(input.rest(), std::min<std::size_t>(input.left(), 64));
    const std::uint32_t claimed = input.word();
    const auto block = exactly<std::uint8_t>(wire::maxPayload);
    const std::size_t length = std::min<std::size_t>(input.left(), wire::maxPayload);
    std::copy_n(input.rest(), length, block.get());
    reply.Fill(block.get(), claimed % 4 == 0 ? claimed : static_cast<std::uint32_t>(length));
    while (!fields.empty())
        read(fields, reply);
}
