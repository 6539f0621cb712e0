// Texts by language.
#pragma once

#include <array>
#include <map>
#include <optional>

#include "LessNoCase.h"

namespace catalogue {

enum class Language { De, En, Fr, Es, It, Ja, Zh };

constexpr std::array<Language, 7> allLanguages{Language::De, Language::En, Language::Fr, Language::Es,
                                               Language::It, Language::Ja, Language::Zh};

// From a two-letter code ("DE", "EN", "FR", "ES", "IT", "JA", "ZH") or an extension letter ("A" to "E", "J", "K"), in
// any case.
std::optional<Language> languageFromCode(std::wstring_view code);

// The two-letter code.
std::wstring_view languageCode(Language language);

// German and English are always among them, for the loader sees to it.
using LanguageTexts = std::map<Language, std::wstring>;

// The text in a language, else in English.
const std::wstring& textIn(const LanguageTexts& texts, Language language);

// Texts by string id: "BaudrateResource\9600", or the name of a value whose text differs by language ("DescText").
struct Texts
{
    Map<LanguageTexts> byId;

    // The text in a language, else in English; nullptr for an id that is not there.
    const std::wstring* find(std::wstring_view id, Language language) const;
};

}  // namespace catalogue
