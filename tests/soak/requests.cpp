// Requests to the AT daemon, one after the other, as many as each line of standard input says;
// prints the nanoseconds that they took.
//
// soak-requests CODE: requests of this code; one for roaming has its number as its value.
#include "cmif/cmif.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <sys/msg.h>

namespace
{

long long now()
{
    constexpr long long second = 1'000'000'000;
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * second + time.tv_nsec;
}

bool ask(long code, long number)
{
    cmif_msg record{};
    record.mod_id = code;
    if (code == CMIF_AT_SET_ROAMING)
        std::snprintf(record.set_value, sizeof record.set_value, "%ld", number);
    return msgsnd(msgget(CMIF_AT_REQUEST_KEY, 0), &record, CMIF_AT_PAYLOAD, 0) == 0 &&
           msgrcv(msgget(CMIF_AT_REPLY_KEY, 0), &record, CMIF_AT_PAYLOAD, code, 0) ==
               CMIF_AT_PAYLOAD;
}

} // namespace

int main(int count, char **words)
{
    const long code =
        count > 1 ? std::strtol(words[1], nullptr, 10) : long{CMIF_AT_GET_PIN_COUNTERS};
    char line[32];
    long number = 0;
    while (std::fgets(line, sizeof line, stdin)) {
        const long long start = now();
        for (long left = std::strtol(line, nullptr, 10); left > 0; --left)
            if (!ask(code, ++number)) {
                std::perror("soak-requests");
                return 1;
            }
        std::printf("%lld\n", now() - start);
        std::fflush(stdout);
    }
    return 0;
}
