/* Included in front of the generated stubs. They want structured exceptions, which this compiler has not; in a
 * measurement none is raised, so the blocks are run without a guard. */
#include <windows.h>

#include <rpc.h>
#include <rpcndr.h>

#undef RpcTryExcept
#undef RpcExcept
#undef RpcEndExcept
#undef RpcTryFinally
#undef RpcFinally
#undef RpcEndFinally
#undef RpcExceptionCode
#undef RpcAbnormalTermination

#define RpcTryExcept if (1) {
#define RpcExcept(filter) \
    }                     \
    else                  \
    {
#define RpcEndExcept }
#define RpcTryFinally
#define RpcFinally
#define RpcEndFinally
#define RpcExceptionCode() 0
#define RpcAbnormalTermination() 0
