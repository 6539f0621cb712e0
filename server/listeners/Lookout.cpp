#include "listeners/Lookout.h"

#include <algorithm>
#include <mutex>

#include "wire/memory.h"

namespace srv {

namespace {

// How many requests one thread looks for while there are others that could. It does not see that its own client has
// gone before it sleeps.
constexpr unsigned longestWatch = 10'000;

}  // namespace

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
            const bool others = awake_.size() > 1;
            if (own.called_ || stop || awake_.empty() || (others && taken >= longestWatch)) {
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

void Lookout::leave(Place& own) noexcept
{
    const std::lock_guard guard(lock_);
    std::erase(awake_, &own);
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
        if (place->called_ || !place->asked()) continue;
        ++taken;
        place->looks_ = 0;
        if (place->take()) {
            place->answer();
        } else {
            place->called_ = true;
            if (place != &own) place->wake();
        }
    }
    std::erase_if(awake_, [this](Place* place) { return dozes(*place); });
    return taken;
}

// Whether nothing has been asked there for so long that its client is to wake it.
bool Lookout::dozes(Place& place) noexcept
{
    if (place.called_ || ++place.looks_ <= ::wire::looksBeforeSleep) return false;
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
        if (!place->called_ && place->asked()) place->wake();
    }
    awake_.clear();
}

}  // namespace srv
