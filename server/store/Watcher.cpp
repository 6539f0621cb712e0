#include "store/Watcher.h"

#include <algorithm>
#include <exception>

#include "base/Text.h"

namespace srv {

namespace {

constexpr DWORD pause = 1'000;
constexpr DWORD longestWait = 30'000;
constexpr DWORD lookForDeletion = 5'000;

// After a comparison the watcher rests so many times as long as that took: a large store that is written all the time
// must not be compared all the time.
constexpr DWORD restPerWork = 20;

bool isSetWithin(const Handle& event, DWORD milliseconds) noexcept
{
    return WaitForSingleObject(event.get(), milliseconds) == WAIT_OBJECT_0;
}

}  // namespace

Watcher::Watcher(HKEY hive, std::wstring root, Store& store, Log& log, std::function<void()> look)
    : hive_(hive), root_(std::move(root)), store_(store), log_(log), look_(std::move(look))
{}

bool Watcher::start()
{
    changesSeen_ = store_.changesBegun();
    return arm() && thread_.start([this] { watch(); });
}

void Watcher::stop() noexcept
{
    SetEvent(stop_.get());
    thread_.join();
}

// Each report is good for one change. The thread that asks must live as long as it wants to be told.
bool Watcher::arm()
{
    constexpr DWORD what = REG_NOTIFY_CHANGE_NAME | REG_NOTIFY_CHANGE_LAST_SET;
    for (int attempt = 0; attempt < 2; ++attempt) {
        if (!key_ && RegCreateKeyExW(hive_, root_.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                     KEY_NOTIFY | KEY_WOW64_32KEY, nullptr, key_.put(), nullptr) != ERROR_SUCCESS) {
            return false;
        }
        armed_ = RegNotifyChangeKeyValue(key_.get(), TRUE, what, changed_.get(), TRUE) == ERROR_SUCCESS;
        if (armed_) return true;
        key_.reset();  // somebody deleted the key itself
    }
    return false;
}

void Watcher::watch() noexcept
{
    const HANDLE ends[] = {stop_.get(), changed_.get()};
    for (;;) {
        // That a key does not refuse any more is reported by nothing, so what failed is tried again.
        const bool again = told_ != result::ok;
        const DWORD ended = WaitForMultipleObjects(2, ends, FALSE, again ? retryAfter_ : lookForDeletion);
        if (ended != WAIT_OBJECT_0 + 1 && ended != WAIT_TIMEOUT) return;
        if (ended == WAIT_OBJECT_0 + 1 || isDeleted()) armed_ = false;
        if (armed_ && !again) continue;
        try {
            if (!compare()) return;
        } catch (const std::exception& error) {
            log_.error("changes that others made in the registry are not taken over: %s", error.what());
        }
    }
}

// Nothing is reported of a key that is deleted itself, after everything below it.
bool Watcher::isDeleted() const noexcept
{
    return RegQueryInfoKeyW(key_.get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                            nullptr, nullptr, nullptr) == ERROR_KEY_DELETED;
}

// False when the watcher is to stop.
bool Watcher::compare()
{
    // Asked for before the comparison, so that what changes during it is reported again.
    while (!armed_ && !arm()) {
        log_.error("the registry does not report changes");
        if (isSetWithin(stop_, retryAfter_)) return false;
    }
    if (!waitForPause()) return false;
    const DWORD start = GetTickCount();
    tell(store_.reload());
    if (look_) look_();
    const DWORD spent = GetTickCount() - start;
    return !isSetWithin(stop_, std::min(spent, longestWait) * restPerWork);
}

void Watcher::tell(Result result) noexcept
{
    if (result != result::ok && result != told_)
        log_.error("the registry cannot be compared: %s", systemMessage(result).c_str());
    told_ = result;
}

bool Watcher::waitForPause()
{
    const DWORD start = GetTickCount();
    for (std::uint64_t now = store_.changesBegun(); now != changesSeen_; now = store_.changesBegun()) {
        changesSeen_ = now;
        if (GetTickCount() - start > longestWait) return true;
        if (isSetWithin(stop_, pause)) return false;
    }
    return true;
}

}  // namespace srv
