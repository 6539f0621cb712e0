/* The public header serves C programs too. */
#include "kxovaapi.h"

long headerInC(void);

long headerInC(void)
{
    DcfgEnumInstBoardInfo info = {.size = sizeof info};
    return DCFG_IsPnPOs() == 1 && sizeof info == 72 ? DCFG_ERR_NOT_FOUND : 0;
}
