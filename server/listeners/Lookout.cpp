#include "listeners/Lookout.h"

#include <algorithm>
#include <mutex>

#include "wire/memory.h"

namespace srv {

bool Lookout::look(Place& own, const std::atomic<bool>& stop) noexcept
{
    {
        const std::lock_guard guard(lock_);
        if (own.called_) return true;
        rouse(own);
        if (looking_) return false;
        looking_ = true;
    }
    for (unsigned taken = 0;;) {
        {
            const std::lock_guard guard(lock_);
            taken += lookAtAll(own);
            const bool others = awake_.size() > (own.awake_ ? 1 : 0);
            if (own.called_ || stop || awake_.empty() || (others && taken >= longestWatch_)) {
                giveUp();
                return own.called_;
            }
        }
        SwitchToThread();
    }
}

void Lookout::finish(Place& own) noexcept
{
    const std::lock_guard guard(lock_);
    own.called_ = false;
}

bool Lookout::leave(Place& own) noexcept
{
    const std::lock_guard guard(lock_);
    std::erase(awake_, &own);
    return own.called_;
}

void Lookout::rouse(Place& place) noexcept
{
    place.looks_ = 0;
    if (place.awake_) return;
    place.awake_ = true;
    awake_.push_back(&place);
    place.sleeps(false);
}

// Returns how many requests were taken.
unsigned Lookout::lookAtAll(const Place& own) noexcept
{
    unsigned taken = 0;
    for (Place* const place : awake_) {
        if (!place->asked()) continue;
        ++taken;
        place->looks_ = 0;
        if (place->attend()) continue;
        place->called_ = true;
        if (place != &own) place->wake();
    }
    std::erase_if(awake_, [this](Place* place) { return dozes(*place); });
    return taken;
}

// Whether there is nothing to look for: its own thread is at work and comes back by itself, or nothing has been asked for
// so long that its client is to wake it.
bool Lookout::dozes(Place& place) noexcept
{
    if (place.called_) {
        place.awake_ = false;
        return true;
    }
    if (++place.looks_ <= ::wire::looksBeforeSleep) return false;
    place.sleeps(true);
    // Its client may have asked without having seen that.
    if (place.asked()) {
        place.sleeps(false);
        place.looks_ = 0;
        return false;
    }
    place.awake_ = false;
    return true;
}

// Nobody looks any more: each is woken by its client, or now.
void Lookout::giveUp() noexcept
{
    looking_ = false;
    for (Place* const place : awake_) {
        place->awake_ = false;
        place->sleeps(true);
        if (place->asked()) place->wake();
    }
    awake_.clear();
}

}  // namespace srv
