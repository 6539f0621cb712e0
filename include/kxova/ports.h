/* Ports of this machine, and fixed answers about its platform. */
#ifndef KXOVA_PORTS_H
#define KXOVA_PORTS_H

#include "kxova/framework_types.h"
#include "kxovaapi_export.h"

typedef enum PORT_TYPE { PORT_TYPE_COM = 0, PORT_TYPE_LPT = 1 } PORT_TYPE;

#ifdef __cplusplus
extern "C" {
#endif

/* Not 0 (16) on a machine with terminal services. */
KXOVAAPI int DCFG_IsTerminalServicesEnabled(void);

/* Platform 2 (Windows NT) and 1; always 0. Neither pointer may be NULL in C; C++ has references. */
#ifdef __cplusplus
KXOVAAPI long DCFG_GetPlatform(unsigned long& platform, unsigned long& second);
}
#else
KXOVAAPI long DCFG_GetPlatform(unsigned long* platform, unsigned long* second);
#endif

#if KXOVA_FRAMEWORK
/* Adds the serial or parallel ports that can be opened now, each as "name,port" ("\Device\Serial0,COM1"), at its
 * place in the order of character values; the list is taken to be in that order already. The machine's ports are read
 * through the configuration server; without it none is found. */
KXOVAAPI void GetPortList(CStringList& list, PORT_TYPE type);

/* The same; type "LPT", in any case, asks for parallel ports, any other text (NULL too) for serial ones. Always 0. */
KXOVAAPI long DCFG_GetPortList(CStringList& list, const char* type);
#endif

#endif
