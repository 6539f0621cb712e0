#include "load.h"

#include <fstream>
#include <iterator>

#include "Fields.h"
#include "readers.h"

namespace catalogue {

namespace {

constexpr std::uint32_t knownFormat = 1;
constexpr std::uintmax_t maximumFileSize = 4 * 1024 * 1024;  // many times what a large catalogue needs

LoadResult fileError(const std::filesystem::path& file, std::wstring message)
{
    LoadResult result;
    result.errors.push_back({file, 0, 0, {}, std::move(message)});
    return result;
}

// Two members of these names would be one registry entry; of two with equal names, readers would see only one.
void reportTwins(Errors& errors, const Source& source, const JsonValue& value)
{
    Map<std::size_t> seen;
    for (const JsonMember& member : value.members) {
        const auto [at, isNew] = seen.emplace(member.name, member.begin);
        if (!isNew)
            errors.add(member.begin, L"The name " + inQuotes(member.name) +
                                         L" stands here a second time, after line " +
                                         std::to_wstring(source.positionOf(at->second).line) +
                                         L" (upper and lower case are the same).");
        reportTwins(errors, source, member.value);
    }
    for (const JsonValue& item : value.items)
        reportTwins(errors, source, item);
}

void readDocument(Errors& errors, const JsonValue& document, Catalogue& catalogue)
{
    const Fields fields(errors, document, L"a catalogue",
                        {L"format", L"texts", L"parameters", L"protocols", L"boards", L"defaultLogicalDevices",
                         L"adapters", L"installedBoards", L"logicalNames", L"specialValues", L"runtimeVersions"});
    if (const JsonValue* const format = fields.required(L"format"))
        if (readNumber(errors, *format, L"\"format\"", knownFormat).value_or(knownFormat) != knownFormat)
            errors.add(format->begin, L"\"format\" must be " + std::to_wstring(knownFormat) + L".");
    Reading reading{errors, catalogue, {}};
    readTextSets(reading, fields.optional(L"texts"));
    catalogue.parameters = readParameters(errors, fields.optional(L"parameters"));
    readProtocols(reading, fields.required(L"protocols"));
    readBoards(reading, fields.required(L"boards"));
    readDefaultLogicalDevices(reading, fields.required(L"defaultLogicalDevices"));
    readAdapters(reading, fields.optional(L"adapters"));
    readInstalledBoards(reading, fields.optional(L"installedBoards"));
    readLogicalNames(reading, fields.optional(L"logicalNames"));
    if (const JsonValue* const values = fields.optional(L"specialValues"))
        catalogue.specialValues = readValues(errors, *values, L"\"specialValues\"", nullptr);
    readRuntimeVersions(reading, fields.required(L"runtimeVersions"));
}

}  // namespace

std::wstring LoadError::text() const
{
    std::wstring result = file.wstring();
    if (line > 0) result += L":" + std::to_wstring(line) + L":" + std::to_wstring(column);
    return result + L": " + message;
}

LoadResult load(const std::filesystem::path& file)
{
    std::error_code failure;
    const std::filesystem::file_status status = std::filesystem::status(file, failure);
    if (!std::filesystem::exists(status)) return fileError(file, L"There is no such file.");
    if (std::filesystem::is_directory(status)) return fileError(file, L"This is a folder, not a file.");
    if (const auto size = std::filesystem::file_size(file, failure); !failure && size > maximumFileSize)
        return fileError(file, L"The file is larger than 4 MiB, which no catalogue is.");
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return fileError(file, L"The file cannot be opened for reading.");
    const std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    if (stream.bad()) return fileError(file, L"The file cannot be read to its end.");
    return parse(text, file);
}

LoadResult parse(std::string_view utf8, const std::filesystem::path& name)
{
    const Source source(utf8, name);
    Errors errors(source);
    LoadResult result;
    for (const std::size_t offset : source.invalidBytes())
        errors.add(offset, L"This line holds a byte that is no UTF-8; the file must be saved as UTF-8.");
    if (errors.count() > 0) {
        errors.moveTo(result, nullptr);
        return result;
    }
    JsonResult json = parseJson(source);
    if (!json.document) {
        errors.add(json.error.offset, std::move(json.error.message));
        errors.moveTo(result, nullptr);
        return result;
    }
    auto catalogue = std::make_shared<Catalogue>();
    reportTwins(errors, source, *json.document);
    readDocument(errors, *json.document, *catalogue);
    if (errors.count() == 0) {
        result.catalogue = std::move(catalogue);
    } else {
        errors.moveTo(result, &*json.document);
    }
    return result;
}

}  // namespace catalogue
