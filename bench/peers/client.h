// The near end of the bare transports: each carries one request of the agreed size to bench_peers and its reply back.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace peers {

struct Peer
{
    std::string name;
    std::function<bool()> ask;  // false: no reply
};

inline const std::string messagePipe = "message pipe (TransactNamedPipe)";
inline const std::string bytePipe = "byte pipe (WriteFile, ReadFile)";
inline const std::string tcp = "TCP on 127.0.0.1";
inline const std::string localRpc = "local RPC, three texts in, two out";
inline const std::string sharedTwoEvents = "shared memory, two events";
inline const std::string sharedSignalAndWait = "shared memory, signal and wait";
inline const std::string sharedSpinThenWait = "shared memory, yielding spin, then wait";

// Connects over one; nothing if bench_peers does not answer there.
std::function<bool()> overMessagePipe();

// Connects to all of them; bench_peers has to run. A peer that cannot be had is left out and said so.
std::vector<Peer> connectPeers();

}  // namespace peers
