/* kxovaapi: the configuration of industrial communication interfaces.
 *
 * Compiles as C (functions of C types) and as C++ (all functions). Link against libkxovaapi.dll.a; at run time
 * kxovaapi.dll, KXONLINX.dll and kxepromapi.dll stand beside the program, and the configuration server runs.
 *
 * Conventions
 *   Texts      zero-terminated 8-bit strings in the system's ANSI code page.
 *   Results    0 is success; see kxova/results.h. A failing call leaves the output arguments as they were, unless
 *              its description says otherwise.
 *   Outputs    char* buffer with unsigned long* length: before the call the buffer's capacity in bytes, after
 *              success the text's length without its terminator. DCFG_ERR_BUFFER_TOO_SHORT (234): it does not fit.
 *              A text has at most 259 characters. A buffer has at least one byte, whatever capacity is passed: a reply
 *              that is cut off leaves the empty text.
 *   Lists      are read with an index: 0, 1, 2, … one item a call, until DCFG_ERR_NO_MORE_ITEMS (259).
 *   Threads    any thread may call; one request is under way at a time per process. Functions that say "cached"
 *              keep a list between index 0 and 259: run such an enumeration to its end before starting another.
 *   Waiting    a call waits at most 30 s for other threads' calls and then for the channel library's own bound.
 */
#ifndef KXOVAAPI_H
#define KXOVAAPI_H

#include <windows.h>

#include "kxova/board.h"
#include "kxova/extensions.h"
#include "kxova/helpers.h"
#include "kxova/language.h"
#include "kxova/logdevice.h"
#include "kxova/logname.h"
#include "kxova/machine.h"
#include "kxova/notify.h"
#include "kxova/panel.h"
#include "kxova/paramdesc.h"
#include "kxova/ports.h"
#include "kxova/profile.h"
#include "kxova/protocol.h"
#include "kxova/registry.h"
#include "kxova/results.h"
#include "kxova/retired.h"
#include "kxova/template.h"
#include "kxova/values.h"

#endif
