// A client that shares memory with the server, written from the rules and not from the channel library.
#pragma once

#include <windows.h>

#include <cstring>
#include <string>

#include "base/Owner.h"
#include "Bytes.h"
#include "wire/memory.h"

class MemoryClient
{
 public:
    explicit MemoryClient(const std::wstring& channelPipe)
    {
        const std::wstring name = channelPipe + wire::memoryDoorSuffix;
        while (WaitNamedPipeW(name.c_str(), 5'000)) {
            door_.reset(
                CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
            if (door_ || GetLastError() != ERROR_PIPE_BUSY) break;
        }
        DWORD mode = PIPE_READMODE_MESSAGE;
        DWORD length = 0;
        if (!door_ || !SetNamedPipeHandleState(door_.get(), &mode, nullptr, nullptr) ||
            !ReadFile(door_.get(), &offer, sizeof offer, &length, nullptr) || length != sizeof offer)
            return;
        section_.reset(handle(offer.section));
        block_ = static_cast<wire::MemoryBlock*>(MapViewOfFile(section_.get(), FILE_MAP_WRITE, 0, 0, 0));
        if (!block_) return;
        requestEvent_.reset(handle(block_->requestEvent));
        replyEvent_.reset(handle(block_->replyEvent));
        serverProcess_.reset(handle(block_->serverProcess));
    }
    ~MemoryClient() { close(); }
    MemoryClient(const MemoryClient&) = delete;
    MemoryClient& operator=(const MemoryClient&) = delete;

    bool connected() const { return block_ != nullptr; }
    wire::MemoryBlock& block() { return *block_; }

    // The reply to a message that says to be `length` bytes long; empty when there is none for too long.
    bytes::Bytes ask(const bytes::Bytes& message, std::size_t length)
    {
        std::memcpy(block_->request, message.data(), std::min(message.size(), sizeof block_->request));
        block_->requestLength = static_cast<std::uint32_t>(length);
        const std::uint32_t number = ++block_->requestNumber;
        SetEvent(requestEvent_.get());
        block_->clientSleeps = 1;
        while (block_->replyNumber != number && !block_->closed)
            if (WaitForSingleObject(replyEvent_.get(), 10'000) != WAIT_OBJECT_0) return {};
        if (block_->replyNumber != number) return {};
        return {block_->reply, block_->reply + block_->replyLength};
    }
    bytes::Bytes ask(const bytes::Bytes& message) { return ask(message, message.size()); }

    // Until the server has ended the connection; false if that takes too long.
    bool awaitClosed()
    {
        while (!block_->closed)
            if (WaitForSingleObject(replyEvent_.get(), 10'000) != WAIT_OBJECT_0) return false;
        return true;
    }

    void close()
    {
        if (block_) UnmapViewOfFile(block_);
        block_ = nullptr;
        door_.reset();
    }

    wire::MemoryOffer offer{};

 private:
    static HANDLE handle(std::uint64_t value) { return reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(value)); }

    srv::Handle door_;
    srv::Handle section_;
    srv::Handle requestEvent_;
    srv::Handle replyEvent_;
    srv::Handle serverProcess_;
    wire::MemoryBlock* block_ = nullptr;
};
