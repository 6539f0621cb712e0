// What the catalogue says of the machine: adapters, installed boards, names, versions.
#include <algorithm>

#include "Fields.h"
#include "readers.h"

namespace catalogue {

namespace {

// The items of a list section; reports any other value.
const std::vector<JsonValue>& itemsOf(Errors& errors, const JsonValue* section, std::wstring_view subject)
{
    static const std::vector<JsonValue> none;
    if (!section) return none;
    if (section->kind != JsonValue::Kind::List) reportKind(errors, *section, subject, L"a list");
    return section->items;
}

std::wstring readRequiredText(Errors& errors, const Fields& fields, std::wstring_view name)
{
    const JsonValue* const value = fields.required(name);
    return value ? readText(errors, *value, inQuotes(name)) : std::wstring{};
}

// Reports a value that an earlier entry of a list has already.
template <typename Entry, typename Same>
void checkUnique(Errors& errors, const std::vector<Entry>& earlier, const Same& same, std::size_t place,
                 std::wstring_view what)
{
    if (std::any_of(earlier.begin(), earlier.end(), same))
        errors.add(place, L"An entry before this one has the same " + std::wstring(what) + L".");
}

class InstalledBoardReader
{
 public:
    InstalledBoardReader(Reading& reading, const JsonValue& entry)
        : errors_(reading.errors),
          catalogue_(reading.catalogue),
          fields_(errors_, entry, L"an installed board",
                  {L"board", L"map", L"netType", L"hardwareId", L"hardwareInstanceId", L"adapter", L"state"})
    {}

    InstalledBoard read()
    {
        readBoard();
        readNetType();
        result_.hardwareInstanceId = readRequiredText(errors_, fields_, L"hardwareInstanceId");
        if (const JsonValue* const value = fields_.optional(L"hardwareId"))
            result_.hardwareId = readText(errors_, *value, L"\"hardwareId\"");
        if (const JsonValue* const value = fields_.optional(L"adapter")) readAdapter(*value);
        if (const JsonValue* const value = fields_.optional(L"state"))
            result_.state = readNumber(errors_, *value, L"\"state\"", 0xFFFFFFFF).value_or(0);
        checkUniqueness();
        return std::move(result_);
    }

 private:
    void readBoard()
    {
        result_.deviceId = readRequiredText(errors_, fields_, L"board");
        result_.boardMap = readRequiredText(errors_, fields_, L"map");
        if (result_.deviceId.empty()) return;
        const Board* const board = catalogue_.board(result_.deviceId);
        if (!board) {
            errors_.add(fields_.optional(L"board")->begin,
                        L"There is no board " + inQuotes(result_.deviceId) +
                            endWithSuggestion(result_.deviceId, catalogue_.boards));
            return;
        }
        result_.deviceId = board->deviceId;
        result_.boardName = board->name;
        if (const std::wstring* const id = find(board->tree.values, L"HardwareId")) result_.hardwareId = *id;
        if (result_.boardMap.empty() || board->maps.empty()) return;
        const std::vector<std::wstring_view> maps(board->maps.begin(), board->maps.end());
        if (std::find(maps.begin(), maps.end(), result_.boardMap) == maps.end())
            errors_.add(fields_.optional(L"map")->begin, L"The board " + inQuotes(board->deviceId) + L" has no map " +
                                                             inQuotes(result_.boardMap) +
                                                             endWithSuggestion(result_.boardMap, maps));
    }

    void readNetType()
    {
        result_.netType = readRequiredText(errors_, fields_, L"netType");
        if (result_.netType.empty()) return;
        const std::size_t place = fields_.optional(L"netType")->begin;
        const Protocol* const protocol = catalogue_.protocol(result_.netType);
        const Board* const board = catalogue_.board(result_.deviceId);
        if (!protocol) {
            errors_.add(place, L"There is no protocol " + inQuotes(result_.netType) +
                                   endWithSuggestion(result_.netType, catalogue_.protocols));
            return;
        }
        result_.netType = protocol->name;
        if (board && std::none_of(board->configurations.begin(), board->configurations.end(),
                                  [&](const Configuration& c) { return c.protocol == protocol->name; }))
            errors_.add(place, L"No default logical device uses the board " + inQuotes(board->deviceId) +
                                   L" with the protocol " + inQuotes(protocol->name) + L".");
    }

