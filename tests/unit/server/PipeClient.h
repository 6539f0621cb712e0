// A client of a message pipe that says what it is told to, well-formed or not.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

#include "base/Owner.h"
#include "Bytes.h"

class PipeClient
{
 public:
    enum class Reading { Messages, Bytes };

    explicit PipeClient(const std::wstring& name, Reading reading = Reading::Messages)
    {
        pipe_.reset(CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        for (int tries = 0; !pipe_ && GetLastError() == ERROR_PIPE_BUSY && tries < 50; ++tries) {
            WaitNamedPipeW(name.c_str(), 200);
            pipe_.reset(
                CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        }
        if (!pipe_) return;
        DWORD mode = PIPE_READMODE_MESSAGE;
        if (reading == Reading::Messages) SetNamedPipeHandleState(pipe_.get(), &mode, nullptr, nullptr);
    }

    bool connected() const { return static_cast<bool>(pipe_); }

    bool send(const bytes::Bytes& message)
    {
        DWORD written = 0;
        return WriteFile(pipe_.get(), message.data(), static_cast<DWORD>(message.size()), &written, nullptr) != FALSE;
    }

    // One message; empty when the connection has ended.
    bytes::Bytes receive()
    {
        bytes::Bytes message(16384);
        DWORD length = 0;
        if (!ReadFile(pipe_.get(), message.data(), static_cast<DWORD>(message.size()), &length, nullptr)) length = 0;
        message.resize(length);
        return message;
    }

    bytes::Bytes ask(const bytes::Bytes& message)
    {
        if (!send(message)) return {};
        return receive();
    }

    void close() { pipe_.reset(); }

 private:
    srv::Handle pipe_;
};
