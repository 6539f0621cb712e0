#include "listeners/StartEvent.h"

#include "base/Security.h"

namespace srv {

StartEvent::StartEvent(const std::wstring& name)
{
    Security open(sddl::openToAll);
    event_.reset(CreateEventW(open.attributes(), TRUE, FALSE, name.c_str()));
    // It may be there still, kept by a client that waited for a server which then died.
    if (event_) ResetEvent(event_.get());
}

StartEvent::~StartEvent()
{
    ready();
}

void StartEvent::ready() noexcept
{
    if (event_) SetEvent(event_.get());
}

}  // namespace srv
