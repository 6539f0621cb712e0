#include "Fields.h"
#include "readers.h"

namespace catalogue {

void readTextSets(Reading& reading, const JsonValue* section)
{
    Errors& errors = reading.errors;
    for (const JsonMember* const set : readEntries(errors, section, L"\"texts\"")) {
        Texts& texts = reading.textSets[set->name];
        for (const JsonMember* const resource : readEntries(errors, &set->value, L"A set of texts"))
            for (const JsonMember* const key : readEntries(errors, &resource->value, L"A resource"))
                texts.byId[resource->name + L"\\" + key->name] = readLanguageTexts(errors, key->value);
    }
}

Texts readTextSetNames(Reading& reading, const JsonValue* list)
{
    Texts texts;
    if (!list) return texts;
    const std::vector<std::wstring> names = readTextList(reading.errors, *list, L"\"texts\"");
    for (std::size_t i = 0; i < names.size(); ++i) {
        const Texts* const set = find(reading.textSets, names[i]);
        if (!set) {
            reading.errors.add(list->items[i].begin, L"There is no set of texts " + inQuotes(names[i]) +
                                                         endWithSuggestion(names[i], reading.textSets));
            continue;
        }
        for (const auto& [id, byLanguage] : set->byId)
            texts.byId[id] = byLanguage;
    }
    return texts;
}

}  // namespace catalogue
