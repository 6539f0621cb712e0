#include "Input.h"
#include "kxframework.h"
#include "kxova/language.h"
#include "kxova/results.h"
#include "targets.h"

void fuzzCommandLine(const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    const int index = static_cast<std::int8_t>(input.byte());
    const std::string name = input.line();
    const CString commandLine(input.line().c_str());

    CString value = "before";
    if (DCFG_GetCmdLineParameter(commandLine, name.c_str(), value, index) == DCFG_ERR_NO_MORE_ITEMS)
        require(value == CString("before"), "a parameter that is not there leaves the text as it was");

    CString language;
    CString extension;
    const long result = DCFG_GetLanguageFromCommandline(commandLine, &language, &extension);
    require(result == 0 || result == 1, "there always is a language");

    char code[260];
    ConvertOsToTALUNLang(commandLine, code);
    ConvertTALUNToOsLang(commandLine, code);
    char letter = 0;
    GetLanguage(&letter);
}
