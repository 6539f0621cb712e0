/* The references of this program to functions of kxovaapi.dll. */
#ifndef KXOVA_REFERENCES_H
#define KXOVA_REFERENCES_H

#ifdef __cplusplus
extern "C" {
#endif

/* What every reference leads to until it is filled in: throws a LibraryFailure. */
void kxovaNotLoaded(void);

typedef void (*KxovaFunction)(void);

struct KxovaReference
{
    const char* name;
    KxovaFunction* address;
};

/* Ends with a row without name. */
extern const struct KxovaReference kxovaReferences[];

#ifdef __cplusplus
}
#endif

#endif
