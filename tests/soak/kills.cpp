// soak-kills KILLS: processes that use the store are killed, at random moments and before each of
// their system calls. What the next process finds is what was there before or what was being set.
#include "platform/host_store.h"
#include "platform/tarn_nvram_config.h"
#include "soak.h"
#include "tests/support/traced_child.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <sys/wait.h>

namespace
{

namespace fs = std::filesystem;
using namespace soak;

int unusable = 0;

std::string store()
{
    return std::getenv("CMIF_STORE");
}

std::string get(const std::string &key)
{
    return tarnNvramConfig_get(key.c_str());
}

void set(const std::string &key, const std::string &value)
{
    if (tarnNvramConfig_set(key.c_str(), value.c_str()) != 0)
        _Exit(1);
}

std::string contents(const std::string &path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Whether `body` returns true in a process that has not used the store yet.
bool holds(const std::function<bool()> &body)
{
    int state = 0;
    const pid_t process = start([&body] { _Exit(body() ? 0 : 1); });
    waitpid(process, &state, 0);
    return state == 0;
}

void check(const std::function<bool()> &body)
{
    if (!holds(body))
        ++unusable;
}

// One letter many times: a mixture of two values would show.
bool is_whole(const std::string &value)
{
    return value.size() == 3000 && value.find_first_not_of(value[0]) == std::string::npos;
}

bool can_be_used(const std::string &round)
{
    set("after", round);
    return is_whole(get("value")) && get("steady") == "1" && get("after") == round;
}

// The writer also saves now and then.
[[noreturn]] void write_on()
{
    for (int i = 0;; ++i) {
        set("value", std::string(3000, static_cast<char>('a' + i % 26)));
        if (i % 10 == 0)
            tarnNvramConfig_save();
    }
}

void kill_at_random(int kills)
{
    for (int round = 0; round < kills; ++round) {
        const pid_t writer = start(write_on);
        usleep(static_cast<useconds_t>(round * 7919 % 20'000));
        end(writer);
        check([round] { return can_be_used(std::to_string(round)); });
        check([] { // what was saved is complete
            return host_store_power_cycle() == 0 && is_whole(get("value")) && get("steady") == "1";
        });
    }
}

// How many calls `body` makes; it was killed before each of them.
int kill_at_each_call(const Traced &traced, const std::function<bool()> &sound)
{
    int call = 0;
    while (killed_before(call, traced)) {
        check(sound);
        ++call;
    }
    return call;
}

void open_store()
{
    get("value");
}

void set_value()
{
    set("value", std::string(3000, 'z'));
}

int kill_setters()
{
    return kill_at_each_call({open_store, set_value}, [] { return can_be_used("a set"); });
}

int kill_savers()
{
    const std::string file = store() + "/saved.conf";
    const std::string old = contents(file);
    return kill_at_each_call({open_store, [] { tarnNvramConfig_save(); }}, [&] {
        const std::string found = contents(file);
        const bool whole = found == old || found.ends_with("Z\n");
        std::ofstream(file) << old;
        return whole && can_be_used("a save");
    });
}

int kill_first_users()
{
    return kill_at_each_call({[] {}, set_value}, [] {
        const bool sound = can_be_used("a first use");
        for (const auto &entry : fs::directory_iterator(store()))
            if (entry.path().filename() != "saved.conf")
                fs::remove(entry.path());
        return sound;
    });
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2 || std::getenv("CMIF_STORE") == nullptr)
        return 2;
    const int kills = std::atoi(argv[1]);
    check([] {
        set("steady", "1");
        set("value", std::string(3000, 'a'));
        return tarnNvramConfig_save() == 0;
    });
    kill_at_random(kills);
    check([] { // a line that is not in the old file, at its end
        set("zzz", "Z");
        return true;
    });
    const int setting = kill_setters(), saving = kill_savers(), opening = kill_first_users();
    std::printf("  killed %d times at random, then before each of the %d system calls of a set,\n"
                "  the %d of a save and the %d of a first use\n",
                kills, setting, saving, opening);
    at_most(0, "stores that could not be used, or held a mixture", unusable);
    return status();
}
