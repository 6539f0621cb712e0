#include "listeners/Conversation.h"

#include "wire/FrameCodec.h"

namespace srv {

std::span<const std::uint8_t> ChannelConversation::answer(std::span<const std::uint8_t> message, bool cut) noexcept
{
    RequestFrame frame = parseFrame(message);
    if (cut) frame.fault = "longer than any frame";
    const std::span<std::uint8_t> space = std::span(reply_).subspan(::wire::frameHeaderLength);
    std::span<const std::uint8_t> payload;
    if (frame.fault) {
        log_.warning("client %lu: malformed frame of %zu bytes: %s", session_.clientProcess(), message.size(),
                     frame.fault);
        payload = Dispatcher::refuse(space);
    } else {
        payload = dispatcher_.handle(session_, frame.payload, space);
    }
    writeReplyHeader(reply_, frame.opcode, payload.size());
    return std::span(reply_).first(::wire::frameHeaderLength + payload.size());
}

bool ChannelConversation::atOnce(std::span<const std::uint8_t> message) const noexcept
{
    const RequestFrame frame = parseFrame(message);
    return frame.fault || dispatcher_.atOnce(session_.via(), frame.payload);
}

std::span<const std::uint8_t> PipeConversation::answer(std::span<const std::uint8_t> message, bool cut) noexcept
{
    if (!cut) return dispatcher_.handle(session_, message, reply_);
    log_.warning("client %lu: a request longer than %zu bytes", session_.clientProcess(), ::wire::maxPayload);
    return Dispatcher::refuse(reply_);
}

}  // namespace srv
