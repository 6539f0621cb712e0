#include "channel_table.h"

#include <limits>
#include <utility>

#include "support/srw_lock.h"

namespace kxonlinx {

namespace {

constexpr int placeCount = static_cast<int>(ChannelTable::capacity);
constexpr int maxUses = std::numeric_limits<int>::max() / placeCount;

}  // namespace

int ChannelTable::add(Ref<Channel> channel) noexcept
{
    const platform::SrwGuard guard(lock_);
    for (int index = 0; index < placeCount; ++index) {
        Place& place = places_[index];
        if (place.channel) continue;
        place.uses = place.uses < maxUses - 1 ? place.uses + 1 : 1;
        place.channel = channel.detach();
        return place.uses * placeCount + index;
    }
    return noHandle;
}

ChannelTable::Place* ChannelTable::placeOf(int handle, kxonlinx_error& error) noexcept
{
    error = KXONLINX_BAD_HANDLE;
    if (handle < placeCount) return nullptr;
    Place& place = places_[handle % placeCount];
    const int use = handle / placeCount;
    if (use > place.uses) return nullptr;
    error = KXONLINX_NOT_OPEN;
    if (use < place.uses || !place.channel) return nullptr;
    error = KXONLINX_OK;
    return &place;
}

Ref<Channel> ChannelTable::find(int handle, kxonlinx_error& error) noexcept
{
    const platform::SrwGuard guard(lock_);
    const Place* place = placeOf(handle, error);
    return place ? Ref<Channel>::share(place->channel) : Ref<Channel>();
}

Ref<Channel> ChannelTable::remove(int handle, kxonlinx_error& error) noexcept
{
    const platform::SrwGuard guard(lock_);
    Place* place = placeOf(handle, error);
    return place ? Ref<Channel>::adopt(std::exchange(place->channel, nullptr)) : Ref<Channel>();
}

Ref<Channel> ChannelTable::at(std::size_t place) noexcept
{
    const platform::SrwGuard guard(lock_);
    return Ref<Channel>::share(places_[place].channel);
}

void ChannelTable::closeAll() noexcept
{
    for (Place& place : places_) {
        Ref<Channel> channel;
        {
            const platform::SrwGuard guard(lock_);
            channel = Ref<Channel>::adopt(std::exchange(place.channel, nullptr));
        }
        if (channel) channel->close();
    }
}

}  // namespace kxonlinx
