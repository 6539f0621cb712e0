#include "frame_check.h"

#include "wire/frame.h"
#include "wire/opcodes.h"

namespace kxonlinx {

namespace {

namespace at = wire::header;

std::uint16_t u16(Bytes frame, std::size_t offset) noexcept
{
    return static_cast<std::uint16_t>(frame[offset] | frame[offset + 1] << 8);
}

bool isFrame(Bytes frame) noexcept
{
    if (frame.size() < wire::frameHeaderLength || frame.size() > wire::frameHeaderLength + wire::maxPayload) {
        return false;
    }
    return frame[at::lengthOffset] == wire::frameHeaderLength && u16(frame, at::magicOffset) == at::magic &&
           frame[at::versionOffset] == at::version && frame[at::kindOffset] == at::kind &&
           u16(frame, at::maskOffset) == at::mask &&
           u16(frame, at::payloadLengthOffset) == frame.size() - wire::frameHeaderLength &&
           u16(frame, at::maxPayloadOffset) == wire::maxPayload &&
           u16(frame, at::payloadStartOffset) == wire::frameHeaderLength;
}

}  // namespace

bool isRequest(Bytes frame) noexcept
{
    return isFrame(frame) && frame.size() >= wire::frameHeaderLength + sizeof(std::uint16_t) &&
           u16(frame, at::opcodeOffset) == u16(frame, wire::frameHeaderLength);
}

bool isSuccess(Bytes reply) noexcept
{
    constexpr std::size_t kindAndResult = 6;
    if (reply.size() < wire::frameHeaderLength + kindAndResult) return false;
    const Bytes payload = reply.subspan(wire::frameHeaderLength);
    return u16(payload, 0) == wire::resultReply && u16(payload, 2) == 0 && u16(payload, 4) == 0;
}

bool isPush(Bytes frame) noexcept
{
    return isRequest(frame) && u16(frame, at::opcodeOffset) == wire::opcode::NotifyPush;
}

bool isReplyTo(Bytes request, Bytes frame) noexcept
{
    return isFrame(frame) && u16(frame, at::opcodeOffset) == u16(request, at::opcodeOffset);
}

}  // namespace kxonlinx
