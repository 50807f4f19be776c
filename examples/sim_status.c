/* Asks the QMI daemon for the state of the SIM: cc -std=c99 sim_status.c -lcmif */
#include <cmif.h>
#include <stdio.h>

static const char *const states[] = {"absent",     "not ready",      "ready", "PIN needed",
                                     "PUK needed", "network locked", "bad"};

int main(void)
{
    int status, result;

    shared_debug_lte_mutex_init(); /* once: QMI calls write to the debug log, if that is on */
    result = shared_CMIF_get_sim_status(&status); /* prints lines of its own, always */
    shared_debug_lte_mutex_deinit();

    switch (result) {
    case CMIF_OK: /* a daemon may send any number */
        printf("SIM: %s\n", status >= 0 && status <= 6 ? states[status] : "unknown");
        return 0;
    case CMIF_NOT_READY:
        fprintf(stderr, "the QMI daemon is not ready: nothing was sent\n");
        return 1;
    default: /* 2 no queue, 3 not sent, 4 not received */
        fprintf(stderr, "no answer (%d)\n", result);
        return 1;
    }
}
