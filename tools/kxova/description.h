// What a parameter of a logical device may be set to, as the server describes it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "results.h"

struct Choice
{
    std::string value;
    std::string text;  // in the user's language; may be empty
};

struct Description
{
    std::string type;
    // Empty where the description does not have them.
    std::string min, max, step, base, standard, unit;
    std::vector<Choice> choices;  // of the type "enum"

    // What is allowed, in words: "one of 0 (DP), 1 (Standard)", "1 to 126", "a text".
    std::string allowed() const;
};

// Nothing for a parameter that is not described.
std::optional<Description> describe(const std::string& device, const std::string& parameter);

// Whether there is one; costs one request.
bool isDescribed(const std::string& device, const std::string& parameter);

// Throws a Failure that says what would be allowed when the parameter must not be set to the value. Returns the value
// that is meant: a number for "min", "max" and "default".
std::string checkedValue(const std::string& device, const std::string& parameter, const std::string& value);
