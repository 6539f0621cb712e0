// What a message box asks of the system; tests replace it.
#pragma once

#include <windows.h>

struct MessageBoxSystem
{
    int(WINAPI* show)(const MSGBOXPARAMSA*);
    BOOL(WINAPI* isValidLocale)(LCID, DWORD);
};

MessageBoxSystem& messageBoxSystem() noexcept;
