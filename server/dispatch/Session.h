// What the server keeps for one client connection.
#pragma once

#include <windows.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "base/Lock.h"
#include "base/Results.h"
#include "catalogue/LessNoCase.h"
#include "notifications/PushSource.h"
#include "store/Model.h"

namespace srv {

class Subscriber;

// The way a connection came: each way has its own operations.
enum class Via : std::uint8_t { Channel = 1, Pipe = 2 };

// Used by one thread at a time: a client has one request under way.
class Session
{
 public:
    Session(std::uint64_t id, Via via, DWORD clientProcess) : id_(id), via_(via), clientProcess_(clientProcess) {}
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    std::uint64_t id() const noexcept { return id_; }
    Via via() const noexcept { return via_; }
    DWORD clientProcess() const noexcept { return clientProcess_; }

    // Temporary devices: working copies that only this client sees, and that vanish with it. They are kept in memory
    // only, so that nothing of them outlives the server either.
    Content* temporary(std::wstring_view name) noexcept;
    Result createTemporary(Content content, std::wstring& name);
    Result removeTemporary(std::wstring_view name) noexcept;

    // What this client is told of; nullptr while it has asked for nothing.
    std::shared_ptr<Subscriber> subscriber;

    // What this connection is to send without being asked; nullptr on all but those that were made for it.
    std::unique_ptr<PushSource> pushes;

 private:
    std::uint64_t id_;
    Via via_;
    DWORD clientProcess_;
    catalogue::Map<Content> temporaries_;
    std::uint32_t nextTemporary_ = 1;
};

}  // namespace srv
