#include "notifications/FlushEvents.h"

#include "base/Security.h"
#include "base/Text.h"

namespace srv {

namespace {

constexpr DWORD pause = 1'000;

// How long after a request somebody may still begin to wait for its answer.
constexpr ULONGLONG mayStillWait = 30'000;

}  // namespace

FlushEvents::FlushEvents(std::wstring prefix, Store& store, Changes& changes, Log& log)
    : prefix_(std::move(prefix)), store_(store), changes_(changes), log_(log)
{}

bool FlushEvents::make(Handle& event, const wchar_t* name, BOOL manualReset, bool& existed)
{
    Security everybody(sddl::openToAll);
    event.reset(CreateEventW(everybody.attributes(), manualReset, FALSE, (prefix_ + name).c_str()));
    existed = event && GetLastError() == ERROR_ALREADY_EXISTS;
    return static_cast<bool>(event);
}

bool FlushEvents::start()
{
    bool ignored = false;
    bool clientsWait = false;
    // The answers first: who finds the request finds them too.
    if (!make(done_, L"DCFG_FLUSH_RESP_OK", TRUE, clientsWait) ||
        !make(failed_, L"DCFG_FLUSH_RESP_ERR", TRUE, ignored) ||
        !make(request_, L"DCFG_FLUSH_LOGDEV", FALSE, ignored)) {
        log_.warning("flushing is not available: %s", systemMessage(GetLastError()).c_str());
        return false;
    }
    ResetEvent(done_.get());
    ResetEvent(failed_.get());
    // Events that were there are those of clients that an earlier server has not answered.
    if (clientsWait) SetEvent(request_.get());
    changes_.add(*this);
    return thread_.start([this] { serve(); });
}

void FlushEvents::stop() noexcept
{
    if (!thread_.running()) return;
    SetEvent(stop_.get());
    thread_.join();
    changes_.remove(*this);
    if (!upToDate_) SetEvent(failed_.get());
    request_.reset();
    done_.reset();
    failed_.reset();
}

void FlushEvents::changed(const Change&) noexcept
{
    if (upToDate_.exchange(false)) ResetEvent(done_.get());
}

void FlushEvents::serve() noexcept
{
    const HANDLE ends[] = {stop_.get(), request_.get()};
    for (;;) {
        if (GetTickCount64() - lastRequest_ > mayStillWait) lastRequest_ = 0;
        const bool mayWait = lastRequest_ != 0 || failing_;
        switch (WaitForMultipleObjects(2, ends, FALSE, mayWait ? pause : INFINITE)) {
            case WAIT_OBJECT_0 + 1:
                lastRequest_ = GetTickCount64();
                flush();
                break;
            case WAIT_TIMEOUT:
                if (!upToDate_) flush();
                break;
            default:
                return;
        }
    }
}

void FlushEvents::flush() noexcept
{
    // A change from now on is not certain to be among what is flushed.
    upToDate_ = true;
    const Result result = store_.flush();
    if (result != result::ok) {
        upToDate_ = false;
        if (!failing_) log_.error("the configuration cannot be flushed: %s", systemMessage(result).c_str());
        failing_ = true;
        ResetEvent(done_.get());
        SetEvent(failed_.get());
        return;
    }
    failing_ = false;
    ResetEvent(failed_.get());
    SetEvent(done_.get());
    if (!upToDate_) ResetEvent(done_.get());  // who waits has been told
}

}  // namespace srv
