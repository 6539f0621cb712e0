// Notices when others change the configuration in the registry, and has the store take it over.
#pragma once

#include <functional>
#include <string>

#include "base/Owner.h"
#include "base/Thread.h"
#include "log/Log.h"
#include "store/Store.h"

namespace srv {

// The system says that something below the root was written, but neither what nor by whom, and so reports the
// server's own changes too. A report with no change of the server's own before it is acted on at once; otherwise the
// comparison waits for the server's changes to pause, for half a minute at most.
class Watcher
{
 public:
    // `look` is called after each comparison, on the watcher's thread: for what else may have been changed there.
    Watcher(HKEY hive, std::wstring root, Store& store, Log& log, std::function<void()> look = {});
    ~Watcher() { stop(); }
    Watcher(const Watcher&) = delete;
    Watcher& operator=(const Watcher&) = delete;

    // Notices every change that is made after it has returned. False if the system does not report any.
    bool start();

    // How long after a comparison that failed the next one comes; less is only of use to tests. Before start().
    void setRetryAfter(DWORD milliseconds) noexcept { retryAfter_ = milliseconds; }

    // Safe at any time. A comparison under way is carried out to its end.
    void stop() noexcept;

 private:
    bool arm();
    void watch() noexcept;
    bool compare();
    bool isDeleted() const noexcept;
    bool waitForPause();
    void tell(Result result) noexcept;

    HKEY hive_;
    std::wstring root_;
    Store& store_;
    Log& log_;
    std::function<void()> look_;
    Key key_;
    Handle changed_{CreateEventW(nullptr, FALSE, FALSE, nullptr)};
    Handle stop_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    Thread thread_;
    DWORD retryAfter_ = 10'000;
    std::uint64_t changesSeen_ = 0;
    bool armed_ = false;
    Result told_ = result::ok;  // how the last comparison ended
};

}  // namespace srv
