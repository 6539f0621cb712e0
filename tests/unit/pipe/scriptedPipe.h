// The configuration server's registry pipe, served by the test process from a script. It serves several clients at
// once and remembers what they sent. One per machine.
#pragma once

#include <windows.h>

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "atOnce.h"

class ScriptedPipe
{
 public:
    using Bytes = std::vector<std::uint8_t>;

    // From the constructor's return until the destructor, clients find the pipe; its end breaks their connections.
    ScriptedPipe();
    ~ScriptedPipe();
    ScriptedPipe(const ScriptedPipe&) = delete;
    ScriptedPipe& operator=(const ScriptedPipe&) = delete;

    // Each scripted step serves one request, in order; a request without one gets the default answer, at first an
    // ordinary reply with result 0.
    void answer(const Bytes& reply);
    void hangUp();  // the connection is closed without a reply
    void answerAll(std::function<Bytes(const Bytes& request)> responder);

    // Waits until the next client finds a free instance: one that comes right behind another may be too early.
    void awaitFreeInstance();

    std::vector<Bytes> requests() const;
    int connections() const { return connections_; }
    int mostAtOnce() const { return underWay_.most(); }  // requests that were under way at the same time

 private:
    static constexpr int instances = 4;

    void serve(HANDLE pipe);
    void changeFree(int by);
    bool serveRequest(HANDLE pipe, HANDLE event);
    std::optional<Bytes> nextReply(const Bytes& request);
    bool finished(HANDLE pipe, BOOL started, OVERLAPPED& operation, DWORD& count);

    HANDLE stop_;
    std::vector<HANDLE> pipes_;
    std::vector<std::thread> threads_;
    mutable std::mutex mutex_;
    std::deque<std::optional<Bytes>> script_;
    std::function<Bytes(const Bytes&)> responder_;
    std::vector<Bytes> requests_;
    std::condition_variable freeChanged_;
    int free_ = 0;
    std::atomic<int> connections_ = 0;
    AtOnce underWay_;
};
