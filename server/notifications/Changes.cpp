#include "notifications/Changes.h"

#include <mutex>

namespace srv {

void Changes::add(ChangeObserver& observer)
{
    const std::lock_guard guard(lock_);
    observers_.push_back(&observer);
}

void Changes::remove(ChangeObserver& observer)
{
    const std::lock_guard guard(lock_);
    std::erase(observers_, &observer);
}

void Changes::tell(const Change& change) noexcept
{
    const std::lock_guard guard(lock_);
    for (ChangeObserver* const observer : observers_)
        observer->changed(change);
}

}  // namespace srv