    void readAdapter(const JsonValue& value)
    {
        result_.adapter = readText(errors_, value, L"\"adapter\"");
        std::vector<std::wstring_view> ids;
        for (const Adapter& adapter : catalogue_.adapters)
            ids.push_back(adapter.id);
        if (std::none_of(ids.begin(), ids.end(), [&](auto id) { return equalNoCase(id, result_.adapter); }))
            errors_.add(value.begin, L"There is no adapter with the id " + inQuotes(result_.adapter) +
                                         endWithSuggestion(result_.adapter, ids));
    }

    void checkUniqueness()
    {
        const std::vector<InstalledBoard>& earlier = catalogue_.installedBoards;
        if (!result_.hardwareInstanceId.empty())
            checkUnique(
                errors_, earlier,
                [&](const InstalledBoard& other) {
                    return equalNoCase(other.hardwareInstanceId, result_.hardwareInstanceId);
                },
                fields_.optional(L"hardwareInstanceId")->begin, L"\"hardwareInstanceId\"");
        if (!result_.boardMap.empty() && !result_.deviceId.empty())
            checkUnique(
                errors_, earlier,
                [&](const InstalledBoard& other) {
                    return equalNoCase(other.deviceId, result_.deviceId) &&
                           equalNoCase(other.boardMap, result_.boardMap);
                },
                fields_.optional(L"map")->begin, L"board and map");
    }

    Errors& errors_;
    const Catalogue& catalogue_;
    Fields fields_;
    InstalledBoard result_;
};

}  // namespace

void readAdapters(Reading& reading, const JsonValue* section)
{
    Errors& errors = reading.errors;
    for (const JsonValue& item : itemsOf(errors, section, L"\"adapters\"")) {
        const Fields fields(errors, item, L"an adapter", {L"name", L"id", L"flag"});
        Adapter adapter{readRequiredText(errors, fields, L"name"), readRequiredText(errors, fields, L"id")};
        if (const JsonValue* const flag = fields.optional(L"flag"))
            adapter.flag = static_cast<std::uint8_t>(readNumber(errors, *flag, L"\"flag\"", 255).value_or(0));
        if (!adapter.id.empty())
            checkUnique(
                errors, reading.catalogue.adapters,
                [&](const Adapter& other) { return equalNoCase(other.id, adapter.id); },
                fields.optional(L"id")->begin, L"\"id\"");
        reading.catalogue.adapters.push_back(std::move(adapter));
    }
}

void readInstalledBoards(Reading& reading, const JsonValue* section)
{
    for (const JsonValue& item : itemsOf(reading.errors, section, L"\"installedBoards\""))
        reading.catalogue.installedBoards.push_back(InstalledBoardReader(reading, item).read());
}

void readLogicalNames(Reading& reading, const JsonValue* section)
{
    for (const JsonMember* const entry : readEntries(reading.errors, section, L"\"logicalNames\"")) {
        LogicalName& name = reading.catalogue.logicalNames[entry->name];
        name.values = readValues(reading.errors, entry->value, L"The description of a logical name", &name.texts);
    }
}

void readRuntimeVersions(Reading& reading, const JsonValue* section)
{
    if (!section) return;
    std::array<std::wstring, 5>& versions = reading.catalogue.runtimeVersions;
    const std::vector<JsonValue>& items = itemsOf(reading.errors, section, L"\"runtimeVersions\"");
    if (section->kind == JsonValue::Kind::List && items.size() != versions.size())
        reading.errors.add(section->begin,
                           L"\"runtimeVersions\" must hold five texts, not " + std::to_wstring(items.size()) + L".");
    for (std::size_t i = 0; i < std::min(items.size(), versions.size()); ++i)
        versions[i] = readText(reading.errors, items[i], L"A version of the runtime");
}

}  // namespace catalogue
