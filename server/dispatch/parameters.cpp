#include "dispatch/parameters.h"

#include <string>
#include <vector>

#include "base/Text.h"
#include "dispatch/answers.h"

namespace srv::parameters {

namespace {

using catalogue::ParameterDescription;

const ParameterDescription* special(const catalogue::Catalogue& catalogue, const ValueTable& values,
                                    std::wstring_view parameter)
{
    return catalogue.describe(values.textOf(L"DeviceID"), values.textOf(L"CP_TYPE"), parameter);
}

Result list(const Call& call, const ParameterDescription* description, Capacity capacity)
{
    if (!description || description->type != ParameterDescription::Type::Enum) return result::notFound;
    ListWriter writer(call.reply, capacity.bytes);
    for (const catalogue::EnumItem& item : description->items)
        if (!writer.add(item.text(catalogue::Language::En))) break;
    return writer.finish();
}

// What does not agree, for the log, and the first of its results.
struct Findings
{
    std::vector<std::string> lines;
    Result first = result::ok;

    void add(Result code, const char* kind, std::wstring_view object, const char* what, std::wstring_view detail)
    {
        lines.push_back(std::string(kind) + " " + inQuotes(object) + ": " + what + " " + inQuotes(detail));
        if (first == result::ok) first = code;
    }
};

void checkDevice(const catalogue::Catalogue& catalogue, const Object& device, Findings& findings)
{
    constexpr char kind[] = "logical device";
    const ValueTable& values = device.content.values;
    const std::wstring_view board = values.textOf(L"DeviceID");
    const std::wstring_view protocol = values.textOf(L"CP_TYPE");
    if (!catalogue.board(board)) findings.add(result::notFound, kind, device.name, "unknown board", board);
    if (!catalogue.protocol(protocol)) {
        findings.add(result::notFound, kind, device.name, "unknown protocol", protocol);
    }
    for (const Value& value : values) {
        const ParameterDescription* const description = special(catalogue, values, value.name);
        if (description && !description->accepts(value.text)) {
            findings.add(result::invalidParameter, kind, device.name, "a value that is not allowed, of", value.name);
        }
    }
}

// Each object by itself, so that whoever changes something waits for one of them at most.
template <typename Check>
void forEach(const Store& store, Family family, Check check)
{
    std::vector<std::wstring> names;
    store.read([&](const Configuration& configuration) {
        const ObjectTable& table = configuration.of(family);
        for (std::size_t i = 0; i < table.size(); ++i)
            names.push_back(table[i].name);
    });
    for (const std::wstring& name : names)
        store.read([&](const Configuration& configuration) {
            if (const Object* const object = configuration.of(family).find(name)) check(configuration, *object);
        });
}

}  // namespace

Result attribute(const Call& call, Required device, Required parameter, Required attribute, Capacity capacity)
{
    return withDevice(call, device, [&](const Content& content) {
        const ParameterDescription* const description = special(call.server.catalogue, content.values, parameter);
        const std::wstring* const text = description ? catalogue::find(description->attributes, attribute) : nullptr;
        return text ? call.reply.text(*text, capacity.bytes) : result::notFound;
    });
}

Result specialList(const Call& call, Required device, Required parameter, Capacity capacity)
{
    return withDevice(call, device, [&](const Content& content) {
        return list(call, special(call.server.catalogue, content.values, parameter), capacity);
    });
}

Result averageList(const Call& call, Required device, Required parameter, Capacity capacity)
{
    return withDevice(call, device, [&](const Content& content) {
        const std::wstring_view protocol = content.values.textOf(L"CP_TYPE");
        return list(call, call.server.catalogue.describeForProtocol(protocol, parameter), capacity);
    });
}

Result plausibility(const Call& call)
{
    Findings findings;
    forEach(call.store(), Family::Device, [&](const Configuration&, const Object& device) {
        checkDevice(call.server.catalogue, device, findings);
    });
    forEach(call.store(), Family::Name, [&](const Configuration& configuration, const Object& name) {
        const std::wstring_view device = name.content.values.textOf(L"LogDevice");
        if (!device.empty() && !configuration.devices.find(device)) {
            findings.add(result::notFound, "logical name", name.name, "points at the missing", device);
        }
    });
    for (const std::string& line : findings.lines)
        call.server.log.warning("plausibility: %s", line.c_str());
    return findings.first;
}

Result runtimeVersions(const Call& call)
{
    for (const std::wstring& version : call.server.catalogue.runtimeVersions)
        call.reply.text(version);
    return result::ok;
}

}  // namespace srv::parameters
