// pipe_client NUMBER COUNT: exchanges COUNT requests that only this NUMBER sends, and ends with 0 when every reply
// was the echo of its request.
#include <windows.h>

#include <cstdlib>

#include "buffers/receivedData.h"
#include "buffers/sendData.h"
#include "channel/kxovacpipe.h"

int main(int argc, char** argv)
{
    if (argc != 3) return 2;
    const auto number = static_cast<std::uint32_t>(std::atoi(argv[1]));
    const auto count = static_cast<std::uint32_t>(std::atoi(argv[2]));
    Kxovapipe client(nullptr);
    for (std::uint32_t i = 0; i < count; ++i) {
        sendData request;
        request.PutU32(number);
        request.PutU32(i);
        receivedData reply;
        std::uint32_t echoedNumber = 0;
        std::uint32_t echoed = 0;
        if (client.Exchange(request, reply) != ERROR_SUCCESS) return 3;
        if (reply.ReadU32(&echoedNumber) != ERROR_SUCCESS || reply.ReadU32(&echoed) != ERROR_SUCCESS) return 4;
        if (echoedNumber != number || echoed != i) return 5;
    }
    return 0;
}
