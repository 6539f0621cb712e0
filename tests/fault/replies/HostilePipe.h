// The server pipe as the library sees it, without a pipe: whatever is written to it is answered by a hostile server.
// Files and libraries that the library would open by names from replies are not there.
#pragma once

#include <cstdint>
#include <functional>

#include "fakeChannel.h"
#include "importHook.h"
#include "support/fuzzing.h"

class HostilePipe
{
 public:
    // Gets a request's operation code, and hands back the reply; empty: the pipe breaks.
    using Responder = std::function<Bytes(std::uint16_t opcode)>;

    explicit HostilePipe(Responder responder);

 private:
    static HANDLE WINAPI createFile(const char* name, DWORD, DWORD, SECURITY_ATTRIBUTES*, DWORD, DWORD, HANDLE);
    static BOOL WINAPI setState(HANDLE, DWORD*, DWORD*, DWORD*) { return TRUE; }
    static BOOL WINAPI disconnect(HANDLE) { return TRUE; }
    static BOOL WINAPI write(HANDLE, const void* bytes, DWORD count, DWORD* written, OVERLAPPED*);
    static BOOL WINAPI read(HANDLE, void* space, DWORD capacity, DWORD* received, OVERLAPPED*);
    static HMODULE WINAPI loadLibrary(const char*);
    static int WINAPI messageBox(const MSGBOXPARAMSA*) { return IDOK; }

    static inline Responder responder_;
    static inline std::uint16_t opcode_ = 0;

    ImportHook createFileHook_{"CreateFileA", createFile};
    ImportHook setStateHook_{"SetNamedPipeHandleState", setState};
    ImportHook disconnectHook_{"DisconnectNamedPipe", disconnect};
    ImportHook writeHook_{"WriteFile", write};
    ImportHook readHook_{"ReadFile", read};
    ImportHook loadLibraryHook_{"LoadLibraryA", loadLibrary};
    ImportHook messageBoxHook_{"MessageBoxIndirectA", messageBox};
};
