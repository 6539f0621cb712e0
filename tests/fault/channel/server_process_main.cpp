// channel_test_server CHANNEL PARENT pipe|memory: serves until it is killed or the process PARENT has ended.
#include <cstdlib>
#include <string>

#include "pipe_server.h"
#include "server_process.h"

namespace {

void step(PipeServer::Connection& connection, const frames::Bytes& request)
{
    switch (frames::opcodeOf(request)) {
        case serverProcess::noAnswer:
            return;
        case serverProcess::closeConnection:
            connection.close();
            return;
        case serverProcess::garbage:
            connection.write(frames::Bytes(7, 'g'));
            return;
        default:
            connection.write(frames::echo(request));
    }
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 4) return 2;
    const std::string name = argv[1];
    const std::wstring channel(name.begin(), name.end());
    const platform::KernelObject parent(OpenProcess(SYNCHRONIZE, FALSE, std::strtoul(argv[2], nullptr, 10)));
    if (!parent) return 1;

    const Carrier by = std::string(argv[3]) == "memory" ? Carrier::Memory : Carrier::Pipe;
    PipeServer server(channel, PIPE_UNLIMITED_INSTANCES, by);
    server.otherwise(step);
    const platform::KernelObject ready(
        OpenEventW(EVENT_MODIFY_STATE, FALSE, serverProcess::readyEventName(channel).c_str()));
    SetEvent(ready.get());
    WaitForSingleObject(parent.get(), INFINITE);
    return 0;
}
