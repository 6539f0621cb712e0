#include "configuration/File.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>

#include "configuration/LocatedJson.h"
#include "text.h"

namespace {

using Json = nlohmann::ordered_json;
using Kind = LocatedJson::Kind;

constexpr char format[] = "1";
constexpr std::size_t mostProblems = 20;

// What the interface can carry and a registry key can be called.
constexpr std::size_t longestName = 255;
constexpr std::size_t longestText = 259;

class Checker
{
 public:
    explicit Checker(const std::string& fileName) : fileName_(fileName) {}

    Configuration configuration(const LocatedJson& file);
    void finish() const;

 private:
    void problem(int line, const std::string& where, const std::string& what)
    {
        if (problems_.size() == mostProblems) {
            more_ = true;
            return;
        }
        problems_.push_back(fileName_ + ":" + std::to_string(line) + ": " + (where.empty() ? "" : where + ": ") +
                            what);
    }

    bool is(const LocatedJson& json, Kind kind, const std::string& where, const char* what);
    void checkFormat(const LocatedJson& file);
    void checkName(const LocatedJson& json, const std::string& name, const std::string& where, bool ofObject);
    void readEntries(const LocatedJson& list, Family family, const std::string& where, Configuration& all);
    std::optional<Entry> entry(const LocatedJson& json, Family family, const std::string& where);
    Values values(const LocatedJson& json, const std::string& where);

