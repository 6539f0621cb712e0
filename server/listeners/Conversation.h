// What one connection says, whatever carries it: messages in, messages out.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "dispatch/Dispatcher.h"

namespace srv {

// Used by one thread at a time. Destroyed when the connection ends.
class Conversation
{
 public:
    explicit Conversation(const Dispatcher& dispatcher, std::uint64_t id, Via via, DWORD clientProcess)
        : dispatcher_(dispatcher), session_(id, via, clientProcess)
    {}
    virtual ~Conversation() = default;

    // The longest message that can be a request.
    virtual std::size_t longestRequest() const noexcept = 0;

    // The answer to a message; `cut` says that the message was longer, and this is only its beginning. Always
    // answers. The answer lives until the next call.
    virtual std::span<const std::uint8_t> answer(std::span<const std::uint8_t> message, bool cut) noexcept = 0;

    // The answer to a message that is answered from memory, without a wait for anything; empty for any other.
    virtual std::span<const std::uint8_t> answerAtOnce(std::span<const std::uint8_t>) noexcept { return {}; }

    // What is to be sent without being asked; nullptr: nothing ever, as far as was agreed until now.
    PushSource* pushes() noexcept { return session_.pushes.get(); }

    const Session& session() const noexcept { return session_; }

 protected:
    const Dispatcher& dispatcher_;
    Session session_;
};

// The channel: each message is a frame.
class ChannelConversation : public Conversation
{
 public:
    ChannelConversation(const Dispatcher& dispatcher, Log& log, std::uint64_t id, DWORD clientProcess)
        : Conversation(dispatcher, id, Via::Channel, clientProcess), log_(log)
    {}

    std::size_t longestRequest() const noexcept override { return ::wire::replyFrameCapacity; }
    std::span<const std::uint8_t> answer(std::span<const std::uint8_t> message, bool cut) noexcept override;
    std::span<const std::uint8_t> answerAtOnce(std::span<const std::uint8_t> message) noexcept override;

 private:
    std::span<std::uint8_t> payloadSpace() noexcept { return std::span(reply_).subspan(::wire::frameHeaderLength); }
    std::span<const std::uint8_t> replyTo(std::uint16_t opcode, std::size_t payloadLength) noexcept;

    Log& log_;
    std::array<std::uint8_t, ::wire::replyFrameCapacity> reply_;
};

// The server pipe: each message is a payload.
class PipeConversation : public Conversation
{
 public:
    PipeConversation(const Dispatcher& dispatcher, Log& log, std::uint64_t id, DWORD clientProcess)
        : Conversation(dispatcher, id, Via::Pipe, clientProcess), log_(log)
    {}

    std::size_t longestRequest() const noexcept override { return ::wire::maxPayload; }
    std::span<const std::uint8_t> answer(std::span<const std::uint8_t> message, bool cut) noexcept override;

 private:
    Log& log_;
    std::array<std::uint8_t, ::wire::maxPayload> reply_;
};

}  // namespace srv
