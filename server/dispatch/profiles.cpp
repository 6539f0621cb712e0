#include "dispatch/profiles.h"

#include <algorithm>

#include "dispatch/answers.h"
#include "dispatch/definitions.h"
#include "dispatch/devices.h"

namespace srv::profiles {

namespace {

constexpr std::wstring_view profileParameter = L"busparam";
constexpr std::wstring_view rateParameter = L"baudrate";

// Where in which protocol a definition's path leads.
struct Definition
{
    const catalogue::Protocol* protocol = nullptr;  // nullptr: none such
    std::wstring_view path;                         // below the protocol

    Definition(const catalogue::Catalogue& catalogue, std::wstring_view definition)
    {
        constexpr std::wstring_view prefix = L"SOFTWARE\\TAVRONE\\NORIX\\DefDevices\\CP_TYPE\\";
        if (catalogue::equalNoCase(definition.substr(0, prefix.size()), prefix))
            definition.remove_prefix(prefix.size());
        const PathParts parts = splitFirst(definition);
        protocol = catalogue.protocol(parts.first);
        path = parts.rest;
    }
};

const catalogue::BaudRate* rateNamed(const std::vector<catalogue::BaudRate>& rates, std::wstring_view name) noexcept
{
    const auto at = std::find_if(rates.begin(), rates.end(), [&](const auto& entry) { return entry.rate == name; });
    return at == rates.end() ? nullptr : &*at;
}

// What the device's profile sets at its baud rate, after one of the two was changed.
Result profileOf(const catalogue::Protocol& protocol, const ValueTable& device, bool rateMatters,
                 catalogue::Values& values)
{
    const std::wstring_view key = device.textOf(profileParameter);
    const std::wstring_view rate = device.textOf(rateParameter);
    const catalogue::BusProfile* const profile = protocol.busProfile(key);
    if (!profile && !protocol.busProfiles.empty()) return result::profileNoValue;
    if (rateMatters && !rateNamed(profile ? profile->baudRates : protocol.baudRates, rate))
        return result::profileNoValue;
    values = protocol.profileValues(key, rate);
    return result::ok;
}

// What a definition holds below <parameter>\<value>. A parameter that it does not know ties nothing to itself.
Result tiedTo(const Definition& definition, std::wstring_view parameter, std::wstring_view value,
              catalogue::Values& values)
{
    const catalogue::Node* const collection = definition.protocol->tree.at(joined(definition.path, parameter));
    if (!collection) return result::ok;
    const catalogue::Node* const tied = catalogue::find(collection->keys, value);
    if (!tied) return result::profileNoValue;
    values = tied->values;
    return result::ok;
}

// Whether a key holds a value or key of this name; any if there is no name.
bool holds(const catalogue::Node& key, std::wstring_view name)
{
    return name.empty() || key.values.contains(name) || key.keys.contains(name);
}

bool exists(const catalogue::Node& tree, std::wstring_view path, std::wstring_view value)
{
    if (const catalogue::Node* const key = tree.at(path)) return holds(*key, value);
    const PathEnd end = splitLast(path);
    const catalogue::Node* const key = tree.at(end.path);
    const std::wstring* const text = key ? catalogue::find(key->values, end.last) : nullptr;
    return text && (value.empty() || catalogue::equalNoCase(*text, value));
}

}  // namespace

Result getEnum(const Call& call, Required name, std::uint32_t index, Capacity capacity)
{
    const catalogue::Protocol* const protocol = call.server.catalogue.protocol(name);
    if (!protocol) return result::notFound;
    if (index >= protocol->busProfiles.size()) return result::noMoreItems;
    return call.reply.text(protocol->busProfiles[index].key, capacity.bytes);
}

Result enumBaudrate(const Call& call, Required name, Given profileName, std::uint32_t index, Capacity capacity)
{
    const catalogue::Protocol* const protocol = call.server.catalogue.protocol(name);
    if (!protocol) return result::notFound;
    const catalogue::BusProfile* const profile = protocol->busProfile(profileName);
    if (!profile && !protocol->busProfiles.empty()) return result::notFound;
    const std::vector<catalogue::BaudRate>& rates = profile ? profile->baudRates : protocol->baudRates;
    return index < rates.size() ? call.reply.text(rates[index].rate, capacity.bytes) : result::noMoreItems;
}

Result collectionExists(const Call& call, Required definitionPath, Required path, Text value)
{
    const Definition definition(call.server.catalogue, definitionPath);
    if (!definition.protocol) return result::notFound;
    return exists(definition.protocol->tree, joined(definition.path, path), value.value_or(L""))
               ? result::ok
               : result::profileNoValue;
}

Result setBusparams(const Call& call, Required device, Required profile)
{
    catalogue::Values values;
    const Result result = withDevice(call, device, [&](const Content& content) {
        const catalogue::Protocol* const protocol = call.server.catalogue.protocol(content.values.textOf(L"CP_TYPE"));
        if (!protocol) return result::notFound;
        const catalogue::BusProfile* const found = protocol->busProfile(profile);
        if (!found) return result::profileNoValue;
        values = protocol->profileValues(found->key, content.values.textOf(rateParameter));
        values.insert_or_assign(std::wstring(profileParameter), found->key);
        return result::ok;
    });
    return result != result::ok ? result : devices::setTogether(call, device, values);
}

Result setProfile(const Call& call, Required device, Required definitionPath, Required parameter)
{
    const Definition definition(call.server.catalogue, definitionPath);
    if (!definition.protocol) return result::notFound;
    catalogue::Values values;
    const Result result = withDevice(call, device, [&](const Content& content) {
        const bool isRate = catalogue::equalNoCase(parameter, rateParameter);
        if (isRate || catalogue::equalNoCase(parameter, profileParameter))
            return profileOf(*definition.protocol, content.values, isRate, values);
        return tiedTo(definition, parameter, content.values.textOf(parameter), values);
    });
    if (result != result::ok || values.empty()) return result;
    return devices::setTogether(call, device, values);
}

}  // namespace srv::profiles