    const std::string& fileName_;
    std::vector<std::string> problems_;
    bool more_ = false;
};

bool Checker::is(const LocatedJson& json, Kind kind, const std::string& where, const char* what)
{
    if (json.kind == kind) return true;
    problem(json.line, where, what);
    return false;
}

std::string inside(const std::string& where, const std::string& member)
{
    return where.empty() ? member : where + "." + member;
}

bool isControl(char character)
{
    return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
}

void Checker::checkName(const LocatedJson& json, const std::string& name, const std::string& where, bool ofObject)
{
    if (name.empty()) return problem(json.line, where, "a name cannot be empty");
    if (std::any_of(name.begin(), name.end(), isControl))
        return problem(json.line, where, "a name cannot have control characters");
    if (ofObject && name.find('\\') != std::string::npos)
        return problem(json.line, where, R"(a name cannot have a "\")");
    const std::optional<std::size_t> length = ansiLength(name);
    if (!length) return problem(json.line, where, "the name has characters that the system's ANSI code page lacks");
    if (*length > longestName) problem(json.line, where, "a name has at most 255 characters");
}

Values Checker::values(const LocatedJson& json, const std::string& where)
{
    Values values;
    std::set<std::wstring> seen;
    if (!is(json, Kind::Object, where, "must be an object of values")) return values;
    for (const auto& [name, text] : json.members) {
        const std::string here = inside(where, name);
        checkName(text, name, here, false);
        if (!seen.insert(folded(name)).second)
            problem(text.line, here, "this value is given twice; upper and lower case are the same");
        if (!is(text, Kind::Text, here, "a value is a text in double quotes")) continue;
        const std::optional<std::size_t> length = ansiLength(text.text);
        if (text.text.find('\0') != std::string::npos) {
            problem(text.line, here, "a value cannot have a zero character");
        } else if (!length) {
            problem(text.line, here, "the value has characters that the system's ANSI code page lacks");
        } else if (*length > longestText) {
            problem(text.line, here, "a value has at most 259 characters");
        }
        values.push_back({name, text.text});
    }
    return values;
}

std::optional<Entry> Checker::entry(const LocatedJson& json, Family family, const std::string& where)
{
    if (!is(json, Kind::Object, where, "must be an object with \"name\" and \"values\"")) return std::nullopt;
    Entry entry;
    entry.family = family;
    std::vector<std::string> seen;
    for (const auto& [member, value] : json.members) {
        const std::string here = inside(where, member);
        if (std::find(seen.begin(), seen.end(), member) != seen.end()) problem(value.line, here, "is given twice");
        seen.push_back(member);
        if (member == "name") {
            if (!is(value, Kind::Text, here, "a name is a text in double quotes")) continue;
            checkName(value, value.text, here, true);
            entry.name = value.text;
        } else if (member == "values") {
            entry.values = values(value, here);
        } else if (member == "ndi" && family == Family::Device) {
            entry.ndi = values(value, here);
        } else {
            problem(value.line, here,
                    family == Family::Device ? R"(there is no such member; there are "name", "values" and "ndi")"
                                             : R"(there is no such member; there are "name" and "values")");
        }
    }
    if (std::find(seen.begin(), seen.end(), "name") == seen.end()) problem(json.line, where, "\"name\" is missing");
    return entry;
}

void Checker::readEntries(const LocatedJson& list, Family family, const std::string& where, Configuration& all)
{
    if (!is(list, Kind::Array, where, "must be a list in square brackets")) return;
    std::set<std::wstring> seen;
    for (std::size_t i = 0; i < list.items.size(); ++i) {
        const std::string here = where + "[" + std::to_string(i) + "]";
        std::optional<Entry> read = entry(list.items[i], family, here);
        if (!read) continue;
        if (!seen.insert(folded(read->name)).second)
            problem(list.items[i].line, here,
                    described(*read) + " is given twice; upper and lower case are the same");
        all.push_back(*std::move(read));
    }
}

void Checker::checkFormat(const LocatedJson& file)
{
    const auto at = std::find_if(file.members.begin(), file.members.end(),
                                 [](const auto& member) { return member.first == "format"; });
    if (at == file.members.end()) {
        problem(file.line, "", "\"format\" is missing; this program writes and reads \"format\": 1");
    } else if (at->second.kind != Kind::Number || at->second.text != format) {
        problem(at->second.line, "format", "must be 1; another format is not known to this program");
    }
}

Configuration Checker::configuration(const LocatedJson& file)
{
    Configuration all;
    if (!is(file, Kind::Object, "", "a configuration is an object in curly brackets")) return all;
    checkFormat(file);
    std::vector<std::string> seen;
    for (const auto& [member, value] : file.members) {
        if (std::find(seen.begin(), seen.end(), member) != seen.end()) problem(value.line, member, "is given twice");
        seen.push_back(member);
        if (member == "devices") {
            readEntries(value, Family::Device, member, all);
        } else if (member == "names") {
            readEntries(value, Family::Name, member, all);
        } else if (member != "format") {
            problem(value.line, member, R"(there is no such member; there are "format", "devices" and "names")");
        }
    }
    // Names stand for devices, so devices come first whatever the file's order.
    std::stable_partition(all.begin(), all.end(), [](const Entry& e) { return e.family == Family::Device; });
    return all;
}

void Checker::finish() const
{
    if (problems_.empty()) return;
    std::vector<std::string> problems = problems_;
    if (more_) problems.emplace_back("there are more mistakes");
    throw BadFile(fileName_ + " cannot be imported; nothing was changed", std::move(problems));
}

Json valuesJson(const Values& values)
{
    Json json = Json::object();
    for (const Value& value : values)
        json[value.name] = value.text;
    return json;
}

}  // namespace

std::string fileText(const Configuration& configuration)
{
    Json devices = Json::array();
    Json names = Json::array();
    for (const Entry& entry : configuration) {
        Json json = {{"name", entry.name}, {"values", valuesJson(entry.values)}};
        if (entry.family == Family::Name) {
            names.push_back(std::move(json));
            continue;
        }
        if (!entry.ndi.empty()) json["ndi"] = valuesJson(entry.ndi);
        devices.push_back(std::move(json));
    }
    Json file = {{"format", 1}};
    if (!devices.empty()) file["devices"] = std::move(devices);
    if (!names.empty()) file["names"] = std::move(names);
    return file.dump(2) + "\n";
}

Configuration readFileText(std::string_view text, const std::string& fileName)
{
    Checker checker(fileName);
    Configuration configuration;
    try {
        configuration = checker.configuration(parseLocatedJson(text));
    } catch (const JsonSyntaxError& error) {
        throw BadFile(
            fileName + " cannot be imported; nothing was changed",
            {fileName + ":" + std::to_string(error.line) + ":" + std::to_string(error.column) + ": " + error.what()});
    }
    checker.finish();
    return configuration;
}
