// A daemon of no project: answers COUNT AT requests that it sends to itself, and sets a value; with
// a second argument it is killed then. If that is "child", a child does all this.
#include "platform/tarn_nvram_config.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <sys/msg.h>
#include <sys/wait.h>
#include <unistd.h>

int main(int count, char **words)
{
    struct {
        long code;
        char payload[116];
    } record{};
    if (count > 2 && std::string_view(words[2]) == "child" && fork() != 0)
        return wait(nullptr) == -1;
    const long rounds = count > 1 ? std::strtol(words[1], nullptr, 10) : 1;
    const int requests = msgget(899, IPC_CREAT | 0600), replies = msgget(900, IPC_CREAT | 0600);
    for (long i = 0; i < rounds; ++i) {
        record.code = 4;
        if (msgsnd(requests, &record, sizeof record.payload, 0) != 0 ||
            msgrcv(requests, &record, sizeof record.payload, 0, 0) < 0 ||
            msgsnd(replies, &record, sizeof record.payload, 0) != 0 ||
            msgrcv(replies, &record, sizeof record.payload, 4, 0) < 0)
            return 1;
    }
    if (tarnNvramConfig_set("lte_module_hw_ver", "daemon") != 0)
        return 1;
    if (count > 2)
        raise(SIGKILL);
    std::puts("served");
    return 3;
}
