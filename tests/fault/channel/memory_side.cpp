#include "memory_side.h"

#include <algorithm>

namespace {

platform::KernelObject makeEvent(bool manualReset)
{
    return platform::KernelObject(CreateEventW(nullptr, manualReset, FALSE, nullptr));
}

std::uint64_t givenTo(HANDLE client, HANDLE object)
{
    HANDLE copy = nullptr;
    DuplicateHandle(GetCurrentProcess(), object, client, &copy, 0, FALSE, DUPLICATE_SAME_ACCESS);
    return reinterpret_cast<std::uintptr_t>(copy);
}

}  // namespace

bool say(HANDLE pipe, const void* message, std::size_t length)
{
    const platform::KernelObject done = makeEvent(true);
    OVERLAPPED operation{};
    operation.hEvent = done.get();
    DWORD written = 0;
    if (!WriteFile(pipe, message, static_cast<DWORD>(length), nullptr, &operation) &&
        GetLastError() != ERROR_IO_PENDING)
        return false;
    return GetOverlappedResult(pipe, &operation, &written, TRUE);
}

wire::MemoryOffer MemorySide::make(HANDLE client)
{
    constexpr std::uint64_t nonce = 0x0123'4567'89AB'CDEF;
    const platform::KernelObject section(
        CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(wire::MemoryBlock), nullptr));
    block_.reset(static_cast<wire::MemoryBlock*>(MapViewOfFile(section.get(), FILE_MAP_WRITE, 0, 0, 0)));
    requested_ = makeEvent(false);
    replied_ = makeEvent(false);
    doorEvent_ = makeEvent(true);
    block().nonce = nonce;
    block().requestEvent = givenTo(client, requested_.get());
    block().replyEvent = givenTo(client, replied_.get());
    block().serverProcess = givenTo(client, GetCurrentProcess());
    block().serverSleeps = 1;
    return {wire::MemoryOffer::expectedMagic, wire::MemoryOffer::expectedLayout, nonce,
            givenTo(client, section.get())};
}

bool MemorySide::offer(HANDLE door)
{
    ULONG process = 0;
    GetNamedPipeClientProcessId(door, &process);
    const platform::KernelObject client(OpenProcess(PROCESS_DUP_HANDLE, FALSE, process));
    if (!client) return false;
    const wire::MemoryOffer message = make(client.get());
    return say(door, &message, sizeof message);
}

bool MemorySide::read(frames::Bytes& request, HANDLE door, HANDLE stopping)
{
    OVERLAPPED operation{};
    operation.hEvent = doorEvent_.get();
    std::uint8_t word = 0;
    DWORD length = 0;
    if (!ReadFile(door, &word, sizeof word, nullptr, &operation) && GetLastError() != ERROR_IO_PENDING) return false;
    const HANDLE ends[] = {requested_.get(), stopping, doorEvent_.get()};
    while (block().requestNumber == answered_ && WaitForMultipleObjects(3, ends, FALSE, INFINITE) == WAIT_OBJECT_0) {
    }
    CancelIoEx(door, &operation);
    GetOverlappedResult(door, &operation, &length, TRUE);
    if (block().requestNumber == answered_) return false;
    answered_ = block().requestNumber;
    block().takenNumber = answered_;
    request.assign(block().request, block().request + block().requestLength);
    return true;
}

bool MemorySide::write(const frames::Bytes& reply)
{
    std::copy_n(reply.begin(), std::min(reply.size(), sizeof block().reply), block().reply);
    block().replyLength = static_cast<std::uint32_t>(reply.size());
    ++block().replyNumber;
    return SetEvent(replied_.get());
}

void MemorySide::close()
{
    if (!block_) return;
    block().closed = 1;
    SetEvent(replied_.get());
    block_.reset();
}
