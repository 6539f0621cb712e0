#include "Fields.h"
#include "like.h"
#include "readers.h"

namespace catalogue {

namespace {

void readBoard(Reading& reading, Board& board, const JsonValue& entry)
{
    Errors& errors = reading.errors;
    const Fields fields(
        errors, entry, L"a board",
        {L"like", L"values", L"keys", L"plugAndPlay", L"maps", L"notSupported", L"texts", L"parameters"});
    board.texts = readTextSetNames(reading, fields.optional(L"texts"));
    board.parameters = readParameters(errors, fields.optional(L"parameters"));
    if (const JsonValue* const value = fields.optional(L"plugAndPlay"))
        board.plugAndPlay = readBoolean(errors, *value, L"\"plugAndPlay\"").value_or(false);

    const JsonValue* const values = fields.required(L"values");
    refuseValue(errors, values, L"DeviceID");
    if (values) {
        board.tree.values = readValues(errors, *values, L"\"values\"", &board.texts);
        for (const std::wstring_view name : {L"BoardName", L"Alias", L"Asic_Type", L"DescText", L"BusType"})
            requireValue(errors, *values, board.tree.values, name);
        if (board.plugAndPlay) requireValue(errors, *values, board.tree.values, L"HardwareId");
        if (const std::wstring* const name = find(board.tree.values, L"BoardName")) board.name = *name;
    }
    board.tree.values[L"DeviceID"] = board.deviceId;
    for (const JsonMember* const key : readEntries(errors, fields.optional(L"keys"), L"\"keys\""))
        board.tree.keys[key->name] = readNode(errors, key->value);

    if (const JsonValue* const maps = fields.required(L"maps")) {
        board.maps = readTextList(errors, *maps, L"\"maps\"");
        if (maps->kind == JsonValue::Kind::List && board.maps.empty())
            errors.add(maps->begin, L"A board needs at least one map, the name of its first instance.");
    }
    if (const JsonValue* const list = fields.optional(L"notSupported"))
        board.notSupported = readTextList(errors, *list, L"\"notSupported\"");
}

// Boards are looked up by these values, too.
class UniqueValues
{
 public:
    void check(Errors& errors, const Board& board, const JsonValue& entry)
    {
        const JsonValue* const values = entry.member(L"values");
        for (const std::wstring_view name : {L"BoardName", L"Alias", L"HardwareId"}) {
            const JsonValue* const value = values ? values->member(name) : nullptr;
            if (!value || value->text.empty()) continue;
            const auto [at, isNew] = seen_[std::wstring(name)].emplace(value->text, board.deviceId);
            if (!isNew)
                errors.add(entry, value->begin,
                           L"The " + inQuotes(name) + L" " + inQuotes(value->text) + L" is that of the board " +
                               inQuotes(at->second) + L" already.");
        }
    }

 private:
    Map<Map<std::wstring>> seen_;
};

}  // namespace

void readBoards(Reading& reading, const JsonValue* section)
{
    if (!section) return;
    const JsonValue resolved = resolveLikes(reading.errors, *section);
    UniqueValues unique;
    for (const JsonMember* const entry : readEntries(reading.errors, &resolved, L"\"boards\"")) {
        Board& board = reading.catalogue.boards[entry->name];
        board.deviceId = entry->name;
        readBoard(reading, board, entry->value);
        unique.check(reading.errors, board, entry->value);
    }
}

}  // namespace catalogue
