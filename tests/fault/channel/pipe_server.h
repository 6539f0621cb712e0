// A server of one channel inside the test: what it does with a request is scripted; without a script it echoes.
//
// Every function may be called from the test's threads; steps run on the thread of their connection.
#pragma once

#include <windows.h>

#include <condition_variable>
#include <deque>
#include <functional>
#include <list>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "frames.h"
#include "memory_side.h"
#include "support/win_handle.h"

// What carries requests and replies. The same tests are built once for each.
enum class Carrier { Pipe, Memory };
#ifdef KXONLINX_TEST_OVER_MEMORY
constexpr Carrier testedCarrier = Carrier::Memory;
#else
constexpr Carrier testedCarrier = Carrier::Pipe;
#endif

class PipeServer
{
 public:
    using Bytes = frames::Bytes;

    class Connection
    {
     public:
        // One message; false when the client has gone.
        bool write(const Bytes& message);
        // Ends the connection; what was written stays readable for the client.
        void close();
        // Until `event` is set or the server stops.
        void await(HANDLE event) const;

     private:
        friend class PipeServer;
        Connection(platform::File pipe, Carrier by, HANDLE stopping);
        ~Connection() { close(); }
        bool read(Bytes& message);
        bool readPipe(Bytes& message);
        bool finish(OVERLAPPED& operation, DWORD& length);

        platform::File pipe_;
        platform::KernelObject done_;
        MemorySide memory_;
        HANDLE stopping_;
    };

    using Step = std::function<void(Connection&, const Bytes& request)>;

    // The pipe \\.\pipe\`name`, of messages, or the door to the memory of that channel, for any number of clients, or
    // for 1 at a time.
    explicit PipeServer(const std::wstring& name, DWORD instances = PIPE_UNLIMITED_INSTANCES,
                        Carrier by = testedCarrier);
    ~PipeServer() { stop(); }
    PipeServer(const PipeServer&) = delete;
    PipeServer& operator=(const PipeServer&) = delete;

    void start();  // the pipe exists when this returns
    void stop();   // every connection is closed and the pipe gone when this returns
    void restart();

    // What to do with the next request that has no step yet.
    void then(Step step);
    // The same for every request that the script does not reach.
    void otherwise(Step step);
    void thenReply(std::function<Bytes(const Bytes& request)> reply);

    std::vector<Bytes> received() const;
    void awaitReceived(std::size_t requests) const;
    std::size_t connections() const;  // accepted so far

 private:
    platform::File makeInstance() const;
    void accept(platform::File instance);
    bool awaitClient(HANDLE instance) const;
    void serve(platform::File pipe);
    Step nextStep(const Bytes& request);

    const Carrier carrier_;
    const std::wstring pipeName_;
    const DWORD instances_;
    platform::KernelObject stopping_;
    platform::KernelObject clientLeft_;
    std::thread acceptor_;
    std::list<std::thread> servers_;  // of the acceptor alone while it runs

    mutable std::mutex mutex_;
    mutable std::condition_variable arrived_;
    std::deque<Step> script_;
    Step otherwise_;
    std::vector<Bytes> received_;
    std::size_t connections_ = 0;
    platform::File freed_;  // the instance of a client that has left, where their number is limited
};
