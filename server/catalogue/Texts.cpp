#include "Texts.h"

#include <array>

namespace catalogue {

namespace {

struct LanguageRow
{
    Language language;
    std::wstring_view code;
    std::wstring_view extension;
};

constexpr std::array<LanguageRow, 7> languages{{{Language::De, L"DE", L"A"},
                                                {Language::En, L"EN", L"B"},
                                                {Language::Fr, L"FR", L"C"},
                                                {Language::Es, L"ES", L"D"},
                                                {Language::It, L"IT", L"E"},
                                                {Language::Ja, L"JA", L"J"},
                                                {Language::Zh, L"ZH", L"K"}}};

}  // namespace

std::optional<Language> languageFromCode(std::wstring_view code)
{
    for (const LanguageRow& row : languages)
        if (equalNoCase(row.code, code) || equalNoCase(row.extension, code)) return row.language;
    return std::nullopt;
}

std::wstring_view languageCode(Language language)
{
    return languages[static_cast<std::size_t>(language)].code;
}

const std::wstring& textIn(const LanguageTexts& texts, Language language)
{
    static const std::wstring none;
    auto at = texts.find(language);
    if (at == texts.end()) at = texts.find(Language::En);
    return at == texts.end() ? none : at->second;
}

const std::wstring* Texts::find(std::wstring_view id, Language language) const
{
    const LanguageTexts* const texts = catalogue::find(byId, id);
    return texts ? &textIn(*texts, language) : nullptr;
}

}  // namespace catalogue
