#include "HostilePipe.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "wire/frame.h"

HostilePipe::HostilePipe(Responder responder)
{
    responder_ = std::move(responder);
}

HANDLE WINAPI HostilePipe::createFile(const char* name, DWORD, DWORD, SECURITY_ATTRIBUTES*, DWORD, DWORD, HANDLE)
{
    // Any handle will do that can be closed.
    if (std::strcmp(name, wire::serverPipeName) == 0) return CreateEventA(nullptr, FALSE, FALSE, nullptr);
    SetLastError(ERROR_FILE_NOT_FOUND);
    return INVALID_HANDLE_VALUE;
}

BOOL WINAPI HostilePipe::write(HANDLE, const void* bytes, DWORD count, DWORD* written, OVERLAPPED*)
{
    opcode_ = 0;
    std::memcpy(&opcode_, bytes, std::min<std::size_t>(count, sizeof opcode_));
    *written = count;
    return TRUE;
}

BOOL WINAPI HostilePipe::read(HANDLE, void* space, DWORD capacity, DWORD* received, OVERLAPPED*)
{
    const Bytes reply = responder_(opcode_);
    if (reply.empty()) {
        SetLastError(ERROR_BROKEN_PIPE);
        return FALSE;
    }
    *received = static_cast<DWORD>(std::min<std::size_t>(reply.size(), capacity));
    std::copy_n(reply.begin(), *received, static_cast<std::uint8_t*>(space));
    return TRUE;
}

HMODULE WINAPI HostilePipe::loadLibrary(const char*)
{
    SetLastError(ERROR_MOD_NOT_FOUND);
    return nullptr;
}
