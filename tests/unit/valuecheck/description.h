// A description that a test writes down, and what the checker says to a value.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "kxLegacy/valueCheck.h"

struct Description
{
    std::map<std::string, std::string> attributes;
    std::vector<std::string> items = {};
};

struct Verdict
{
    long result;
    std::string value;  // as it is behind the check

    bool operator==(const Verdict&) const = default;
};

class WrittenDescription final : public ParamDescription
{
 public:
    explicit WrittenDescription(const Description& description) : description_(description) {}
    bool attribute(const char* name, CString& text) override
    {
        asked.emplace_back(name);
        const auto found = description_.attributes.find(name);
        if (found == description_.attributes.end()) return false;
        text = found->second.c_str();
        return true;
    }
    void items(CStringList& list) override
    {
        asked.emplace_back("items");
        for (const std::string& item : description_.items)
            list.AddTail(item.c_str());
    }

    std::vector<std::string> asked;

 private:
    const Description& description_;
};

inline Verdict check(const Description& description, const std::string& value)
{
    const LocalCall call("LogDeviceCheckValue: ");
    WrittenDescription written(description);
    CString text = value.c_str();
    const long result = checkValue(call, "parameter", written, text);
    return {result, text.GetString()};
}
