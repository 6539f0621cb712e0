#include "Exceptions.h"

void AfxThrowMemoryException()
{
    throw CMemoryException();
}

void AfxThrowInvalidArgException()
{
    throw CInvalidArgException();
}
