#include "like.h"

#include <algorithm>

namespace catalogue {

namespace {

constexpr std::wstring_view like = L"like";

// A reader who has to follow more steps than this has lost the thread; it also bounds the recursion.
constexpr int maximumSteps = 8;

std::vector<JsonMember>::iterator findMember(JsonValue& object, std::wstring_view name)
{
    return std::find_if(object.members.begin(), object.members.end(),
                        [&](const JsonMember& member) { return equalNoCase(member.name, name); });
}

void putOver(Errors& errors, JsonValue& base, const JsonValue& own)
{
    for (const JsonMember& member : own.members) {
        if (member.name == like) continue;
        const auto at = findMember(base, member.name);
        if (member.value.kind == JsonValue::Kind::Null) {
            if (at == base.members.end()) {
                errors.add(member.begin, L"There is no " + inQuotes(member.name) + L" that null could take away.");
            } else {
                base.members.erase(at);
            }
        } else if (at == base.members.end()) {
            base.members.push_back(member);
        } else if (at->value.isObject() && member.value.isObject()) {
            putOver(errors, at->value, member.value);
        } else {
            *at = member;
        }
    }
    base.begin = own.begin;
    base.end = own.end;
}

class Resolver
{
 public:
    Resolver(Errors& errors, const JsonValue& section) : errors_(errors), section_(section)
    {
        for (const JsonMember& member : section.members)
            entries_[member.name] = &member.value;
    }

    JsonValue resolve(const JsonValue& entry, int steps)
    {
        const JsonValue* const name = entry.member(like);
        if (!name) return entry;
        const JsonValue* const base = baseNamed(*name, entry, steps);
        if (!base) return without(entry);
        JsonValue result = resolve(*base, steps + 1);
        putOver(errors_, result, entry);
        return result;
    }

 private:
    const JsonValue* baseNamed(const JsonValue& name, const JsonValue& entry, int steps)
    {
        if (name.kind != JsonValue::Kind::Text) {
            errors_.add(name.begin, L"\"like\" must be the name of another entry.");
            return nullptr;
        }
        const auto at = entries_.find(name.text);
        if (at == entries_.end()) {
            errors_.add(name.begin, L"There is no entry " + inQuotes(name.text) + L" that this one could be like" +
                                        endWithSuggestion(name.text, entries_));
            return nullptr;
        }
        if (at->second == &entry || steps >= maximumSteps) {
            errors_.add(name.begin, L"\"like\" leads back to the entry itself, or over more than " +
                                        std::to_wstring(maximumSteps) + L" steps.");
            return nullptr;
        }
        return at->second->isObject() ? at->second : nullptr;
    }

    static JsonValue without(JsonValue entry)
    {
        std::erase_if(entry.members, [](const JsonMember& member) { return member.name == like; });
        return entry;
    }

    Errors& errors_;
    const JsonValue& section_;
    Map<const JsonValue*> entries_;
};

}  // namespace

JsonValue resolveLikes(Errors& errors, const JsonValue& section)
{
    Resolver resolver(errors, section);
    JsonValue resolved = section;
    for (std::size_t i = 0; i < section.members.size(); ++i)
        resolved.members[i].value = resolver.resolve(section.members[i].value, 0);
    return resolved;
}

}  // namespace catalogue
