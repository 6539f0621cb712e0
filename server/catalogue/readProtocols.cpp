#include <algorithm>
#include <array>

#include "Fields.h"
#include "like.h"
#include "number.h"
#include "readers.h"

namespace catalogue {

namespace {

struct ProfileName
{
    std::wstring_view key;
    std::wstring_view name;
};

constexpr std::array<ProfileName, 4> profileNames{{{L"0", L"dp"}, {L"1", L"std"}, {L"2", L"uni"}, {L"3", L"user"}}};

class ProtocolReader
{
 public:
    ProtocolReader(Reading& reading, Protocol& protocol, const JsonValue& entry)
        : reading_(reading), errors_(reading.errors), result_(protocol), entry_(entry)
    {}

    void read()
    {
        const Fields fields(
            errors_, entry_, L"a protocol",
            {L"like", L"values", L"keys", L"params", L"busProfiles", L"baudRates", L"texts", L"parameters"});
        result_.texts = readTextSetNames(reading_, fields.optional(L"texts"));
        result_.parameters = readParameters(errors_, fields.optional(L"parameters"));
        readOwnValues(fields);
        for (const JsonMember* const key : readEntries(errors_, fields.optional(L"keys"), L"\"keys\"")) {
            if (equalNoCase(key->name, L"Params"))
                errors_.add(key->begin,
                            L"What is below \"Params\" is written as \"params\", \"busProfiles\" and "
                            L"\"baudRates\".");
            result_.tree.keys[key->name] = readNode(errors_, key->value);
        }
        readProfiles(fields);
        publishParams(fields);
    }

 private:
    void readOwnValues(const Fields& fields)
    {
        refuseValue(errors_, fields.optional(L"values"), L"CP_TYPE");
        if (const JsonValue* const values = fields.required(L"values")) {
            result_.tree.values = readValues(errors_, *values, L"\"values\"", &result_.texts);
            requireValue(errors_, *values, result_.tree.values, L"Alias");
            requireValue(errors_, *values, result_.tree.values, L"DescText");
        }
        result_.tree.values[L"CP_TYPE"] = result_.name;
    }

    void readProfiles(const Fields& fields)
    {
        const JsonValue* const profiles = fields.optional(L"busProfiles");
        const JsonValue* const rates = fields.optional(L"baudRates");
        if (profiles && rates)
            errors_.add(rates->begin, L"A protocol has either \"busProfiles\" or \"baudRates\", not both.");
        result_.baudRates = readRates(rates);
        if (!profiles) return;
        const Fields names(errors_, *profiles, L"the bus profiles", {L"dp", L"std", L"uni", L"user"});
        for (const ProfileName& profile : profileNames)
            if (const JsonValue* const value = names.optional(profile.name))
                result_.busProfiles.push_back(readProfile(profile, *value));
    }

    BusProfile readProfile(const ProfileName& name, const JsonValue& value)
    {
        const Fields fields(errors_, value, L"a bus profile", {L"values", L"baudRates"});
        BusProfile profile{std::wstring(name.key), std::wstring(name.name), {}, {}};
        if (const JsonValue* const values = fields.optional(L"values")) profile.values = readParameterValues(*values);
        profile.baudRates = readRates(fields.optional(L"baudRates"));
        return profile;
    }

    std::vector<BaudRate> readRates(const JsonValue* section)
    {
        std::vector<BaudRate> rates;
        for (const JsonMember* const member : readEntries(errors_, section, L"\"baudRates\"")) {
            const std::optional<long long> number = parseNumber(member->name, 10);
            if (!number || *number < 1 || std::to_wstring(*number) != member->name) {
                errors_.add(member->begin, inQuotes(member->name) + L" is no baud rate in bit/s.");
            } else {
                rates.push_back({member->name, readParameterValues(member->value)});
            }
        }
        std::sort(rates.begin(), rates.end(), [](const BaudRate& left, const BaudRate& right) {
            return parseNumber(left.rate, 10) < parseNumber(right.rate, 10);
        });
        return rates;
    }

    Values readParameterValues(const JsonValue& value)
    {
        Values values = readValues(errors_, value, L"The parameters of a bus profile or a baud rate", nullptr);
        checkAgainstDescriptions(errors_, entry_, value, describe());
        return values;
    }

    Describe describe() const
    {
        return [this](std::wstring_view parameter) -> const ParameterDescription* {
            const ParameterDescription* const own = find(result_.parameters, parameter);
            return own ? own : find(reading_.catalogue.parameters, parameter);
        };
    }

    void publishParams(const Fields& fields)
    {
        Node params;
        if (const JsonValue* const values = fields.optional(L"params")) {
            params.values = readValues(errors_, *values, L"\"params\"", nullptr);
            checkAgainstDescriptions(errors_, entry_, *values, describe());
        }
        for (const BusProfile& profile : result_.busProfiles) {
            Node& key = params.keys[L"busparam"].keys[profile.key];
            key.values = profile.values;
            for (const BaudRate& rate : profile.baudRates)
                key.keys[rate.rate].values = rate.values;
        }
        for (const BaudRate& rate : result_.baudRates)
            params.keys[L"baudrate"].keys[rate.rate].values = rate.values;
        result_.tree.keys[L"Params"] = std::move(params);
    }

    Reading& reading_;
    Errors& errors_;
    Protocol& result_;
    const JsonValue& entry_;
};

}  // namespace

void readProtocols(Reading& reading, const JsonValue* section)
{
    if (!section) return;
    const JsonValue resolved = resolveLikes(reading.errors, *section);
    for (const JsonMember* const entry : readEntries(reading.errors, &resolved, L"\"protocols\"")) {
        Protocol& protocol = reading.catalogue.protocols[entry->name];
        protocol.name = entry->name;
        ProtocolReader(reading, protocol, entry->value).read();
    }
}

}  // namespace catalogue
