// What the server has acknowledged, and what it must therefore answer whatever happens to it.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

// A text, or nothing where there is no such value.
using Content = std::optional<std::string>;

class Ledger
{
 public:
    // The server has said that this is stored.
    void acknowledged(const std::string& name, const Content& content) { entries_[name] = {content, {}, false}; }

    // It was asked to store this and has not answered: it may have done so or not.
    void unanswered(const std::string& name, const Content& content)
    {
        Entry& entry = entries_[name];
        entry.perhaps = content;
        entry.uncertain = true;
    }

    // What the server says now; false if that is neither what it acknowledged nor what it was asked for last.
    bool found(const std::string& name, const Content& content);

    template <typename Use>
    void forEachName(Use use) const
    {
        for (const auto& entry : std::map(entries_))
            use(entry.first);
    }

 private:
    struct Entry
    {
        Content stored;
        Content perhaps;
        bool uncertain = false;
    };
    std::map<std::string, Entry> entries_;
};
