// The configuration in memory: what reads are answered from.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/LessNoCase.h"

namespace srv {

struct Value
{
    std::wstring name;
    std::wstring text;

    bool operator==(const Value&) const = default;
};

// Values by name, without regard to case, in the one order in which they are enumerated. A name keeps the case in
// which it was first stored, as in the registry.
class ValueTable
{
 public:
    ValueTable() = default;
    explicit ValueTable(const catalogue::Values& values);

    std::size_t size() const noexcept { return values_.size(); }
    bool empty() const noexcept { return values_.empty(); }
    const Value& operator[](std::size_t index) const noexcept { return values_[index]; }
    auto begin() const noexcept { return values_.begin(); }
    auto end() const noexcept { return values_.end(); }

    const std::wstring* find(std::wstring_view name) const noexcept;
    // The text of a value, empty where there is none.
    std::wstring_view textOf(std::wstring_view name) const noexcept;
    void set(std::wstring_view name, std::wstring_view text);
    bool erase(std::wstring_view name) noexcept;

    // In the registry the case of a name is kept too, so it counts.
    bool operator==(const ValueTable&) const = default;

 private:
    std::vector<Value> values_;
};

// Everything that a logical device or logical name holds. Names have no Ndi values.
struct Content
{
    ValueTable values;
    ValueTable ndi;

    bool operator==(const Content&) const = default;
};

struct Object
{
    std::wstring name;
    Content content;
};

// The objects of one family in the order in which they are enumerated; an object can be found by its name and by its
// position, also among those of one group (the logical devices with one CP_TYPE).
class ObjectTable
{
 public:
    // The value by which objects are grouped; empty: no groups.
    explicit ObjectTable(std::wstring_view groupedBy = {}) : groupedBy_(groupedBy) {}

    std::size_t size() const noexcept { return objects_.size(); }
    const Object& operator[](std::size_t index) const noexcept { return *objects_[index]; }

    const Object* find(std::wstring_view name) const noexcept;

    // The object at a position among those whose group value is `group` (in any case); nullptr past the last.
    const Object* inGroup(std::wstring_view group, std::size_t index) const noexcept;

    // Inserts an object, or replaces the content of the one of that name, whose name stays as it is.
    void put(std::wstring_view name, Content content);
    bool erase(std::wstring_view name);
    bool setValue(std::wstring_view name, std::wstring_view parameter, std::wstring_view text);
    bool eraseValue(std::wstring_view name, std::wstring_view parameter);
    bool setNdi(std::wstring_view name, std::wstring_view parameter, std::wstring_view text);
    bool eraseNdi(std::wstring_view name, std::wstring_view parameter);

 private:
    using Group = std::vector<const Object*>;

    Object* object(std::wstring_view name) noexcept;
    bool groups(std::wstring_view parameter) const noexcept;
    void enterGroup(const Object& object);
    void leaveGroup(const Object& object);

    std::wstring groupedBy_;
    std::vector<std::unique_ptr<Object>> objects_;
    catalogue::Map<Group> groups_;
};

}  // namespace srv
