/* Templates: read-only descriptions from which real entries are made, of the types "Boards", "Protocols" and
 * "DefaultLogdevices" (in any case); and parameter metadata. Conventions: see kxovaapi.h.
 *
 * A protocol template is addressed by a path of up to five parts separated by "\": the call cuts the path in the
 * caller's own buffer, which therefore is not const and holds only the first part afterwards. Further parts are
 * ignored. Every other template has a plain name.
 */
#ifndef KXOVA_TEMPLATE_H
#define KXOVA_TEMPLATE_H

#include "kxovaapi_export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The iValue-th template of a type. 87: type is NULL or empty, or length is NULL. */
KXOVAAPI long TemplateGetEnum(const char* type, unsigned long iValue, char* buffer, unsigned long* length);

/* 0 when the template exists. flags is passed on to the server; use 0. 87: a text is NULL or empty. */
KXOVAAPI long TemplateExists(const char* type, const char* template_, unsigned long flags);

/* Name and text of the template's iValue-th value. 87: a text is NULL or empty, or a length is NULL. */
KXOVAAPI long TemplateGetEnumValue(const char* type, char* template_, unsigned long iValue, char* name,
                                   unsigned long* nameLength, char* value, unsigned long* valueLength);

/* One value of a template. 87: a text is NULL or empty, or length is NULL. */
KXOVAAPI long TemplateGetValue(const char* type, char* template_, const char* parameter, char* buffer,
                               unsigned long* length);

/* Metadata of a parameter of a folder. 87: folder or parameter is NULL or empty, or length is NULL. */
KXOVAAPI long DCFG_GetParameterMetaData(const char* folder, const char* subfolder, const char* item,
                                        const char* parameter, char* buffer, unsigned long* length);

/* 87: item is NULL or empty. */
KXOVAAPI long DCFG_SetParameterMetaData(const char* folder, const char* subfolder, const char* item,
                                        const char* parameter, const char* value);

#ifdef __cplusplus
}
#endif

#endif
