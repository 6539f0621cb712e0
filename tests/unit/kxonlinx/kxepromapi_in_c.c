/* The public header in a C program: this file compiles strictly, and a test calls what it gives back. */
#include "kxepromapi.h"

int kxepromapi_both_in_c(void);

int kxepromapi_both_in_c(void)
{
    return IsPgWithInternalPrommer() + IsInternalPrommerActive();
}
