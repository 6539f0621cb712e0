// The errors found in one catalogue file.
#pragma once

#include <initializer_list>
#include <map>
#include <span>

#include "json.h"
#include "load.h"

namespace catalogue {

class Errors
{
 public:
    explicit Errors(const Source& source) : source_(source) {}

    // One sentence about what stands at a byte of the file. The same said twice of one place counts once, for what
    // several entries take over from another is read with each of them.
    void add(std::size_t offset, std::wstring message);

    // The same about what an entry has taken over from another one, where it may be right: then the entry is the
    // place, unless the same has been said of the other one.
    void add(const JsonValue& entry, std::size_t offset, std::wstring message);

    std::size_t count() const { return found_.size(); }

    // Puts the errors into a result, in the order of the file. document: for their JSON pointers; may be nullptr.
    void moveTo(LoadResult& result, const JsonValue* document);

 private:
    using Found = std::pair<std::size_t, std::wstring>;  // place and message

    const Source& source_;
    std::map<Found, std::size_t> found_;  // to the place from which it was taken over
};

// "text", with quotes.
std::wstring inQuotes(std::wstring_view text);

// "; did you mean "..."?" when one of the candidates is close to what was written, else ".": the end of a sentence.
std::wstring endWithSuggestion(std::wstring_view written, std::span<const std::wstring_view> candidates);

template <typename T>
std::wstring endWithSuggestion(std::wstring_view written, const Map<T>& candidates)
{
    std::vector<std::wstring_view> names;
    for (const auto& entry : candidates)
        names.push_back(entry.first);
    return endWithSuggestion(written, std::span<const std::wstring_view>(names));
}

}  // namespace catalogue
