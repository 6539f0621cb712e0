// The three events by which clients have everything brought to the disk: they set the first and wait for one of the
// others.
#pragma once

#include <atomic>
#include <string>

#include "base/Owner.h"
#include "base/Thread.h"
#include "log/Log.h"
#include "notifications/Changes.h"
#include "store/Store.h"

namespace srv {

// Nobody knows how many clients wait, for any number of them setting one event is one request. Therefore the answers
// stay set, so that every client finds its answer however late it begins to wait: "done" until something has changed
// that is not on the disk, "failed" until it works again. A client that begins to wait behind such a change, its
// request answered already, is served a second later.
class FlushEvents : private ChangeObserver
{
 public:
    // `prefix` goes in front of the events' names: "Global\" for those that clients look for.
    FlushEvents(std::wstring prefix, Store& store, Changes& changes, Log& log);
    ~FlushEvents() { stop(); }
    FlushEvents(const FlushEvents&) = delete;
    FlushEvents& operator=(const FlushEvents&) = delete;

    // False if the events cannot be made; clients are then told that there is no server.
    bool start();

    // Whoever still waits is told that it failed.
    void stop() noexcept;

 private:
    void changed(const Change& change) noexcept override;
    bool make(Handle& event, const wchar_t* name, BOOL manualReset, bool& existed);
    void serve() noexcept;
    void flush() noexcept;

    std::wstring prefix_;
    Store& store_;
    Changes& changes_;
    Log& log_;
    Handle request_;
    Handle done_;
    Handle failed_;
    Handle stop_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    Thread thread_;
    std::atomic<bool> upToDate_ = false;
    bool failing_ = false;
    ULONGLONG lastRequest_ = 0;  // 0: none that somebody may still wait for
};

}  // namespace srv
