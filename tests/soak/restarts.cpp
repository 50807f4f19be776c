// soak-restarts SECONDS [PERIOD]: eight callers, while the router is ended and started again every
// ten seconds, or every PERIOD. Counts calls that get no answer, and looks whether the daemons
// grow.
//
// Every second time the router is killed. A request that it has just taken is then lost, as when a
// daemon crashes: its caller would wait without an end, since the interface has no time limit, and
// gives up after five seconds.
#include "client/call.h"
#include "cmif/cmif.h"
#include "router.h"
#include "soak.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <random>
#include <vector>

namespace
{

using namespace soak;
using client::at_request;
using client::qmi_request;

constexpr int callers = 8;
constexpr double patience_s = 5; // far more than a start of the router takes
constexpr int growth_kb = 512;   // of a daemon between its first second and its last

struct Counts {
    std::atomic<bool> ended;
    std::atomic<int> answered, not_ready, lost, not_taken, not_sent, wrong, hung;
};
Counts &counts = shared<Counts>();

struct Request {
    client::Request request;
    int (*make)();
};

const std::array<Request, 6> requests{{
    {at_request("set time zone", CMIF_AT_SET_TIME_ZONE), shared_CMIF_set_timezone},
    {at_request("PIN counters", CMIF_AT_GET_PIN_COUNTERS),
     [] {
         int counters[4];
         return shared_CMIF_get_mobilePINPUKC(counters);
     }},
    {at_request("roaming", CMIF_AT_SET_ROAMING),
     [] { return shared_CMIF_set_mobileInternationalRoam(1); }},
    {qmi_request("device revision", CMIF_QMI_GET_DEVICE_REVISION),
     [] {
         char revision[101];
         return shared_CMIF_get_device_rev_id(revision);
     }},
    {qmi_request("SIM status", CMIF_QMI_GET_SIM_STATUS),
     [] {
         int status = 0;
         return shared_CMIF_get_sim_status(&status);
     }},
    {qmi_request("packet service", CMIF_QMI_GET_PACKET_SERVICE),
     [] {
         char service[51];
         return shared_CMIF_get_ps_service(service);
     }},
}};

double now()
{
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

void count_result(const Request &request, int result)
{
    if (result == CMIF_OK)
        ++counts.answered;
    else if (request.request.channel() == client::Channel::qmi && result == CMIF_NOT_READY)
        ++counts.not_ready;
    else {
        std::fprintf(stderr, "%s: result %d\n", request.request.name, result);
        ++counts.wrong;
    }
}

void count_failure(const client::Failure &failure)
{
    if (failure.status() != client::Exit::no_answer) {
        std::fprintf(stderr, "%s\n", failure.what());
        ++counts.wrong;
    } else if (!failure.details().value("sent", false))
        ++counts.not_sent; // another caller of the code still waits for a reply that is lost
    else
        ++(failure.details().value("withdrawn", false) ? counts.not_taken : counts.lost);
}

void make_call(const Request &request)
{
    const double start = now();
    try {
        const client::Call call{.request = request.request,
                                .body = [&](client::Json &) { return request.make(); },
                                .timeout = patience_s};
        count_result(request, client::call({}, call).result);
    } catch (const client::Failure &failure) {
        count_failure(failure);
    }
    if (now() - start > 2 * patience_s)
        ++counts.hung;
}

void make_calls(unsigned number)
{
    std::mt19937 random(number);
    while (!counts.ended) {
        make_call(requests.at(random() % requests.size()));
        pause_ms(static_cast<int>(random() % 40));
    }
}

// The largest of all routers, and how much one grew from its first second to its end.
struct Sizes {
    Router::Size largest, growth;

    void note(const Router::Size &from, const Router::Size &to)
    {
        largest.kilobytes = std::max(largest.kilobytes, to.kilobytes);
        largest.descriptors = std::max(largest.descriptors, to.descriptors);
        growth.kilobytes = std::max(growth.kilobytes, to.kilobytes - from.kilobytes);
        growth.descriptors = std::max(growth.descriptors, to.descriptors - from.descriptors);
    }
};

void print_figures(int starts, int kills, const Sizes &sizes)
{
    std::printf("  %d calls answered, %d routers of which %d were killed\n", counts.answered.load(),
                starts, kills);
    std::printf("  QMI calls refused at once while no router ran %d\n", counts.not_ready.load());
    std::printf("  the largest router: %d kB, %d descriptors\n", sizes.largest.kilobytes,
                sizes.largest.descriptors);
    at_most(0, "calls that ended otherwise", counts.wrong);
    at_most(0, "requests that no router took", counts.not_taken);
    at_most(0, "calls that did not end in time", counts.hung);
    at_most(static_cast<int>(requests.size()) * kills, // one of each code, at the worst
            "requests lost with a router that was killed", counts.lost);
    at_most((callers - 1) * counts.lost, "calls that waited for a caller of those",
            counts.not_sent);
    at_most(growth_kb, "growth of a router, kB", sizes.growth.kilobytes);
    at_most(0, "growth of a router, descriptors", sizes.growth.descriptors);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 2 || argc > 3)
        return 2;
    const int period_s = argc == 3 ? std::atoi(argv[2]) : 10;
    const double end = now() + std::atof(argv[1]);
    int starts = 0, kills = 0;
    Sizes sizes;
    std::vector<pid_t> processes;
    while (!counts.ended) {
        Router router;
        for (unsigned number = 0; starts == 0 && number < callers; ++number)
            processes.push_back(start([=] { make_calls(number); }));
        ++starts;
        pause_ms(1000);
        const Router::Size first = router.size();
        pause_ms(1000 * (period_s - 1));
        sizes.note(first, router.size());
        if (now() >= end) {
            counts.ended = true;
            for (const pid_t process : processes)
                wait_for(process);
        } else if (starts % 2 == 0) {
            router.kill();
            ++kills;
        }
    }
    print_figures(starts, kills, sizes);
    return status();
}
