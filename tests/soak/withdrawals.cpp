// soak-withdrawals CALLS: callers of several codes withdraw their requests from the queue of a
// daemon that has stopped reading, while another program's requests arrive between them.
#include "client/call.h"
#include "cmif/cmif.h"
#include "soak.h"

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <sys/ipc.h>
#include <sys/msg.h>
#include <vector>

namespace
{

using namespace soak;

constexpr int callers_per_code = 2;
constexpr long code_of_others = CMIF_AT_SET_ROAMING;
constexpr int max_others = 100; // the queue has room for 141 records

struct TextRequest {
    cmif_at_code code;
    int (*send)(const char *text);
};

constexpr std::array<TextRequest, 6> requests{{
    {CMIF_AT_SET_PIN_MODE,
     [](const char *text) { return shared_CMIF_set_mobileSimPINMode("1", text); }},
    {CMIF_AT_LOCK_NETWORK,
     [](const char *text) {
         return shared_CMIF_set_NetworkPersonalizationLock("PN", "1", "", text);
     }},
    {CMIF_AT_UNLOCK_NETWORK, shared_CMIF_set_NetworkPersonalizationUNLock},
    {CMIF_AT_ENTER_PIN, shared_CMIF_set_EntermobilePIN},
    {CMIF_AT_CHANGE_PIN,
     [](const char *text) { return shared_CMIF_set_ChangemobileSimPIN(text, text); }},
    {CMIF_AT_ENTER_PUK,
     [](const char *text) { return shared_CMIF_set_EntermobilePINPUK(text, text); }},
}};

struct Counts {
    std::atomic<int> withdrawn;
    std::atomic<int> wrong; // other ends of a call
    std::atomic<int> done;
};
Counts &counts = shared<Counts>();

int queue()
{
    return msgget(CMIF_AT_REQUEST_KEY, IPC_CREAT | 0666);
}

// One call that is given up. False when nothing was sent: another caller had the code's lock.
bool give_up(const TextRequest &request, double seconds)
{
    try {
        client::call({}, {.request = client::at_request("call", request.code),
                          .body = [&request](client::Json &) { return request.send("1234"); },
                          .timeout = seconds});
    } catch (const client::Failure &failure) {
        if (failure.details() == client::Json{{"withdrawn", true}, {"sent", true}}) {
            ++counts.withdrawn;
            return true;
        }
        if (failure.status() == client::Exit::no_answer && !failure.details().value("sent", false))
            return false;
        std::fprintf(stderr, "%s\n", failure.what());
    }
    ++counts.wrong;
    return true;
}

void give_up_all(unsigned number, int calls)
{
    std::mt19937 random(number);
    std::uniform_int_distribution<int> milliseconds(5, 40);
    for (int made = 0; made < calls;)
        if (give_up(requests.at(number % requests.size()), 0.001 * milliseconds(random)))
            ++made;
    ++counts.done;
}

// Another program's requests, numbered in their order.
void send_other(int number)
{
    cmif_msg record{};
    record.mod_id = code_of_others;
    record.ret_code = number;
    msgsnd(queue(), &record, CMIF_AT_PAYLOAD, 0);
}

// Picks up one request and then stops.
pid_t start_frozen_daemon()
{
    send_other(-1);
    const pid_t daemon = start([] {
        cmif_msg record{};
        msgrcv(queue(), &record, CMIF_AT_PAYLOAD, 0, 0);
        pause_ms(3'600'000);
    });
    msqid_ds state{};
    do
        msgctl(queue(), IPC_STAT, &state);
    while (state.msg_qnum != 0);
    return daemon;
}

int send_others_while(int callers)
{
    int sent = 0;
    while (counts.done < callers) {
        if (sent < max_others)
            send_other(sent++);
        pause_ms(7);
    }
    return sent;
}

void print_figures(int calls, int others)
{
    int left = 0;
    int in_order = 0;
    cmif_msg record{};
    while (msgrcv(queue(), &record, CMIF_AT_PAYLOAD, 0, IPC_NOWAIT) != -1)
        if (record.mod_id != code_of_others)
            ++left;
        else if (record.ret_code == in_order)
            ++in_order;
    at_least(calls, "requests withdrawn", counts.withdrawn);
    at_most(0, "calls that ended otherwise", counts.wrong);
    at_most(0, "requests left in the queue", left);
    at_least(others, "others' requests that kept their order", in_order);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2)
        return 2;
    constexpr unsigned callers = callers_per_code * requests.size();
    const int each =
        (std::atoi(argv[1]) + static_cast<int>(callers) - 1) / static_cast<int>(callers);
    const pid_t daemon = start_frozen_daemon();
    std::vector<pid_t> processes;
    for (unsigned number = 0; number < callers; ++number)
        processes.push_back(start([=] { give_up_all(number, each); }));
    const int others = send_others_while(callers);
    for (const pid_t process : processes)
        wait_for(process);
    end(daemon);
    print_figures(each * static_cast<int>(callers), others);
    return status();
}
