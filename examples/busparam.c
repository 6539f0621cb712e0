/* Shows and sets the bus parameters of a logical device: busparam DEVICE [VALUE] */
#include <kxovaapi.h>
#include <stdio.h>

int main(int argc, char** argv)
{
    char value[260];
    unsigned long length = sizeof value;
    long result = ERROR_INVALID_PARAMETER;
    if (argc == 3) result = LogDeviceSetValue(argv[1], "busparam", argv[2]);
    if (argc == 2 || (argc == 3 && result == 0)) result = LogDeviceGetValue(argv[1], "busparam", value, &length);

    if (result == 0)
        printf("%s uses the bus parameters %s\n", argv[1], value);
    else if (result == DCFG_ERR_NOT_FOUND)
        printf("there is no logical device %s\n", argv[1]);
    else
        printf("result %ld\n", result);
    return result != 0;
}
