#include "Catalogue.h"

#include <algorithm>

namespace catalogue {

const Node* Node::at(std::wstring_view path) const
{
    const Node* node = this;
    while (node && !path.empty()) {
        const std::size_t end = std::min(path.find(L'\\'), path.size());
        if (end > 0) node = find(node->keys, path.substr(0, end));
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return node;
}

const BusProfile* Protocol::busProfile(std::wstring_view keyOrName) const
{
    const auto at = std::find_if(busProfiles.begin(), busProfiles.end(), [&](const BusProfile& profile) {
        return profile.key == keyOrName || equalNoCase(profile.name, keyOrName);
    });
    return at == busProfiles.end() ? nullptr : &*at;
}

Values Protocol::profileValues(std::wstring_view keyOrName, std::wstring_view rate) const
{
    const BusProfile* const profile = busProfile(keyOrName);
    Values result = profile ? profile->values : Values{};
    const std::vector<BaudRate>& rates = profile ? profile->baudRates : baudRates;
    const auto at =
        std::find_if(rates.begin(), rates.end(), [&](const BaudRate& entry) { return entry.rate == rate; });
    if (at != rates.end())
        for (const auto& [parameter, value] : at->values)
            result.insert_or_assign(parameter, value);
    return result;
}

const Board* Catalogue::boardByName(std::wstring_view name) const
{
    const auto at = std::find_if(boards.begin(), boards.end(),
                                 [&](const auto& entry) { return equalNoCase(entry.second.name, name); });
    return at == boards.end() ? nullptr : &at->second;
}

const ParameterDescription* Catalogue::describe(std::wstring_view deviceId, std::wstring_view protocolName,
                                                std::wstring_view parameter) const
{
    for (const auto& [name, device] : defaultLogicalDevices)
        if (equalNoCase(device.deviceId, deviceId) && equalNoCase(device.protocol, protocolName))
            if (const ParameterDescription* const found = find(device.parameters, parameter)) return found;
    if (const Board* const onBoard = board(deviceId))
        if (const ParameterDescription* const found = find(onBoard->parameters, parameter)) return found;
    return describeForProtocol(protocolName, parameter);
}

const ParameterDescription* Catalogue::describeForProtocol(std::wstring_view protocolName,
                                                           std::wstring_view parameter) const
{
    if (const Protocol* const with = protocol(protocolName))
        if (const ParameterDescription* const found = find(with->parameters, parameter)) return found;
    return find(parameters, parameter);
}

}  // namespace catalogue
