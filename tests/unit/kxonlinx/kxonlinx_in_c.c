/* The public header in a C program: this file compiles strictly, and a test calls what it gives back. */
#include "kxonlinx.h"

int kxonlinx_open_in_c(const wchar_t* name);

int kxonlinx_open_in_c(const wchar_t* name)
{
    return SCP_openW(name) == -1 ? SCP_get_errno() : KXONLINX_OK;
}
