#include "dispatch/Session.h"

#include "store/Names.h"

namespace srv {

namespace {

// An editor needs one or two; the bound keeps a client from filling the server's memory.
constexpr std::size_t mostTemporaries = 256;

}  // namespace

Content* Session::temporary(std::wstring_view name) noexcept
{
    if (temporaries_.empty()) return nullptr;
    const auto at = temporaries_.find(name);
    return at == temporaries_.end() ? nullptr : &at->second;
}

Result Session::createTemporary(Content content, std::wstring& name)
{
    if (temporaries_.size() >= mostTemporaries) return result::quotaExceeded;
    name = std::wstring(temporaryPrefix) + std::to_wstring(nextTemporary_);
    temporaries_.emplace(name, std::move(content));
    ++nextTemporary_;
    return result::ok;
}

Result Session::removeTemporary(std::wstring_view name) noexcept
{
    const auto at = temporaries_.find(name);
    if (at == temporaries_.end()) return result::notFound;
    temporaries_.erase(at);
    return result::ok;
}

}  // namespace srv
