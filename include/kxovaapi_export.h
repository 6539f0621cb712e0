/* KXOVAAPI marks what kxovaapi.dll exports. KXOVAAPI_BUILD is defined while the library itself is built,
 * KXOVAAPI_STATIC where its sources are compiled into a test. */
#ifndef KXOVAAPI_EXPORT_H
#define KXOVAAPI_EXPORT_H

#if defined(KXOVAAPI_BUILD)
#define KXOVAAPI __declspec(dllexport)
#elif defined(KXOVAAPI_STATIC)
#define KXOVAAPI
#else
#define KXOVAAPI __declspec(dllimport)
#endif

#endif
