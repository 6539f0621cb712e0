#include "listeners/MemoryConnection.h"

#include <algorithm>
#include <random>

namespace srv {

namespace {

// What nobody can know who has not read the memory.
std::uint64_t newNonce()
{
    std::random_device source;
    return static_cast<std::uint64_t>(source()) << 32 | source();
}

}  // namespace

MemoryConnection::MemoryConnection(Handle door, std::unique_ptr<Conversation> conversation,
                                   std::shared_ptr<const StopSignal> stop, std::shared_ptr<Lookout> lookout,
                                   DWORD clientProcess)
    : door_(std::move(door)),
      conversation_(std::move(conversation)),
      stop_(std::move(stop)),
      lookout_(std::move(lookout)),
      clientProcess_(clientProcess),
      requested_(CreateEventW(nullptr, FALSE, FALSE, nullptr)),
      replied_(CreateEventW(nullptr, FALSE, FALSE, nullptr)),
      doorEvent_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      nonce_(newNonce()),
      message_(sizeof(::wire::MemoryBlock::request))
{
    given_.reserve(4);
}

MemoryConnection::~MemoryConnection()
{
    if (!block_) return;
    block_.get()->closed = 1;
    SetEvent(replied_.get());
}

// A handle of this process's, as the client's process has it from now on; 0 if that cannot be.
std::uint64_t MemoryConnection::give(HANDLE object, DWORD access) noexcept
{
    HANDLE copy = nullptr;
    if (!DuplicateHandle(GetCurrentProcess(), object, client_.get(), &copy, access, FALSE, 0)) return 0;
    given_.push_back(reinterpret_cast<std::uintptr_t>(copy));
    return given_.back();
}

// Of a client that was never told of them.
void MemoryConnection::takeBack() noexcept
{
    for (const std::uint64_t value : given_)
        DuplicateHandle(client_.get(), reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(value)), nullptr, nullptr,
                        0, FALSE, DUPLICATE_CLOSE_SOURCE);
    given_.clear();
}

// The memory's section as the client has it; 0 for a client whose process this server may not open, say.
std::uint64_t MemoryConnection::share() noexcept
{
    client_.reset(OpenProcess(PROCESS_DUP_HANDLE, FALSE, clientProcess_));
    const Handle section(
        CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(::wire::MemoryBlock), nullptr));
    if (!client_ || !section || !requested_ || !replied_) return 0;
    // Only a client that is still there has the process number that it came with.
    if (!PeekNamedPipe(door_.get(), nullptr, 0, nullptr, nullptr, nullptr)) return 0;
    block_.reset(static_cast<::wire::MemoryBlock*>(
        MapViewOfFile(section.get(), FILE_MAP_READ | FILE_MAP_WRITE, 0, 0, sizeof(::wire::MemoryBlock))));
    if (!block_) return 0;
    ::wire::MemoryBlock& block = *block_.get();
    block.nonce = nonce_;
    block.requestEvent = give(requested_.get(), EVENT_MODIFY_STATE);
    block.replyEvent = give(replied_.get(), SYNCHRONIZE);
    block.serverProcess = give(GetCurrentProcess(), SYNCHRONIZE);
    if (!block.requestEvent || !block.replyEvent || !block.serverProcess) return 0;
    return give(section.get(), FILE_MAP_READ | FILE_MAP_WRITE);
}

bool MemoryConnection::offer(std::uint64_t section) noexcept
{
    const ::wire::MemoryOffer message{::wire::MemoryOffer::expectedMagic, ::wire::MemoryOffer::expectedLayout, nonce_,
                                      section};
    OVERLAPPED operation{};
    operation.hEvent = doorEvent_.get();
    DWORD written = 0;
    // The pipe has room for it: nothing is waited for.
    if (!WriteFile(door_.get(), &message, sizeof message, nullptr, &operation) && GetLastError() != ERROR_IO_PENDING)
        return false;
    return GetOverlappedResult(door_.get(), &operation, &written, TRUE);
}

const char* MemoryConnection::serve() noexcept
{
    if (!doorEvent_) return "no event";
    const std::uint64_t section = share();
    if (section == 0) takeBack();
    if (!offer(section)) {
        takeBack();
        return "the client left";
    }
    client_.reset();
    if (section == 0) return "no memory can be shared";
    // Nothing is said at the door any more: what ends this is the client's going.
    OVERLAPPED operation{};
    operation.hEvent = doorEvent_.get();
    std::uint8_t word = 0;
    if (!ReadFile(door_.get(), &word, sizeof word, nullptr, &operation) && GetLastError() != ERROR_IO_PENDING)
        return "the client left";
    sleeps(true);
    const char* const reason = answerRequests();
    // What was begun is carried out, whatever ended this.
    if (lookout_->leave(*this)) answer();
    DWORD ignored = 0;
    CancelIoEx(door_.get(), &operation);
    GetOverlappedResult(door_.get(), &operation, &ignored, TRUE);
    return reason;
}

const char* MemoryConnection::answerRequests() noexcept
{
    const HANDLE ends[] = {stop_->event.get(), doorEvent_.get(), requested_.get()};
    for (;;) {
        if (stop_->given) return "the server stops";
        if (lookout_->look(*this, stop_->given)) {
            answer();
            lookout_->finish(*this);
            // Over memory the server cannot speak unasked.
            if (conversation_->pushes()) return "the client listens at the wrong door";
            continue;
        }
        switch (WaitForMultipleObjects(3, ends, FALSE, INFINITE)) {
            case WAIT_OBJECT_0:
            case WAIT_OBJECT_0 + 2:
                break;
            case WAIT_OBJECT_0 + 1:
                return "the client left";
            default:
                return "a failed wait";
        }
    }
}

bool MemoryConnection::asked() const noexcept
{
    return block_.get()->requestNumber != taken_;
}

bool MemoryConnection::attend() noexcept
{
    ::wire::MemoryBlock& block = *block_.get();
    taken_ = block.requestNumber;
    block.takenNumber = taken_;
    const std::size_t length = block.requestLength;
    length_ = std::min(length, message_.size());
    cut_ = length > length_;
    std::copy_n(block.request, length_, message_.data());
    if (cut_) return false;
    const auto message = conversation_->answerAtOnce({message_.data(), length_});
    if (message.empty()) return false;
    reply(message);
    return true;
}

// What was taken.
void MemoryConnection::answer() noexcept
{
    reply(conversation_->answer({message_.data(), length_}, cut_));
}

void MemoryConnection::reply(std::span<const std::uint8_t> message) noexcept
{
    ::wire::MemoryBlock& block = *block_.get();
    std::copy(message.begin(), message.end(), block.reply);
    block.replyLength = static_cast<std::uint32_t>(message.size());
    block.replyNumber = taken_;
    if (block.clientSleeps) SetEvent(replied_.get());
}

void MemoryConnection::sleeps(bool sleeping) noexcept
{
    block_.get()->serverSleeps = sleeping;
}

void MemoryConnection::wake() noexcept
{
    SetEvent(requested_.get());
}

}  // namespace srv
