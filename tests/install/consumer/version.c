/* Prints the version of the header, and the operator that the modem is registered with. */
#include <cmif.h>
#include <stdio.h>

int main(void)
{
    static char name[8192];
    if (shared_CMIF_get_mobileNetworkOperatorName(name) != CMIF_OK)
        return 1;
    printf("%d.%d.%d %s\n", CMIF_VERSION_MAJOR, CMIF_VERSION_MINOR, CMIF_VERSION_PATCH, name);
    return 0;
}
