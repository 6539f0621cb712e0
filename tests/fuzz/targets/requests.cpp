#include "Input.h"
#include "targets.h"
#include "wire/frame.h"
#include "wire/FrameCodec.h"
#include "wire/RequestReader.h"

namespace {

void read(Input& kinds, srv::RequestReader& request)
{
    std::uint8_t u8 = 0;
    std::uint16_t u16 = 0;
    std::uint32_t u32 = 0;
    std::uint8_t bytes[16];
    srv::Text text;
    const std::size_t before = request.remaining();
    bool read = false;
    switch (kinds.byte() % 6) {
        case 0:
            read = request.u8(u8);
            break;
        case 1:
            read = request.u16(u16);
            break;
        case 2:
            read = request.u32(u32);
            break;
        case 3:
            read = request.bytes(bytes);
            break;
        default:
            read = request.text(text);
            if (read && text) {
                std::size_t sum = 0;
                for (const wchar_t unit : *text)
                    sum += unit;
                require(text->size() * 2 <= before && sum <= text->size() * 0xFFFF, "a text comes from its request");
            }
    }
    require(read != request.failed(), "a read fails for good");
    require(request.remaining() <= before, "a request is read once");
}

}  // namespace

void fuzzRequests(const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    Input kinds(input.rest(), std::min<std::size_t>(input.left(), 32));

    const auto message = exactly<std::uint8_t>(input.left());
    std::copy_n(input.rest(), input.left(), message.get());
    const std::span<const std::uint8_t> whole(message.get(), input.left());

    const srv::RequestFrame frame = srv::parseFrame(whole);
    require(frame.fault || frame.payload.size() + wire::frameHeaderLength == whole.size(),
            "a good frame's payload is all behind its header");
    const auto header = exactly<std::uint8_t>(wire::frameHeaderLength);
    srv::writeReplyHeader({header.get(), wire::frameHeaderLength}, frame.opcode, frame.payload.size());

    const auto request = std::make_unique<srv::RequestReader>(frame.fault ? whole : frame.payload);
    while (!kinds.empty())
        read(kinds, *request);
}
