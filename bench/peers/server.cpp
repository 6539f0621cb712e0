// The other end of the bare transports: answers what the client of bench_roundtrip asks, each on its own thread, and
// does nothing else. Prints "ready" and runs until it is killed.
#include <windows.h>
#include <winsock2.h>

#include <cstdio>
#include <thread>

#include "peers/peers.h"
#if KXOVA_BENCH_RPC
#include "ask.h"
#endif

namespace {

using namespace peers;

void serveMessageClient(HANDLE pipe)
{
    Request request;
    const Reply reply{};
    DWORD count = 0;
    while (ReadFile(pipe, request.data(), sizeof request, &count, nullptr) &&
           WriteFile(pipe, reply.data(), sizeof reply, &count, nullptr)) {
    }
    CloseHandle(pipe);
}

// As many clients as come, each on a thread of its own.
void serveMessages()
{
    for (;;) {
        const HANDLE pipe =
            CreateNamedPipeW(messagePipeName, PIPE_ACCESS_DUPLEX, PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE,
                             PIPE_UNLIMITED_INSTANCES, sizeof(Reply), sizeof(Request), 0, nullptr);
        ConnectNamedPipe(pipe, nullptr);
        std::thread(serveMessageClient, pipe).detach();
    }
}

// All of it, in as many pieces as it comes in.
bool readWhole(HANDLE pipe, Request& request)
{
    DWORD have = 0;
    for (DWORD count = 0; have < sizeof request; have += count)
        if (!ReadFile(pipe, request.data() + have, sizeof request - have, &count, nullptr) || count == 0)
            return false;
    return true;
}

void serveBytes()
{
    const HANDLE pipe = CreateNamedPipeW(bytePipeName, PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE, 1, sizeof(Reply),
                                         sizeof(Request), 0, nullptr);
    Request request;
    const Reply reply{};
    for (;;) {
        ConnectNamedPipe(pipe, nullptr);
        DWORD count = 0;
        while (readWhole(pipe, request) && WriteFile(pipe, reply.data(), sizeof reply, &count, nullptr)) {
        }
        DisconnectNamedPipe(pipe);
    }
}

void serveConnection(SOCKET client)
{
    const BOOL now = TRUE;
    setsockopt(client, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&now), sizeof now);
    Request request;
    const Reply reply{};
    for (;;) {
        int have = 0;
        while (have < static_cast<int>(sizeof request)) {
            const int count = recv(client, reinterpret_cast<char*>(request.data()) + have,
                                   static_cast<int>(sizeof request) - have, 0);
            if (count <= 0) {
                closesocket(client);
                return;
            }
            have += count;
        }
        send(client, reinterpret_cast<const char*>(reply.data()), sizeof reply, 0);
    }
}

void serveTcp()
{
    WSADATA data;
    WSAStartup(MAKEWORD(2, 2), &data);
    const SOCKET listener = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 || listen(listener, 1) != 0)
        std::fprintf(stderr, "bench: the port %u is taken\n", port);
    for (;;)
        serveConnection(accept(listener, nullptr, nullptr));
}

void answer(Area& area)
{
    Request request = area.request;
    area.reply[0] = request[0];
}

void serveTwoEvents()
{
    const Shared shared(twoEvents);
    for (;;) {
        WaitForSingleObject(shared.asked, INFINITE);
        answer(*shared.area);
        SetEvent(shared.answered);
    }
}

void serveSignalAndWait()
{
    const Shared shared(signalAndWait);
    WaitForSingleObject(shared.asked, INFINITE);
    for (;;) {
        answer(*shared.area);
        SignalObjectAndWait(shared.answered, shared.asked, INFINITE, FALSE);
    }
}

void serveSpinThenWait()
{
    const Shared shared(spinThenWait);
    Area& area = *shared.area;
    for (std::uint32_t number = area.asked.load() + 1;; ++number) {
        await(area.asked, number, area.serverSleeps, shared.asked);
        answer(area);
        publish(area.answered, number, area.clientSleeps, shared.answered);
    }
}

#if KXOVA_BENCH_RPC
void serveRpc()
{
    wchar_t protocol[] = L"ncalrpc";
    wchar_t endpoint[sizeof rpcEndpoint / sizeof *rpcEndpoint];
    wcscpy(endpoint, rpcEndpoint);
    RpcServerUseProtseqEpW(reinterpret_cast<RPC_WSTR>(protocol), RPC_C_PROTSEQ_MAX_REQS_DEFAULT,
                           reinterpret_cast<RPC_WSTR>(endpoint), nullptr);
    RpcServerRegisterIf(ask_v1_0_s_ifspec, nullptr, nullptr);
    RpcServerListen(1, RPC_C_LISTEN_MAX_CALLS_DEFAULT, TRUE);
}
#endif

}  // namespace

#if KXOVA_BENCH_RPC
extern "C" {

long AskValue(handle_t, const wchar_t*, const wchar_t*, const wchar_t*, wchar_t** value, wchar_t** unit)
{
    const auto copy = [](std::size_t length) {
        auto* const text = static_cast<wchar_t*>(MIDL_user_allocate((length + 1) * sizeof(wchar_t)));
        wmemset(text, L'v', length);
        text[length] = 0;
        return text;
    };
    *value = copy(valueLength);
    *unit = copy(unitLength);
    return 0;
}

}  // extern "C"
#endif

int main()
{
    std::thread(serveMessages).detach();
    std::thread(serveBytes).detach();
    std::thread(serveTcp).detach();
    std::thread(serveTwoEvents).detach();
    std::thread(serveSignalAndWait).detach();
    std::thread(serveSpinThenWait).detach();
#if KXOVA_BENCH_RPC
    serveRpc();
#endif
    std::puts("ready");
    std::fflush(stdout);
    Sleep(INFINITE);
    return 0;
}
