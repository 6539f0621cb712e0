// The items of an enumeration, as the server lists them and as a user reads them.
#pragma once

#include <vector>

#include "frame/ApiCall.h"

// Asks for the items of a parameter that a logical device may be set to. The block is as long as the answer.
Reply requestEnumList(ApiCall& call, opcode::Code code, std::uint32_t capacity, const char* lpszLogDevice,
                      const char* lpszParameter, std::vector<char>& block);

// Appends the items of a block of zero-terminated texts as key, "/" and display text in the language of this process.
// Items without a display text are appended as they are; a device without board or protocol has nothing appended.
void DCFG_TranslateValueList(const char* lpszLogDevice, const char* lpszParameter, const char* block,
                             unsigned long length, CStringList& list);
