#include "dispatch/registry.h"

namespace srv::registry {

namespace {

Result deleteKey(const Call& call, Required key)
{
    return call.server.keys.deleteKey(key);
}

Result deleteValue(const Call& call, Required key, Given name)
{
    return call.server.keys.deleteValue(key, name);
}

bool hasOneText(std::span<const std::uint8_t> fields) noexcept
{
    RequestReader reader(fields);
    Text text;
    return reader.text(text) && reader.atEnd();
}

}  // namespace

Result createKey(const Call& call, Required key)
{
    return call.server.keys.createKey(key);
}

Result setValue(const Call& call, Required key, Given name, Given text)
{
    return call.server.keys.setValue(key, name, text);
}

Result enumKey(const Call& call, Required key, std::uint32_t index)
{
    std::wstring name;
    if (const Result result = call.server.keys.subkeyAt(key, index, name)) return result;
    call.reply.text(name);
    return result::ok;
}

Result getValue(const Call& call, Required key, Given name)
{
    std::wstring text;
    if (const Result result = call.server.keys.value(key, name, text)) return result;
    call.reply.text(text);
    return result::ok;
}

Result enumValue(const Call& call, Required key, std::uint32_t index)
{
    Value value;
    if (const Result result = call.server.keys.valueAt(key, index, value)) return result;
    call.reply.text(value.name);
    call.reply.text(value.text);
    return result::ok;
}

Outcome deleteKeyOrValue(const Call& call, RequestReader& reader, std::string* shown)
{
    return hasOneText(reader.rest()) ? handledBy<deleteKey>(call, reader, shown)
                                     : handledBy<deleteValue>(call, reader, shown);
}

}  // namespace srv::registry
