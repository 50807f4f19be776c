/* A status page as JSON: what the daemons have published, and the PIN attempts that are left, which
 * only the AT daemon knows. Never takes much longer than its time limit:
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

static int get_counters(void *values)
{
    return shared_CMIF_get_mobilePINPUKC(values);
}

static void print_attempts(void)
{
    static const char *const errors[] = {
        "", "the daemon did not take the request, which was withdrawn",
        "the daemon took the request and has not answered", "another request is not answered yet",
        "no process for the request"};
    int counters[4];
    struct request request = {CMIF_AT_GET_PIN_COUNTERS, get_counters, counters, sizeof counters, 0};
    const enum outcome outcome = request_within(LIMIT_SECONDS, &request);

    if (outcome == ANSWERED && request.result == CMIF_OK)
        printf("{\"pin\": %d, \"puk\": %d}", counters[0], counters[1]);
    else if (outcome == ANSWERED)
        printf("{\"error\": \"refused\", \"code\": %d}", request.result);
    else
        printf("{\"error\": \"%s\"}", errors[outcome]);
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
    printf(",\n \"registration\": \"%s\",\n \"attempts\": ", registrations[status]);
    print_attempts();
    printf("}\n");
    return 0;
}
