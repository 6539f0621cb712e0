#include "listeners/Conversation.h"

#include "wire/FrameCodec.h"

namespace srv {

std::span<const std::uint8_t> ChannelConversation::answer(std::span<const std::uint8_t> message, bool cut) noexcept
{
    RequestFrame frame = parseFrame(message);
    if (cut) frame.fault = "longer than any frame";
    std::span<const std::uint8_t> payload;
    if (frame.fault) {
        log_.warning("client %lu: malformed frame of %zu bytes: %s", session_.clientProcess(), message.size(),
                     frame.fault);
        payload = Dispatcher::refuse(payloadSpace());
    } else {
        payload = dispatcher_.handle(session_, frame.payload, payloadSpace());
    }
    return replyTo(frame.opcode, payload.size());
}

std::span<const std::uint8_t> ChannelConversation::answerAtOnce(std::span<const std::uint8_t> message) noexcept
{
    const RequestFrame frame = parseFrame(message);
    if (frame.fault) return {};
    const auto payload = dispatcher_.handleAtOnce(session_, frame.payload, payloadSpace());
    return payload.empty() ? payload : replyTo(frame.opcode, payload.size());
}

std::span<const std::uint8_t> ChannelConversation::replyTo(std::uint16_t opcode, std::size_t payloadLength) noexcept
{
    writeReplyHeader(reply_, opcode, payloadLength);
    return std::span(reply_).first(::wire::frameHeaderLength + payloadLength);
}

std::span<const std::uint8_t> PipeConversation::answer(std::span<const std::uint8_t> message, bool cut) noexcept
{
    if (!cut) return dispatcher_.handle(session_, message, reply_);
    log_.warning("client %lu: a request longer than %zu bytes", session_.clientProcess(), ::wire::maxPayload);
    return Dispatcher::refuse(reply_);
}

}  // namespace srv
