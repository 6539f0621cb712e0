#include <fcntl.h>
#include <gmock/gmock.h>
#include <io.h>
#include <windows.h>

#include <cstdio>

int main(int argc, char** argv)
{
    // ctest reads the list of cases from the output; a carriage return would become part of their names.
    _setmode(_fileno(stdout), _O_BINARY);
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
