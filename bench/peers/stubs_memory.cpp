// Where the stubs of either side get the memory for texts.
#include <windows.h>

#include <rpc.h>

#include <cstdlib>

extern "C" {

void* __RPC_USER MIDL_user_allocate(size_t size)
{
    return std::malloc(size);
}

void __RPC_USER MIDL_user_free(void* memory)
{
    std::free(memory);
}
}
