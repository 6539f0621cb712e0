#include "results.h"

#include <windows.h>

#include "kxovaapi.h"
#include "text.h"
#include "wire/frame.h"

struct Failure::Explanation
{
    std::string name;
    std::string meaning;
    std::string hint;
    int status = exitFailed;
};

namespace {

struct Row
{
    long result;
    const char* name;
    const char* meaning;
    const char* hint;
    int status;
};

constexpr char startHint[] = "start it with \"kxovasrvx run\"";

constexpr Row rows[] = {
    {ERROR_FILE_NOT_FOUND, "ERROR_FILE_NOT_FOUND", "it does not exist", "", exitNotFound},
    {ERROR_PATH_NOT_FOUND, "ERROR_PATH_NOT_FOUND", "its folder does not exist", "", exitNotFound},
    {ERROR_ACCESS_DENIED, "ERROR_ACCESS_DENIED", "access is denied", "", exitRefused},
    {ERROR_INVALID_PARAMETER, "ERROR_INVALID_PARAMETER", "an argument is missing or not allowed", "", exitRefused},
    {ERROR_BUFFER_OVERFLOW, "ERROR_BUFFER_OVERFLOW", "the texts are too long for one request", "shorten them",
     exitRefused},
    {ERROR_CALL_NOT_IMPLEMENTED, "ERROR_CALL_NOT_IMPLEMENTED", "the function is not available", "", exitFailed},
    {ERROR_ALREADY_EXISTS, "ERROR_ALREADY_EXISTS", "it exists already", "", exitRefused},
    {ERROR_DEVICE_NOT_CONNECTED, "ERROR_DEVICE_NOT_CONNECTED", "it is not connected", "", exitFailed},
    {ERROR_NOT_ENOUGH_QUOTA, "ERROR_NOT_ENOUGH_QUOTA", "the server has no room for another one", "", exitRefused},
    {ERROR_DEVICE_NOT_AVAILABLE, "ERROR_DEVICE_NOT_AVAILABLE", "it is connected but does not work", "", exitFailed},
    {ERROR_NO_UNICODE_TRANSLATION, "ERROR_NO_UNICODE_TRANSLATION",
     "it has characters that the system's ANSI code page lacks", "", exitRefused},
    {DCFG_ERR_BUFFER_TOO_SHORT, "DCFG_ERR_BUFFER_TOO_SHORT", "the answer is longer than the interface allows", "",
     exitFailed},
    {DCFG_ERR_NO_MORE_ITEMS, "DCFG_ERR_NO_MORE_ITEMS", "there are no more items", "", exitNotFound},
    {DCFG_ERR_NOT_FOUND, "DCFG_ERR_NOT_FOUND", "it does not exist", "", exitNotFound},
    {DCFG_ERR_NOT_SUPPORTED, "DCFG_ERR_NOT_SUPPORTED", "the server does not support this", "", exitFailed},
    {DCFG_ERR_DELETE_DISABLED, "DCFG_ERR_DELETE_DISABLED", "it is protected against deletion",
     "set its value \"enable_delete\" to \"true\" first", exitRefused},
    {DCFG_VALUE_NOT_IN_ENUM, "DCFG_VALUE_NOT_IN_ENUM", "the value is not in the parameter's list", "", exitRefused},
    {DCFG_VALUE_NOT_BOOL, "DCFG_VALUE_NOT_BOOL", "the value is neither \"true\" nor \"false\"", "", exitRefused},
    {DCFG_SET_VAL_LESS_THAN_MIN, "DCFG_SET_VAL_LESS_THAN_MIN", "the value is below the minimum", "", exitRefused},
    {DCFG_SET_VAL_BIGGER_THAN_MAX, "DCFG_SET_VAL_BIGGER_THAN_MAX", "the value is above the maximum", "", exitRefused},
    {DCFG_NOT_IN_STEP, "DCFG_NOT_IN_STEP", "the value is not on the parameter's step grid", "", exitRefused},
    {DCFG_PROFILE_NO_VALUE, "DCFG_PROFILE_NO_VALUE", "the bus profile has no such value", "", exitRefused},
    {DCFG_INVALID_RESPONSE, "DCFG_INVALID_RESPONSE", "the server's answer is of an unknown kind",
     "check that library and server belong together", exitFailed},
};

}  // namespace

std::string windowsText(long result)
{
    char text[512];
    const DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        static_cast<DWORD>(result), 0, text, sizeof text, nullptr);
    std::string words = toUtf8({text, length});
    while (!words.empty() && (words.back() == '\n' || words.back() == '\r' || words.back() == '.'))
        words.pop_back();
    return words.empty() ? "the call failed" : words;
}

bool serverIsRunning()
{
    const std::wstring pipe = std::wstring(LR"(\\.\pipe\)") + wire::channelName;
    return WaitNamedPipeW(pipe.c_str(), 1) || GetLastError() != ERROR_FILE_NOT_FOUND;
}

Failure::Explanation Failure::explain(long result)
{
    if (result == ERROR_READ_FAULT) {
        if (serverIsRunning()) {
            return {"ERROR_READ_FAULT", "the configuration server does not answer",
                    "look into the server's log; \"kxovasrvx run --log-level debug\" shows each request",
                    exitNoAnswer};
        }
        return {"ERROR_READ_FAULT", "the configuration server is not running", startHint, exitNoServer};
    }
    // What the registry access reports where nobody offers its pipe.
    if ((result == ERROR_INVALID_HANDLE || result == ERROR_PIPE_NOT_CONNECTED) && !serverIsRunning()) {
        return {result == ERROR_INVALID_HANDLE ? "ERROR_INVALID_HANDLE" : "ERROR_PIPE_NOT_CONNECTED",
                "the configuration server is not running", startHint, exitNoServer};
    }
    for (const Row& row : rows) {
        if (row.result == result) return {row.name, row.meaning, row.hint, row.status};
    }
    if (result > 0 && result < 8000) return {"Windows error", windowsText(result), "", exitFailed};
    return {"unknown result", "the server refused it", "", exitFailed};
}

Failure::Failure(const std::string& attempt, long result, const std::string& hintWhenNotFound)
    : Failure(attempt, result, explain(result))
{
    if (status_ == exitNotFound) hint_ = hintWhenNotFound;
}

Failure::Failure(const std::string& attempt, long result, const Explanation& explanation)
    : std::runtime_error("cannot " + attempt + ": " + explanation.meaning + " (" + explanation.name + ", " +
                         std::to_string(result) + ")"),
      name_(explanation.name),
      hint_(explanation.hint),
      result_(result),
      status_(explanation.status)
{}

void require(long result, const std::string& attempt, const std::string& hintWhenNotFound)
{
    if (result != ERROR_SUCCESS) throw Failure(attempt, result, hintWhenNotFound);
}
