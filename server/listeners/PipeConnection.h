// One client on a pipe.
#pragma once

#include <memory>
#include <vector>

#include "base/Owner.h"
#include "listeners/Connection.h"
#include "listeners/Conversation.h"
#include "log/Log.h"

namespace srv {

class PipeConnection : public Connection
{
 public:
    PipeConnection(Handle pipe, std::unique_ptr<Conversation> conversation, std::shared_ptr<const StopSignal> stop,
                   DWORD writeTimeout);

    // Ends also when the client does not take its replies. What is to be sent without being asked is sent meanwhile.
    const char* serve() noexcept override;

 private:
    enum class Done { Yes, More, Ended, Stopped, TimedOut };

    Done result(OVERLAPPED& operation, Done givenUp, DWORD& transferred) noexcept;
    Done read(std::uint8_t* space, std::size_t capacity, DWORD& received) noexcept;
    Done receive(DWORD& length, bool& cut) noexcept;
    Done send(std::span<const std::uint8_t> message) noexcept;
    Done push(PushSource& source) noexcept;

    Handle pipe_;
    std::unique_ptr<Conversation> conversation_;
    std::shared_ptr<const StopSignal> stop_;
    DWORD writeTimeout_;
    Handle received_;
    Handle sent_;
    std::vector<std::uint8_t> message_;
};

}  // namespace srv
