// The connection over which one client channel is told of changes.
#pragma once

#include <memory>
#include <vector>

#include "base/Owner.h"
#include "notifications/PushSource.h"
#include "notifications/Subscriber.h"

namespace srv {

class Notifications;

class Listener : public PushSource
{
 public:
    // Made by Notifications::listen.
    Listener(Notifications& notifications, std::shared_ptr<Subscriber> subscriber);
    ~Listener() override;

    HANDLE due() const noexcept override { return due_.get(); }
    std::span<const std::uint8_t> next() noexcept override;
    void putBack() noexcept override;

 private:
    friend class Notifications;

    Notifications& notifications_;
    std::shared_ptr<Subscriber> subscriber_;
    Handle due_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    std::uint64_t hardwareBefore_ = 0;  // how far the client had been told before the last message
    std::vector<Push> items_;
    std::vector<std::uint8_t> frame_;
};

}  // namespace srv
