// The programs of bench/peers, as processes (see peers/main.c).
#ifndef BENCH_PEER_PROCESS_H
#define BENCH_PEER_PROCESS_H

#include <cstdio>
#include <optional>
#include <string>
#include <sys/types.h>

namespace bench
{

// Runs while this object lives.
class PeerProcess
{
public:
    PeerProcess(const std::string &program, const char *mode);
    ~PeerProcess();
    PeerProcess(const PeerProcess &) = delete;
    PeerProcess &operator=(const PeerProcess &) = delete;

    void write(int number);
    std::optional<double> read(); // nothing once it has ended

private:
    pid_t child_ = -1;
    std::FILE *to_ = nullptr, *from_ = nullptr;
};

// Runs the program for one call; the nanoseconds from the start to the end of the process. Nothing
// if it fails.
std::optional<double> run_once(const std::string &program);

} // namespace bench

#endif
