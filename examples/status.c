/* Prints operator, signal and registration: cc -std=c99 status.c -lcmif */
#include <cmif.h>
#include <stdio.h>

/* Longer than any value that the platform's store can hold: getters copy without a bound. */
#define VALUE_SIZE 8192

static const char *registration_name(int status)
{
    static const char *const names[] = {"registered", "searching", "not registered"};
    return names[status];
}

int main(void)
{
    static char operator_name[VALUE_SIZE], signal[VALUE_SIZE];
    int status;

    /* From the store, without asking a daemon: no call blocks, and only NULL is refused. */
    if (shared_CMIF_get_mobileNetworkOperatorName(operator_name) != CMIF_OK ||
        shared_CMIF_get_mobileRSSI(signal) != CMIF_OK ||
        shared_CMIF_get_mobileNetworkStatus(&status) != CMIF_OK)
        return 1;

    printf("operator      %s\n", *operator_name ? operator_name : "none");
    if (*signal) /* a value that no daemon has published is "" */
        printf("signal        %s dBm\n", signal);
    printf("registration  %s\n", registration_name(status));
    return 0;
}
