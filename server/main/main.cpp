#include <exception>

#include "main/commands.h"
#include "main/options.h"

int main()
{
    try {
        return srv::runCommandLine();
    } catch (const std::exception& error) {
        srv::complain(error.what());
        return static_cast<int>(srv::Exit::Failed);
    }
}
