#include "main/options.h"

#include <windows.h>

#include <objbase.h>
#include <shlobj.h>

#include <cstdio>

#include "base/Text.h"
#include "catalogue/load.h"

namespace srv {

std::filesystem::path programFile()
{
    std::wstring program(32768, L'\0');
    program.resize(GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())));
    return program;
}

std::filesystem::path defaultCatalogue()
{
    return programFile().replace_filename(L"catalogue.json");
}

std::filesystem::path serviceLogFile()
{
    // Not the environment's ProgramData: a service may have another one than the administrator who looks for its log.
    wchar_t* folder = nullptr;
    const HRESULT found = SHGetKnownFolderPath(FOLDERID_ProgramData, 0, nullptr, &folder);
    const std::filesystem::path base = SUCCEEDED(found) ? folder : L"C:\\ProgramData";
    CoTaskMemFree(folder);
    return base / L"TAVRONE" / L"NORIX" / L"kxovasrvx.log";
}

std::shared_ptr<const catalogue::Catalogue> loadCatalogue(const std::filesystem::path& file,
                                                          std::vector<std::string>& errors)
{
    const catalogue::LoadResult loaded = catalogue::load(file);
    for (const catalogue::LoadError& error : loaded.errors)
        errors.push_back(utf8(error.text()));
    if (loaded.omitted > 0) errors.push_back("... and " + std::to_string(loaded.omitted) + " more");
    return loaded.catalogue;
}

void complain(const std::string& sentence)
{
    std::fprintf(stderr, "kxovasrvx: %s\n", sentence.c_str());
}

}  // namespace srv
