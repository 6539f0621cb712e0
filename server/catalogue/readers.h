// The sections of a catalogue, in the order in which they are read: each may refer to those before it.
#pragma once

#include <functional>

#include "Errors.h"

namespace catalogue {

// What reading has got so far.
struct Reading
{
    Errors& errors;
    Catalogue& catalogue;
    Map<Texts> textSets;  // texts are written once, in sets that boards and protocols name
};

// Each takes a section as it stands in the file, or nullptr where there is none, and reports all that is wrong.
void readTextSets(Reading& reading, const JsonValue* section);
void readProtocols(Reading& reading, const JsonValue* section);
void readBoards(Reading& reading, const JsonValue* section);
void readDefaultLogicalDevices(Reading& reading, const JsonValue* section);
void readAdapters(Reading& reading, const JsonValue* section);
void readInstalledBoards(Reading& reading, const JsonValue* section);
void readLogicalNames(Reading& reading, const JsonValue* section);
void readRuntimeVersions(Reading& reading, const JsonValue* section);

Map<ParameterDescription> readParameters(Errors& errors, const JsonValue* section);

// The texts of the sets that a list names.
Texts readTextSetNames(Reading& reading, const JsonValue* list);

// Parameter name to description, or nullptr.
using Describe = std::function<const ParameterDescription*(std::wstring_view)>;

// Reports each value of an object, within an entry, that its description does not allow.
void checkAgainstDescriptions(Errors& errors, const JsonValue& entry, const JsonValue& object,
                              const Describe& describe);

// A value that must be among others, such as the name of every board.
void requireValue(Errors& errors, const JsonValue& object, const Values& values, std::wstring_view name);

// Reports a value that follows from the rest of an entry and would only be written to contradict it.
void refuseValue(Errors& errors, const JsonValue* object, std::wstring_view name);

// One sentence about a value that a description does not allow.
std::wstring refusal(std::wstring_view parameter, std::wstring_view value, const ParameterDescription& description);

}  // namespace catalogue
