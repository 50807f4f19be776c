#include "measure.h"
#include "parts.h"
#include "peer_process.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bench
{
namespace
{

enum class Needs { nothing, host_store, server, bus_and_server, bus };

struct Row {
    const char *program;
    std::string_view name;
    Needs needs;
};

constexpr std::string_view c_library = "C library alone", getter = "CMIF, a getter";

constexpr Row rows[] = {
    {"nothing", c_library, Needs::nothing},
    {"getter", getter, Needs::nothing},
    {"getter", "CMIF, a getter, host's store", Needs::host_store},
    {"at_request", "CMIF, an AT request", Needs::server},
    {"qmi_exchange", "CMIF, a QMI call", Needs::server},
    {"unix_socket", "Unix socket", Needs::server},
    {"posix_queue", "POSIX queues", Needs::server},
    {"sd_bus", "D-Bus, sd-bus", Needs::bus_and_server},
    {"libdbus", "D-Bus, libdbus", Needs::bus_and_server},
    {"gdbus", "D-Bus, GDBus", Needs::bus_and_server},
    {"libqmi_glib", "libqmi-glib", Needs::nothing},
    {"libmm_glib", "libmm-glib", Needs::bus},
};

bool has_server(const Row &row)
{
    return row.needs == Needs::server || row.needs == Needs::bus_and_server;
}
bool has_bus(const Row &row)
{
    return row.needs == Needs::bus || row.needs == Needs::bus_and_server;
}

const std::string &folder()
{
    static const std::string path = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    return path;
}

std::string path_of(const Row &row)
{
    return folder() + "/bench-" + row.program;
}

// All but one run over a store that stores nothing, as the platform's own isn't here.
void choose_store(const Row &row)
{
    const std::string path = folder() + "/../lib/bench";
    if (row.needs == Needs::host_store)
        unsetenv("LD_LIBRARY_PATH");
    else
        setenv("LD_LIBRARY_PATH", path.c_str(), 1);
}

// What can run here; the reason why another can't is told.
bool can_run(const Row &row)
{
    const char *reason = nullptr;
    if (!std::filesystem::exists(path_of(row)))
        reason = "not built, its library is not installed";
    else if (has_bus(row) && std::getenv("DBUS_SESSION_BUS_ADDRESS") == nullptr)
        reason = "no session bus";
    if (reason != nullptr)
        std::fprintf(stderr, "skipped: %s (%s)\n", row.name.data(), reason);
    return reason == nullptr;
}

double answer(const Row &row, PeerProcess &process)
{
    if (const auto number = process.read())
        return *number;
    throw std::runtime_error(std::string(row.name) + ": its program has ended");
}

std::unique_ptr<PeerProcess> started(const Row &row, const char *mode)
{
    choose_store(row);
    return std::make_unique<PeerProcess>(path_of(row), mode);
}

struct Pair {
    Row row;
    std::unique_ptr<PeerProcess> server, client;
};

std::vector<Pair> start_pairs(const std::vector<Row> &chosen)
{
    std::vector<Pair> pairs;
    for (const Row &row : chosen) {
        if (!has_server(row))
            continue;
        auto server = started(row, "serve");
        answer(row, *server);
        pairs.push_back({row, std::move(server), started(row, "blocks")});
    }
    return pairs;
}

void requests(std::vector<Pair> &pairs)
{
    std::vector<Block> blocks;
    for (Pair &pair : pairs) {
        blocks.push_back([&pair](int calls) {
            pair.client->write(calls);
            return answer(pair.row, *pair.client);
        });
    }
    const auto measured = in_turns(blocks, pace.scaled(5));
    for (std::size_t i = 0; i < pairs.size(); ++i)
        figure({"peers", std::string(pairs[i].row.name), "request"}, "ns", spread(measured[i]));
}

void start_up(const std::vector<Row> &chosen)
{
    std::vector<Block> blocks;
    for (const Row &row : chosen) {
        blocks.push_back([row](int calls) {
            double sum = 0;
            choose_store(row);
            for (int call = 0; call < calls; ++call) {
                const auto spent = run_once(path_of(row));
                if (!spent)
                    throw std::runtime_error(std::string(row.name) + ": a single call fails");
                sum += *spent;
            }
            return sum;
        });
    }
    const auto measured = in_turns(blocks, {pace.rounds / 20 + 1, 1});
    for (std::size_t i = 0; i < chosen.size(); ++i)
        figure({"peers", std::string(chosen[i].name), "start-up"}, "ns", spread(measured[i]));
}

struct Memory {
    Spread kilobytes;
    double loaded;
};

Memory memory_of(const Row &row)
{
    Samples kilobytes;
    double loaded = 0;
    for (int time = 0; time < 11; ++time) {
        const auto process = started(row, "memory");
        kilobytes.push_back(answer(row, *process));
        loaded = answer(row, *process);
    }
    return {spread(kilobytes), loaded};
}

void memory(const std::vector<Row> &chosen)
{
    double alone = 0;
    for (const Row &row : chosen) {
        const auto [kilobytes, loaded] = memory_of(row);
        figure({"peers", std::string(row.name), "private memory"}, "KiB", kilobytes);
        figure({"peers", std::string(row.name), "libraries loaded"}, "bytes", exactly(loaded));
        if (row.name == c_library)
            alone = kilobytes.median;
        else if (row.name == getter)
            figure({"bars", "private memory", "over the C library"}, "KiB",
                   exactly(kilobytes.median - alone), "<=28");
    }
}

} // namespace

bool against_peers()
{
    std::vector<Row> chosen;
    std::copy_if(std::begin(rows), std::end(rows), std::back_inserter(chosen), can_run);
    std::signal(SIGPIPE, SIG_IGN);
    try {
        std::vector<Pair> pairs = start_pairs(chosen);
        requests(pairs);
        start_up(chosen);
        memory(chosen);
    } catch (const std::runtime_error &error) {
        std::fprintf(stderr, "cmif-bench: %s\n", error.what());
        return false;
    }
    return true;
}

} // namespace bench
