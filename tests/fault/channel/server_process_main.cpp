// channel_test_server CHANNEL PARENT: serves until it is killed or the process PARENT has ended.
#include <cstdlib>

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
    if (argc != 3) return 2;
    const std::string name = argv[1];
    const std::wstring channel(name.begin(), name.end());
    const platform::KernelObject parent(OpenProcess(SYNCHRONIZE, FALSE, std::strtoul(argv[2], nullptr, 10)));
    if (!parent) return 1;

    PipeServer server(channel);
    server.otherwise(step);
    const platform::KernelObject ready(
        OpenEventW(EVENT_MODIFY_STATE, FALSE, serverProcess::readyEventName(channel).c_str()));
    SetEvent(ready.get());
    WaitForSingleObject(parent.get(), INFINITE);
    return 0;
}
