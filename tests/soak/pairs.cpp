// soak-pairs PAIRS PAIRS-OF-TOOLS: parallel callers of one request code. Counts those that get
// another caller's answer.
//
// Some answers are delayed, and one caller in ten is impatient: it gives up while its request is
// queued, or leaves a reply that comes too late.
#include "caller.h"
#include "soak.h"

#include <array>
#include <atomic>
#include <cstdlib>
#include <random>
#include <vector>

namespace
{

using namespace soak;

std::array<std::atomic<int>, 6> &outcomes = shared<std::array<std::atomic<int>, 6>>();

// Each worker makes pairs of calls, one pair after the other.
class Worker
{
public:
    Worker(unsigned number, Caller caller) : number_(number), caller_(caller), random_(number) {}

    void make(int pairs)
    {
        for (int i = 0; i < pairs; ++i) {
            const pid_t first = start_call(2 * i);
            const pid_t second = start_call(2 * i + 1);
            wait_for(first);
            wait_for(second);
        }
    }

private:
    pid_t start_call(int index)
    {
        constexpr double patience = 60;
        const Request request{.number = 1'000'000 * static_cast<int>(number_) + 1000 + index,
                              .before_ms = delay(),
                              .after_ms = delay()};
        const double seconds = up_to(9) == 0 ? 0.002 + 0.001 * up_to(10) : patience;
        return start(
            [=, this] { ++outcomes.at(static_cast<std::size_t>(caller_(request, seconds))); });
    }

    int delay() { return up_to(9) == 0 ? up_to(15) : 0; }
    int up_to(int largest) { return std::uniform_int_distribution<int>(0, largest)(random_); }

    unsigned number_;
    Caller caller_;
    std::mt19937 random_;
};

int count(Outcome outcome)
{
    return outcomes.at(static_cast<std::size_t>(outcome));
}

// Two workers on the AT channel and two on the QMI channel, each two with one code; then two of
// tools. All at the same time.
void make_pairs(int pairs, int pairs_of_tools)
{
    const std::array<std::pair<Caller, int>, 6> works{{{call_at, pairs - 3 * (pairs / 4)},
                                                       {call_at, pairs / 4},
                                                       {call_qmi, pairs / 4},
                                                       {call_qmi, pairs / 4},
                                                       {run_tool, pairs_of_tools / 2},
                                                       {run_tool, (pairs_of_tools + 1) / 2}}};
    std::vector<pid_t> workers;
    for (unsigned i = 0; i < works.size(); ++i)
        workers.push_back(
            start([&works, i] { Worker(i, works.at(i).first).make(works.at(i).second); }));
    for (const pid_t worker : workers)
        wait_for(worker);
}

void print_figures(int calls)
{
    at_most(0, "callers that got another's answer", count(Outcome::foreign_answer));
    at_most(0, "callers that failed otherwise", count(Outcome::failed));
    at_least(1, "gave up, request withdrawn", count(Outcome::withdrawn));
    at_least(1, "gave up, reply came too late", count(Outcome::picked_up));
    const int given_up =
        count(Outcome::withdrawn) + count(Outcome::picked_up) + count(Outcome::not_sent);
    at_least(calls - given_up, "callers that got their own answer", count(Outcome::answered));
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3)
        return 2;
    const int pairs = std::atoi(argv[1]);
    const int pairs_of_tools = std::atoi(argv[2]);
    std::vector<pid_t> daemons;
    for (const client::Channel channel : {client::Channel::at, client::Channel::qmi}) {
        create_queues(channel);
        daemons.push_back(start([channel] { answer_all(channel); }));
    }
    make_pairs(pairs, pairs_of_tools);
    for (const pid_t daemon : daemons)
        end(daemon);
    print_figures(2 * (pairs + pairs_of_tools));
    return status();
}
