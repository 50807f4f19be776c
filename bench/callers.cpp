#include "cmif/cmif.h"
#include "daemon.h"
#include "measure.h"
#include "parts.h"

#include <chrono>
#include <cstdlib>
#include <iterator>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace bench
{
namespace
{

struct Request {
    int code;
    void (*by_library)();
};

// One for each code that the AT daemon answers.
constexpr Request requests[] = {
    {CMIF_AT_SET_TIME_ZONE, [] { shared_CMIF_set_timezone(); }},
    {CMIF_AT_SET_SEARCH_MODE, [] { shared_CMIF_set_mobileNetworkMode(3); }},
    {CMIF_AT_SELECT_AUTOMATICALLY, [] { shared_CMIF_SetNetworkMode(1); }},
    {CMIF_AT_GET_PIN_COUNTERS,
     [] {
         int counters[4];
         shared_CMIF_get_mobilePINPUKC(counters);
     }},
    {CMIF_AT_GET_PACKET_DOMAIN,
     [] {
         char out[256];
         shared_CMIF_get_DomainServiceStatus(out);
     }},
    {CMIF_AT_SET_PACKET_DOMAIN, [] { shared_CMIF_set_DomainServiceStatus(1); }},
    {CMIF_AT_GET_PIN_MODE,
     [] {
         char out[256];
         shared_CMIF_get_mobileSimPINMode(out);
     }},
    {CMIF_AT_SET_PIN_MODE, [] { shared_CMIF_set_mobileSimPINMode("1", "1234"); }},
    {CMIF_AT_LOCK_NETWORK,
     [] { shared_CMIF_set_NetworkPersonalizationLock("1", "2", "3", "12345678"); }},
    {CMIF_AT_UNLOCK_NETWORK, [] { shared_CMIF_set_NetworkPersonalizationUNLock("12345678"); }},
    {CMIF_AT_ENTER_PIN, [] { shared_CMIF_set_EntermobilePIN("1234"); }},
    {CMIF_AT_CHANGE_PIN, [] { shared_CMIF_set_ChangemobileSimPIN("1234", "4321"); }},
    {CMIF_AT_ENTER_PUK, [] { shared_CMIF_set_EntermobilePINPUK("12345678", "1234"); }},
    {CMIF_AT_SET_ROAMING, [] { shared_CMIF_set_mobileInternationalRoam(1); }},
    {CMIF_AT_SET_OPERATOR_FORMAT, [] { shared_Set_Operator_Selection_switch_format(2); }},
    {CMIF_AT_SELECT_OPERATOR, [] { shared_CMIF_SetNetworkProvider("00101", "7"); }},
    {CMIF_AT_LIST_MESSAGES,
     [] {
         int count, unread;
         shared_CMIF_get_mobileSMSInfo(nullptr, &count, &unread);
     }},
    {CMIF_AT_DELETE_MESSAGES, [] { shared_CMIF_set_DeletemobileSMS(1, 0); }},
    {CMIF_AT_FACTORY_RESET, [] { shared_CMIF_set_FactoryReset(); }},
    {CMIF_AT_SET_FUNCTIONALITY, [] { shared_CMIF_set_phone_functionality(1); }},
    {CMIF_AT_GET_SEARCH_STATE, [] { shared_CMIF_get_ModeManualSearch(); }},
    {CMIF_AT_SEARCH, [] { shared_CMIF_set_ModeManualSearch(); }},
    {CMIF_AT_SET_PROFILE, [] { shared_CMIF_set_Profile(1, "IP", "internet"); }},
    {CMIF_AT_START_DEVICE_MANAGEMENT, [] { shared_CMIF_set_TriggerOTADMSession(); }},
    {CMIF_AT_SYNCHRONIZE_PROFILE, [] { shared_CMIF_get_SyncProfile3(); }},
};
constexpr int codes = std::size(requests);

using Caller = void (*)(const Request &);
void by_library(const Request &request)
{
    request.by_library();
}
void by_hand(const Request &request)
{
    at_request_by_hand(request.code);
}

// Where all processes meet twice: before their first call and after their last.
class Meeting
{
public:
    explicit Meeting(int processes)
        : barrier_(static_cast<pthread_barrier_t *>(mmap(nullptr, sizeof *barrier_,
                                                         PROT_READ | PROT_WRITE,
                                                         MAP_SHARED | MAP_ANONYMOUS, -1, 0)))
    {
        pthread_barrierattr_t shared;
        if (barrier_ == MAP_FAILED || pthread_barrierattr_init(&shared) != 0 ||
            pthread_barrierattr_setpshared(&shared, PTHREAD_PROCESS_SHARED) != 0 ||
            pthread_barrier_init(barrier_, &shared, static_cast<unsigned>(processes)) != 0)
            std::abort();
    }
    ~Meeting() { munmap(barrier_, sizeof *barrier_); }
    Meeting(const Meeting &) = delete;
    Meeting &operator=(const Meeting &) = delete;
    void wait() { pthread_barrier_wait(barrier_); }

private:
    pthread_barrier_t *barrier_;
};

// Each of `count` processes makes `calls` calls at the same time as the others. Nanoseconds per
// process.
double together(int count, Caller caller, int calls)
{
    Meeting meeting(count + 1);
    std::vector<pid_t> children;
    for (int number = 0; number < count; ++number) {
        children.push_back(fork());
        if (children.back() == -1)
            std::abort();
        if (children.back() != 0)
            continue;
        meeting.wait();
        for (int call = 0; call < calls; ++call)
            caller(requests[number % codes]);
        meeting.wait();
        _exit(0);
    }
    meeting.wait();
    const auto start = std::chrono::steady_clock::now();
    meeting.wait();
    const std::chrono::duration<double, std::nano> spent = std::chrono::steady_clock::now() - start;
    for (const pid_t child : children)
        waitpid(child, nullptr, 0);
    return spent.count() / count;
}

} // namespace

void callers()
{
    const Daemon daemon(serve_at_requests);
    constexpr int counts[] = {1, 2, 4, 8, 16, codes, 32, 64};
    std::vector<Block> blocks;
    for (const int count : counts)
        for (const Caller caller : {by_hand, by_library})
            blocks.push_back([=](int calls) { return together(count, caller, calls); });
    const auto measured = in_turns(blocks, {pace.rounds / 40 + 1, pace.block * 5});
    for (std::size_t i = 0; i < std::size(counts); ++i) {
        figure({"callers", "AT request", "by hand", std::to_string(counts[i])}, "ns",
               spread(measured[2 * i]));
        figure({"callers", "AT request", "library", std::to_string(counts[i])}, "ns",
               spread(measured[2 * i + 1]));
    }
}

} // namespace bench
