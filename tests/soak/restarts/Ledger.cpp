#include "Ledger.h"

bool Ledger::found(const std::string& name, const Content& content)
{
    Entry& entry = entries_[name];
    const bool expected = content == entry.stored || (entry.uncertain && content == entry.perhaps);
    // From now on it has to stay that: an answer is as good as an acknowledgement.
    entry = {content, {}, false};
    return expected;
}
