#include "dispatch/Operation.h"

#include "base/Text.h"

namespace srv {

namespace {

void show(std::string* shown, const std::string& field)
{
    if (!shown) return;
    if (!shown->empty()) *shown += ", ";
    *shown += field;
}

void show(std::string* shown, const Text& field)
{
    if (shown) show(shown, field ? inQuotes(*field) : "NULL");
}

}  // namespace

Fields read(RequestReader& reader, Text& field, std::string* shown)
{
    if (!reader.text(field)) return Fields::Malformed;
    show(shown, field);
    return Fields::Good;
}

Fields read(RequestReader& reader, Required& field, std::string* shown)
{
    Text text;
    if (const Fields found = read(reader, text, shown); found != Fields::Good) return found;
    if (!text || text->empty()) return Fields::Missing;
    field.text = *text;
    return Fields::Good;
}

Fields read(RequestReader& reader, Given& field, std::string* shown)
{
    Text text;
    if (const Fields found = read(reader, text, shown); found != Fields::Good) return found;
    if (!text) return Fields::Missing;
    field.text = *text;
    return Fields::Good;
}

Fields read(RequestReader& reader, std::uint32_t& field, std::string* shown)
{
    if (!reader.u32(field)) return Fields::Malformed;
    if (shown) show(shown, std::to_string(field));
    return Fields::Good;
}

Fields read(RequestReader& reader, Capacity& field, std::string* shown)
{
    return read(reader, field.bytes, shown);
}

Fields read(RequestReader& reader, Ignored&, std::string* shown)
{
    std::uint32_t value = 0;
    return read(reader, value, shown);
}

}  // namespace srv
