// How an extension library tells the test what happened in it: through the process's environment, which outlives it.
#pragma once

#include <windows.h>

#include <string>

constexpr char reportName[] = "KXOVA_EXTENSION_REPORT";

inline std::string reported()
{
    char text[2048] = {};
    GetEnvironmentVariableA(reportName, text, sizeof text);
    return text;
}

inline void report(const std::string& event)
{
    SetEnvironmentVariableA(reportName, (reported() + event + ";").c_str());
}

inline void clearReport()
{
    SetEnvironmentVariableA(reportName, nullptr);
}
