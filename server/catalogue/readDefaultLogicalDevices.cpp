#include "Fields.h"
#include "like.h"
#include "readers.h"

namespace catalogue {

namespace {

std::wstring valueOr(const Values& values, std::wstring_view name)
{
    const std::wstring* const value = find(values, name);
    return value ? *value : std::wstring{};
}

class DeviceReader
{
 public:
    DeviceReader(Reading& reading, DefaultLogicalDevice& device, const JsonValue& entry)
        : reading_(reading), errors_(reading.errors), result_(device), entry_(entry)
    {}

    void read()
    {
        const Fields fields(errors_, entry_, L"a default logical device",
                            {L"like", L"board", L"protocol", L"values", L"ndi", L"parameters"});
        Board* const board = readBoardName(fields.required(L"board"));
        const Protocol* const protocol = readProtocolName(fields.required(L"protocol"));
        if (board && protocol) checkSupported(*board, *protocol, fields.optional(L"protocol")->begin);
        result_.parameters = readParameters(errors_, fields.optional(L"parameters"));

        const JsonValue* const values = fields.optional(L"values");
        refuseValue(errors_, values, L"DeviceID");
        refuseValue(errors_, values, L"CP_TYPE");
        if (values) {
            result_.values = readValues(errors_, *values, L"\"values\"", &result_.texts);
            const std::size_t before = errors_.count();
            checkAgainstDescriptions(errors_, entry_, *values, [&](std::wstring_view parameter) {
                const ParameterDescription* const own = find(result_.parameters, parameter);
                return own ? own : reading_.catalogue.describe(result_.deviceId, result_.protocol, parameter);
            });
            if (protocol && errors_.count() == before) checkProfile(*protocol, *values);
        }
        result_.values[L"DeviceID"] = result_.deviceId;
        result_.values[L"CP_TYPE"] = result_.protocol;
        if (const JsonValue* const ndi = fields.optional(L"ndi"))
            result_.ndiValues = readValues(errors_, *ndi, L"\"ndi\"", nullptr);
        if (board)
            board->configurations.push_back({result_.name, result_.protocol, valueOr(result_.values, L"L4_PROTOCOL"),
                                             valueOr(result_.values, L"Unit")});
    }

 private:
    Board* readBoardName(const JsonValue* value)
    {
        if (!value) return nullptr;
        result_.deviceId = readText(errors_, *value, L"The board of a default logical device");
        Map<Board>& boards = reading_.catalogue.boards;
        const auto at = boards.find(result_.deviceId);
        if (at == boards.end()) {
            errors_.add(value->begin, L"There is no board " + inQuotes(result_.deviceId) +
                                          endWithSuggestion(result_.deviceId, boards));
            return nullptr;
        }
        result_.deviceId = at->first;
        return &at->second;
    }

    const Protocol* readProtocolName(const JsonValue* value)
    {
        if (!value) return nullptr;
        result_.protocol = readText(errors_, *value, L"The protocol of a default logical device");
        const Protocol* const protocol = reading_.catalogue.protocol(result_.protocol);
        if (!protocol) {
            errors_.add(value->begin, L"There is no protocol " + inQuotes(result_.protocol) +
                                          endWithSuggestion(result_.protocol, reading_.catalogue.protocols));
            return nullptr;
        }
        result_.protocol = protocol->name;
        return protocol;
    }

    void checkSupported(const Board& board, const Protocol& protocol, std::size_t place) const
    {
        for (const std::wstring& missing : board.notSupported)
            if (equalNoCase(missing, protocol.name))
                errors_.add(entry_, place,
                            L"The board " + inQuotes(board.deviceId) + L" does not support the protocol " +
                                inQuotes(protocol.name) + L", says its \"notSupported\".");
    }

    // A device that starts with a profile or rate that its protocol does not know could never be set up from it.
    void checkProfile(const Protocol& protocol, const JsonValue& values) const
    {
        const std::wstring* const profileKey = find(result_.values, L"busparam");
        const std::wstring* const rate = find(result_.values, L"baudrate");
        const BusProfile* profile = nullptr;
        if (profileKey && !protocol.busProfiles.empty()) {
            profile = protocol.busProfile(*profileKey);
            if (!profile)
                errors_.add(entry_, placeOf(values, L"busparam"),
                            L"The protocol " + inQuotes(protocol.name) + L" has no bus profile " +
                                inQuotes(*profileKey) + L".");
        }
        const std::vector<BaudRate>& rates = profile ? profile->baudRates : protocol.baudRates;
        if (!rate || rates.empty()) return;
        for (const BaudRate& known : rates)
            if (known.rate == *rate) return;
        errors_.add(entry_, placeOf(values, L"baudrate"),
                    L"The protocol " + inQuotes(protocol.name) + L" has no baud rate " + inQuotes(*rate) +
                        (profile ? L" in this bus profile." : L"."));
    }

    static std::size_t placeOf(const JsonValue& values, std::wstring_view name)
    {
        for (const JsonMember& member : values.members)
            if (equalNoCase(member.name, name)) return member.value.begin;
        return values.begin;
    }

    Reading& reading_;
    Errors& errors_;
    DefaultLogicalDevice& result_;
    const JsonValue& entry_;
};

}  // namespace

void readDefaultLogicalDevices(Reading& reading, const JsonValue* section)
{
    if (!section) return;
    const JsonValue resolved = resolveLikes(reading.errors, *section);
    for (const JsonMember* const entry : readEntries(reading.errors, &resolved, L"\"defaultLogicalDevices\"")) {
        DefaultLogicalDevice& device = reading.catalogue.defaultLogicalDevices[entry->name];
        device.name = entry->name;
        DeviceReader(reading, device, entry->value).read();
    }
}

}  // namespace catalogue
