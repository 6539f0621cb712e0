// The call that shows a message box; tests replace it.
#pragma once

#include <windows.h>

using MessageBoxCall = int(WINAPI*)(const MSGBOXPARAMSA*);

MessageBoxCall& messageBoxCall() noexcept;
