#include "main/commands.h"

int main()
{
    return srv::runCommandLine();
}
