/* Enters the PIN that is on standard input, by an AT request: cc -std=c99 enter_pin.c -lcmif */
#include <cmif.h>
#include <stdio.h>
#include <string.h>

static const char *meaning(int result)
{
    switch (result) {
    case CMIF_OK:
        return "accepted";
    case 16: /* the daemon's codes are those of a modem's +CME ERROR, 3GPP TS 27.007 */
        return "wrong PIN";
    case CMIF_NO_QUEUE:
    case CMIF_NO_REPLY_QUEUE:
    case CMIF_SEND_FAILED:
        return "the request was not sent";
    default:
        return "refused";
    }
}

int main(void)
{
    char pin[32]; /* the request carries at most 29 characters */
    int result;

    if (!fgets(pin, sizeof pin, stdin))
        return 2;
    pin[strcspn(pin, "\n")] = '\0';

    result = shared_CMIF_set_EntermobilePIN(pin); /* waits for the daemon, without a limit */
    printf("%s (%d)\n", meaning(result), result);
    return result != CMIF_OK;
}
