// The interface's calls with this program's texts: UTF-8 in and out, a Failure for a result that is not 0.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "kxovaapi.h"
#include "results.h"
#include "text.h"
#include "values.h"

// A buffer of the interface's largest text.
struct Text
{
    char buffer[260] = {};
    unsigned long length = sizeof buffer;

    std::string utf8() const { return toUtf8({buffer, length}); }
};

inline std::string inQuotes(const std::string& utf8)
{
    return "\"" + utf8 + "\"";
}

// One text. ask(buffer, &length)
template <typename Ask>
std::string textOf(Ask ask, const std::string& attempt, const std::string& hintWhenNotFound = {})
{
    Text text;
    require(ask(text.buffer, &text.length), attempt, hintWhenNotFound);
    return text.utf8();
}

// One text, or nothing where what was asked for does not exist.
template <typename Ask>
std::optional<std::string> textIfAny(Ask ask, const std::string& attempt)
{
    Text text;
    const long result = ask(text.buffer, &text.length);
    if (result == DCFG_ERR_NOT_FOUND) return std::nullopt;
    require(result, attempt);
    return text.utf8();
}

// Whether something exists, by the result of the question.
inline bool found(long result, const std::string& attempt)
{
    if (result != DCFG_ERR_NOT_FOUND) require(result, attempt);
    return result == ERROR_SUCCESS;
}

// Item 0, 1, 2, … until the list ends. ask(index, buffer, &length)
template <typename Ask>
std::vector<std::string> allTexts(Ask ask, const std::string& attempt, const std::string& hintWhenNotFound = {})
{
    std::vector<std::string> texts;
    for (unsigned long i = 0;; ++i) {
        Text text;
        const long result = ask(i, text.buffer, &text.length);
        if (result == DCFG_ERR_NO_MORE_ITEMS) return texts;
        require(result, attempt, hintWhenNotFound);
        texts.push_back(text.utf8());
    }
}

// The same for names with their texts. ask(index, name, &nameLength, text, &textLength)
template <typename Ask>
Values allValues(Ask ask, const std::string& attempt, const std::string& hintWhenNotFound = {})
{
    Values values;
    for (unsigned long i = 0;; ++i) {
        Text name;
        Text text;
        const long result = ask(i, name.buffer, &name.length, text.buffer, &text.length);
        if (result == DCFG_ERR_NO_MORE_ITEMS) return values;
        require(result, attempt, hintWhenNotFound);
        values.push_back({name.utf8(), text.utf8()});
    }
}
