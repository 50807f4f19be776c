/* A status page as JSON: what the daemons have published, and what only one of them knows, the
 * state of the SIM and the PIN attempts left. No request takes much longer than its time limit:
 *
 *     cc -std=c99 page.c bounded_call.c -lcmif */
#include "bounded_call.h"

#include <cmif.h>
#include <stdio.h>
#include <stdlib.h>

#define VALUE_SIZE    8192 /* longer than any value of the store */
#define LIMIT_SECONDS 2

/* Texts come from the network. What is not printable ASCII may be cut or in any alphabet: "?". */
static void print_text(const char *text)
{
    putchar('"');
    for (; *text; ++text) {
        if (*text == '"' || *text == '\\')
            putchar('\\');
        putchar(*text >= ' ' && *text <= '~' ? *text : '?');
    }
    putchar('"');
}

/* A value that no daemon has published is "". */
static void print_number(const char *text)
{
    char *end;
    const long number = strtol(text, &end, 10);
    if (end == text || *end)
        printf("null");
    else
        printf("%ld", number);
}

/* Makes the request, and prints why there is no value. */
static int fails(struct request *request)
{
    static const char *const errors[] = {
        [WITHDRAWN] = "the daemon did not take the request, which was withdrawn",
        [PENDING] = "the daemon has not answered, and may still carry the request out",
        [BUSY] = "another request is not answered yet",
        [OTHER_USER] = "the lock for this request belongs to another user",
        [FAILED] = "the request could not be made"};
    const enum outcome outcome = request_within(LIMIT_SECONDS, request);

    if (outcome != ANSWERED)
        printf("{\"error\": \"%s\"}", errors[outcome]);
    else if (request->result != CMIF_OK)
        printf("{\"error\": \"failed\", \"code\": %d}", request->result);
    return outcome != ANSWERED || request->result != CMIF_OK;
}

static int get_sim_status(void *value)
{
    return shared_CMIF_get_sim_status(value);
}

static void print_sim(void)
{
    static const char *const states[] = {"absent",     "not ready",      "ready", "PIN needed",
                                         "PUK needed", "network locked", "bad"};
    int status;
    struct request request = {.queue = CMIF_QMI_REQUEST_KEY,
                              .code = CMIF_QMI_GET_SIM_STATUS,
                              .call = get_sim_status,
                              .values = &status,
                              .size = sizeof status};

    if (!fails(&request))
        printf("\"%s\"", status >= 0 && status <= 6 ? states[status] : "unknown");
}

static int get_counters(void *values)
{
    return shared_CMIF_get_mobilePINPUKC(values);
}

static void print_attempts(void)
{
    int counters[4];
    struct request request = {.queue = CMIF_AT_REQUEST_KEY,
                              .code = CMIF_AT_GET_PIN_COUNTERS,
                              .call = get_counters,
                              .values = counters,
                              .size = sizeof counters};

    if (!fails(&request))
        printf("{\"pin\": %d, \"puk\": %d}", counters[0], counters[1]);
}

int main(void)
{
    static char operator_name[VALUE_SIZE], rssi[VALUE_SIZE];
    static const char *const registrations[] = {"registered", "searching", "not registered"};
    int status;

    if (shared_CMIF_get_mobileNetworkOperatorName(operator_name) != CMIF_OK ||
        shared_CMIF_get_mobileRSSI(rssi) != CMIF_OK ||
        shared_CMIF_get_mobileNetworkStatus(&status) != CMIF_OK)
        return 1;

    printf("{\"operator\": ");
    print_text(operator_name);
    printf(",\n \"rssi_dbm\": ");
    print_number(rssi);
    printf(",\n \"registration\": \"%s\",\n \"sim\": ", registrations[status]);
    print_sim();
    printf(",\n \"attempts\": ");
    print_attempts();
    printf("}\n");
    return 0;
}
