// Serves a local message pipe, or the door to shared memory: any number of clients, each on a thread of its own.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/Owner.h"
#include "base/Security.h"
#include "base/Thread.h"
#include "listeners/Connection.h"
#include "listeners/Conversation.h"
#include "log/Log.h"

namespace srv {

struct PipeOptions
{
    std::wstring name;  // "\\.\pipe\..."

    // Instances that wait for clients at any time. A client that finds none of them free is told that the pipe is
    // busy, and not all clients try again.
    unsigned waiting = 4;  // 1 to 62

    // More clients than that are not let in until one goes: a bound for the server's memory.
    unsigned mostConnections = 2000;

    // How long a client may leave a reply unread when the pipe is full, before the connection is given up.
    DWORD writeTimeout = 30'000;

    // Who may do what at the pipe, beside the user whom the server runs as.
    const wchar_t* rights = sddl::channelClients;

    // The pipe is only the door: requests and replies go through memory that server and client share.
    bool memory = false;
};

// Makes what one connection says.
using ConversationMaker = std::function<std::unique_ptr<Conversation>(std::uint64_t id, DWORD clientProcess)>;

class PipeListener
{
 public:
    PipeListener(PipeOptions options, ConversationMaker maker, Log& log);
    ~PipeListener() { stop(5'000); }
    PipeListener(const PipeListener&) = delete;
    PipeListener& operator=(const PipeListener&) = delete;

    // Clients can connect when it has returned. Returns 0 or the system's error; at most once.
    DWORD start();

    // Begins to stop, without waiting for it.
    void tellToStop() noexcept;

    // Lets nobody in any more, ends all connections and waits for that; false if some have not ended in time. A
    // request under way is carried out to its end.
    bool stop(DWORD milliseconds) noexcept;

    // How many clients are connected.
    std::size_t connections() const noexcept;

 private:
    struct Shared;
    struct Instance;

    Handle makeInstance(DWORD flags);
    DWORD takeName(std::vector<std::unique_ptr<Instance>>& waiting);
    DWORD addInstance(std::vector<std::unique_ptr<Instance>>& waiting, Handle pipe);
    void accept(std::vector<std::unique_ptr<Instance>> waiting) noexcept;
    bool acceptOne(std::vector<std::unique_ptr<Instance>>& waiting);
    void replenish(std::vector<std::unique_ptr<Instance>>& waiting, std::size_t arriving);
    std::unique_ptr<Connection> makeConnection(Handle pipe, std::uint64_t id, DWORD process);
    void serve(Handle pipe);

    PipeOptions options_;
    ConversationMaker maker_;
    Log& log_;
    std::string shownName_;
    Security security_;
    std::shared_ptr<Shared> shared_;
    Handle placeholder_;
    Handle placeholderClient_;
    Thread acceptor_;
    std::uint64_t nextId_ = 1;
    bool complained_ = false;
};

}  // namespace srv
