#include "store/Model.h"

#include <algorithm>

namespace srv {

namespace {

const std::wstring& nameOf(const Value& value) noexcept
{
    return value.name;
}

template <typename Pointer>
const std::wstring& nameOf(const Pointer& object) noexcept
{
    return object->name;
}

// The position of a name in a sorted sequence, or where it belongs.
template <typename Sequence>
auto position(Sequence& sequence, std::wstring_view name) noexcept
{
    return std::lower_bound(sequence.begin(), sequence.end(), name,
                            [](const auto& element, std::wstring_view sought) {
                                return catalogue::LessNoCase{}(nameOf(element), sought);
                            });
}

template <typename Sequence, typename Position>
bool isAt(Sequence& sequence, Position at, std::wstring_view name) noexcept
{
    return at != sequence.end() && catalogue::equalNoCase(nameOf(*at), name);
}

}  // namespace

ValueTable::ValueTable(const catalogue::Values& values)
{
    values_.reserve(values.size());
    for (const auto& [name, text] : values)
        values_.push_back({name, text});
}

const std::wstring* ValueTable::find(std::wstring_view name) const noexcept
{
    const auto at = position(values_, name);
    return isAt(values_, at, name) ? &at->text : nullptr;
}

std::wstring_view ValueTable::textOf(std::wstring_view name) const noexcept
{
    const std::wstring* const text = find(name);
    return text ? std::wstring_view(*text) : std::wstring_view();
}

void ValueTable::set(std::wstring_view name, std::wstring_view text)
{
    const auto at = position(values_, name);
    if (isAt(values_, at, name)) {
        at->text = text;
    } else {
        values_.insert(at, {std::wstring(name), std::wstring(text)});
    }
}

bool ValueTable::erase(std::wstring_view name) noexcept
{
    const auto at = position(values_, name);
    if (!isAt(values_, at, name)) return false;
    values_.erase(at);
    return true;
}

const Object* ObjectTable::find(std::wstring_view name) const noexcept
{
    const auto at = position(objects_, name);
    return isAt(objects_, at, name) ? at->get() : nullptr;
}

Object* ObjectTable::object(std::wstring_view name) noexcept
{
    const auto at = position(objects_, name);
    return isAt(objects_, at, name) ? at->get() : nullptr;
}

const Object* ObjectTable::inGroup(std::wstring_view group, std::size_t index) const noexcept
{
    const Group* const members = catalogue::find(groups_, group);
    return members && index < members->size() ? (*members)[index] : nullptr;
}

bool ObjectTable::groups(std::wstring_view parameter) const noexcept
{
    return !groupedBy_.empty() && catalogue::equalNoCase(parameter, groupedBy_);
}

void ObjectTable::enterGroup(const Object& entering)
{
    const std::wstring* const group = groupedBy_.empty() ? nullptr : entering.content.values.find(groupedBy_);
    if (!group) return;
    Group& members = groups_[*group];
    members.insert(position(members, entering.name), &entering);
}

void ObjectTable::leaveGroup(const Object& leaving)
{
    const std::wstring* const group = groupedBy_.empty() ? nullptr : leaving.content.values.find(groupedBy_);
    if (!group) return;
    const auto members = groups_.find(*group);
    if (members == groups_.end()) return;
    const auto at = position(members->second, leaving.name);
    if (isAt(members->second, at, leaving.name)) members->second.erase(at);
    if (members->second.empty()) groups_.erase(members);
}

void ObjectTable::put(std::wstring_view name, Content content)
{
    const auto at = position(objects_, name);
    if (isAt(objects_, at, name)) {
        leaveGroup(**at);
        (*at)->content = std::move(content);
        enterGroup(**at);
        return;
    }
    const auto inserted =
        objects_.insert(at, std::make_unique<Object>(Object{std::wstring(name), std::move(content)}));
    enterGroup(**inserted);
}

bool ObjectTable::erase(std::wstring_view name)
{
    const auto at = position(objects_, name);
    if (!isAt(objects_, at, name)) return false;
    leaveGroup(**at);
    objects_.erase(at);
    return true;
}

bool ObjectTable::setValue(std::wstring_view name, std::wstring_view parameter, std::wstring_view text)
{
    Object* const changed = object(name);
    if (!changed) return false;
    const bool regroup = groups(parameter);
    if (regroup) leaveGroup(*changed);
    changed->content.values.set(parameter, text);
    if (regroup) enterGroup(*changed);
    return true;
}

bool ObjectTable::eraseValue(std::wstring_view name, std::wstring_view parameter)
{
    Object* const changed = object(name);
    if (!changed) return false;
    if (groups(parameter)) leaveGroup(*changed);
    return changed->content.values.erase(parameter);
}

bool ObjectTable::setNdi(std::wstring_view name, std::wstring_view parameter, std::wstring_view text)
{
    Object* const changed = object(name);
    if (changed) changed->content.ndi.set(parameter, text);
    return changed != nullptr;
}

bool ObjectTable::eraseNdi(std::wstring_view name, std::wstring_view parameter)
{
    Object* const changed = object(name);
    return changed && changed->content.ndi.erase(parameter);
}

}  // namespace srv
