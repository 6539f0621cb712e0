#include "peers/client.h"

#include <windows.h>
#include <winsock2.h>

#include <cstdio>

#include "peers/peers.h"
#if KXOVA_BENCH_RPC
#include "ask.h"
#endif

namespace peers {

namespace {

const Request request{};
Reply reply;

HANDLE openPipe(const wchar_t* name)
{
    // Between two clients the server may not have made the next instance yet.
    for (;;) {
        const HANDLE pipe = CreateFileW(name, GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        if (pipe != INVALID_HANDLE_VALUE || GetLastError() != ERROR_PIPE_BUSY) return pipe;
        WaitNamedPipeW(name, NMPWAIT_WAIT_FOREVER);
    }
}

std::function<bool()> overBytePipe()
{
    const HANDLE pipe = openPipe(bytePipeName);
    if (pipe == INVALID_HANDLE_VALUE) return {};
    return [pipe] {
        DWORD count = 0;
        if (!WriteFile(pipe, request.data(), sizeof request, &count, nullptr)) return false;
        for (DWORD have = 0; have < sizeof reply; have += count)
            if (!ReadFile(pipe, reply.data() + have, sizeof reply - have, &count, nullptr) || count == 0)
                return false;
        return true;
    };
}

std::function<bool()> overTcp()
{
    WSADATA data;
    WSAStartup(MAKEWORD(2, 2), &data);
    const SOCKET server = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) return {};
    const BOOL now = TRUE;
    setsockopt(server, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&now), sizeof now);
    return [server] {
        if (send(server, reinterpret_cast<const char*>(request.data()), sizeof request, 0) != sizeof request)
            return false;
        for (int have = 0; have < static_cast<int>(sizeof reply);) {
            const int count =
                recv(server, reinterpret_cast<char*>(reply.data()) + have, static_cast<int>(sizeof reply) - have, 0);
            if (count <= 0) return false;
            have += count;
        }
        return true;
    };
}

#if KXOVA_BENCH_RPC
std::function<bool()> overRpc()
{
    wchar_t protocol[] = L"ncalrpc";
    wchar_t endpoint[sizeof rpcEndpoint / sizeof *rpcEndpoint];
    wcscpy(endpoint, rpcEndpoint);
    RPC_WSTR text = nullptr;
    RPC_BINDING_HANDLE binding = nullptr;
    if (RpcStringBindingComposeW(nullptr, reinterpret_cast<RPC_WSTR>(protocol), nullptr,
                                 reinterpret_cast<RPC_WSTR>(endpoint), nullptr, &text) != RPC_S_OK ||
        RpcBindingFromStringBindingW(text, &binding) != RPC_S_OK)
        return {};
    RpcStringFreeW(&text);
    // An exception of the stub, which this compiler cannot catch, ends the program: the server has to be there.
    return [binding] {
        wchar_t* value = nullptr;
        wchar_t* unit = nullptr;
        const long result = AskValue(binding, device, parameter, language, &value, &unit);
        MIDL_user_free(value);
        MIDL_user_free(unit);
        return result == 0;
    };
}
#endif

std::function<bool()> overTwoEvents()
{
    const auto shared = std::make_shared<Shared>(twoEvents);
    return [shared] {
        shared->area->request = request;
        SetEvent(shared->asked);
        WaitForSingleObject(shared->answered, INFINITE);
        reply = shared->area->reply;
        return true;
    };
}

std::function<bool()> overSignalAndWait()
{
    const auto shared = std::make_shared<Shared>(signalAndWait);
    return [shared] {
        shared->area->request = request;
        SignalObjectAndWait(shared->asked, shared->answered, INFINITE, FALSE);
        reply = shared->area->reply;
        return true;
    };
}

std::function<bool()> overSpinThenWait()
{
    const auto shared = std::make_shared<Shared>(spinThenWait);
    return [shared] {
        Area& area = *shared->area;
        const std::uint32_t number = area.asked.load() + 1;
        area.request = request;
        publish(area.asked, number, area.serverSleeps, shared->asked);
        await(area.answered, number, area.clientSleeps, shared->answered);
        reply = area.reply;
        return true;
    };
}

}  // namespace

std::function<bool()> overMessagePipe()
{
    const HANDLE pipe = openPipe(messagePipeName);
    DWORD mode = PIPE_READMODE_MESSAGE;
    if (!SetNamedPipeHandleState(pipe, &mode, nullptr, nullptr)) return {};
    return [pipe] {
        DWORD count = 0;
        Request out = request;
        return TransactNamedPipe(pipe, out.data(), sizeof out, reply.data(), sizeof reply, &count, nullptr) &&
               count == sizeof reply;
    };
}

std::vector<Peer> connectPeers()
{
    std::vector<Peer> peers;
    const auto add = [&](const std::string& name, std::function<bool()> ask) {
        if (ask) {
            peers.push_back({name, std::move(ask)});
        } else {
            std::printf("bench: \"%s\" is left out: bench_peers does not answer there (%lu)\n", name.c_str(),
                        GetLastError());
        }
    };
    add(messagePipe, overMessagePipe());
    add(bytePipe, overBytePipe());
    add(tcp, overTcp());
#if KXOVA_BENCH_RPC
    add(localRpc, overRpc());
#else
    std::printf("bench: local RPC is left out: widl is missing (package mingw-w64-tools)\n");
#endif
    add(sharedTwoEvents, overTwoEvents());
    add(sharedSignalAndWait, overSignalAndWait());
    add(sharedSpinThenWait, overSpinThenWait());
    return peers;
}

}  // namespace peers
