#include "description.h"

#include "calls.h"
#include "hints.h"
#include "kxframework.h"
#include "temporary.h"

namespace {

std::string attribute(const std::string& device, const std::string& parameter, const char* name)
{
    CString text;
    const long result = LogDeviceGetParamDesc(toAnsi(device).c_str(), toAnsi(parameter).c_str(), name, &text);
    if (result == DCFG_ERR_NOT_FOUND) return {};
    require(result, "read the description of " + inQuotes(parameter) + " of " + logicalDevice(device));
    return toUtf8(text.GetString());
}

std::vector<Choice> choices(const std::string& device, const std::string& parameter)
{
    const std::string ansiDevice = toAnsi(device);
    const std::string ansiParameter = toAnsi(parameter);
    CStringList items;
    DCFG_LogDeviceGetMostSpecializedEnumList(ansiDevice.c_str(), ansiParameter.c_str(), &items);
    std::vector<Choice> all;
    for (POSITION at = items.GetHeadPosition(); at;) {
        const std::string item = items.GetNext(at).GetString();
        const std::string value = item.substr(0, item.find('/'));
        CString text;
        const bool translated = DCFG_LogDeviceGetEnumStringLang(ansiDevice.c_str(), ansiParameter.c_str(),
                                                                value.c_str(), &text) == ERROR_SUCCESS;
        all.push_back({toUtf8(value), translated ? toUtf8(text.GetString()) : std::string()});
    }
    return all;
}

// Some values are written by names, such as "STD", and stored as numbers. Descriptions speak of what is stored.
std::string storedForm(const std::string& device, const std::string& parameter, const std::string& value)
{
    const TemporaryDevice copy(device);
    const std::string ansiCopy = toAnsi(copy.name());
    const std::string ansiParameter = toAnsi(parameter);
    const std::string attempt = "check " + inQuotes(parameter) + " of " + logicalDevice(device);
    require(LogDeviceSetValue(ansiCopy.c_str(), ansiParameter.c_str(), toAnsi(value).c_str()), attempt);
    return textOf(
        [&](auto... out) { return DCFG_LogDeviceGetValue(ansiCopy.c_str(), ansiParameter.c_str(), out...); },
        attempt);
}

}  // namespace

std::string Description::allowed() const
{
    if (type == "enum") {
        std::string list;
        for (const Choice& choice : choices) {
            if (!list.empty()) list += ", ";
            list += choice.value;
            if (!choice.text.empty() && choice.text != choice.value) list += " (" + choice.text + ")";
        }
        return "one of " + list;
    }
    if (type == "bool") return "\"true\" or \"false\"";
    if (type == "string") return "any text";
    std::string text = "a number";
    if (!min.empty() && !max.empty()) {
        text = min + " to " + max;
    } else if (!min.empty()) {
        text = min + " or more";
    } else if (!max.empty()) {
        text = max + " or less";
    }
    if (!step.empty() && step != "1") text += " in steps of " + step;
    if (!base.empty() && base != "10") text += ", written in base " + base;
    if (!unit.empty()) text += ", in " + unit;
    return text;
}

std::optional<Description> describe(const std::string& device, const std::string& parameter)
{
    Description description;
    description.type = attribute(device, parameter, "type");
    if (description.type.empty()) return std::nullopt;
    description.min = attribute(device, parameter, "min");
    description.max = attribute(device, parameter, "max");
    description.step = attribute(device, parameter, "step");
    description.base = attribute(device, parameter, "base");
    description.standard = attribute(device, parameter, "default");
    description.unit = attribute(device, parameter, "unit");
    if (description.type == "enum") description.choices = choices(device, parameter);
    return description;
}

bool isDescribed(const std::string& device, const std::string& parameter)
{
    return !attribute(device, parameter, "type").empty();
}

std::string checkedValue(const std::string& device, const std::string& parameter, const std::string& value)
{
    const std::string stored = storedForm(device, parameter, value);
    CString text = toAnsi(stored).c_str();
    const long result = LogDeviceCheckValue(toAnsi(device).c_str(), toAnsi(parameter).c_str(), text);
    if (result != ERROR_SUCCESS) {
        const std::optional<Description> description = describe(device, parameter);
        Failure failure("set " + inQuotes(parameter) + " of " + logicalDevice(device) + " to " + inQuotes(value),
                        result);
        if (description) failure.advise("allowed: " + description->allowed());
        throw failure;
    }
    const std::string meant = toUtf8(text.GetString());
    return meant == stored ? value : meant;
}
